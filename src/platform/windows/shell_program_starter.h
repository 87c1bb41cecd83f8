#pragma once

#include <string>

#include "app/alerts.h"
#include "platform/qt/running_programs.h"
#include "platform/windows/handle.h"

namespace orvalis {

enum class StartWindow { kNormal, kMinimised };

/// How a command line is started, besides the window.
struct StartPlace {
  std::string folder = {};        ///< "" is this program's
  std::wstring environment = {};  ///< as the system takes it, each variable with its end; "" is this program's
};

/// Starts the program and arguments of `command_line` without waiting for it, and returns the process. Throws
/// RunTimeError, for example kFileNotFound.
Handle StartCommandLine(const std::string& command_line, StartWindow window, const StartPlace& place = {});

/// Starts programs and batch files, each in its own folder.
class ShellProgramStarter : public ProgramStarter {
 public:
  void Start(const Call& call) override;

 private:
  RunningPrograms running_;
};

}  // namespace orvalis
