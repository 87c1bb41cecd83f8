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

/// Starts what `command_line` names, with its arguments, as a process of its own, and does not wait for it. Throws
/// RunTimeError, kFileNotFound among others. Returns the process.
Handle StartCommandLine(const std::string& command_line, StartWindow window, const StartPlace& place = {});

/// Starts programs and batch files, each in its own folder.
class ShellProgramStarter : public ProgramStarter {
 public:
  void Start(const Call& call) override;

 private:
  RunningPrograms running_;
};

}  // namespace orvalis
