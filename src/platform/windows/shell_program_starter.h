#pragma once

#include <string>

#include "app/alerts.h"

namespace orvalis {

enum class StartWindow { kNormal, kMinimised };

/// Starts the program and arguments of `command_line` without waiting for it. Throws RunTimeError, for example
/// kFileNotFound. Without a `folder` it starts in this process's.
void StartCommandLine(const std::string& command_line, StartWindow window, const std::string& folder = {});

/// Starts programs and batch files, each in its own folder.
class ShellProgramStarter : public ProgramStarter {
 public:
  void Start(const std::string& path) override;
};

}  // namespace orvalis
