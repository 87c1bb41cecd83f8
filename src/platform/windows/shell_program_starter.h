#pragma once

#include <string>

#include "app/alerts.h"

namespace orvalis {

enum class StartWindow { kNormal, kMinimised };

/// Starts what `command_line` names, with its arguments, as a process of its own, and does not wait for it. Throws
/// RunTimeError, kFileNotFound among others. Without a `folder` the process begins in this one's.
void StartCommandLine(const std::string& command_line, StartWindow window, const std::string& folder = {});

/// Starts programs and batch files, each in its own folder.
class ShellProgramStarter : public ProgramStarter {
 public:
  void Start(const std::string& path) override;
};

}  // namespace orvalis
