#pragma once

#include <QCoreApplication>
#include <QString>
#include <memory>
#include <string>
#include <vector>

#include "core.h"

namespace orvalis {

/// What an executable with windows adds to the core.
class WindowSystem {
 public:
  virtual ~WindowSystem() = default;
  /// The application object of a program that shows windows. `argc` and `argv` stay valid as long as it lives.
  [[nodiscard]] virtual std::unique_ptr<QCoreApplication> MakeApplication(int& argc, char** argv) = 0;
  [[nodiscard]] virtual std::unique_ptr<Front> MakeWindows(Core& core) = 0;
  /// Does what another process of the program asks this one for by words that no person types, and ends it then.
  /// Returns where the words are none of those.
  virtual void RunHelper(const std::vector<std::string>& arguments) = 0;
  /// Shows `text` to whoever started the program; returns when it was read.
  virtual void ShowError(const QString& text) = 0;
};

/// Does what the command line asks for: runs the program, or does the one thing and ends. `windows` is null in the
/// executable without any. Returns the exit code; never throws.
int Launch(int argc, char** argv, WindowSystem* windows) noexcept;

}  // namespace orvalis
