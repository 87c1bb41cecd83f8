#pragma once

#include <string>
#include <utility>

#include "app/alerts.h"
#include "platform/linux/detached_programs.h"
#include "platform/qt/running_programs.h"

namespace orvalis {

/// Has alert programs started outside the service that this program runs as: neither its sandbox nor its end reaches
/// them. systemd listens on a socket and starts `RunOneProgram` for each connection.
class RunnerPrograms : public ProgramStarter {
 public:
  /// `socket` is the path of the runner's socket.
  explicit RunnerPrograms(std::string socket) : socket_(std::move(socket)) {}
  /// What is wrong with the program is told by `call.ended`, because the sandbox may hide it from us. Without a runner
  /// it is started inside the sandbox, which is better for a roof than not at all, and fails as `DetachedPrograms`
  /// does.
  void Start(const Call& call) override;

 private:
  std::string socket_;
  DetachedPrograms without_runner_;
  RunningPrograms running_;
};

/// The other end: runs the program that `connection` names, with the facts that come with it in its environment, and
/// answers how it ended. It runs only what root alone can change, so that whoever takes over the service gains no
/// more outside it than to start the programs of this machine without arguments. Returns the exit code.
int RunOneProgram(int connection);

}  // namespace orvalis
