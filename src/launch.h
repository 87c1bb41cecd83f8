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
  /// Chooses the language of the windows before there is one: `wanted`, or that of the locale. A language that there
  /// is not is reported on standard error.
  virtual void ChooseLanguage(const std::optional<std::string>& wanted) = 0;
  [[nodiscard]] virtual std::unique_ptr<Front> MakeWindows(Core& core) = 0;
  /// Runs a helper process of the program if `arguments` ask for one, and ends with it; otherwise returns.
  virtual void RunHelper(const std::vector<std::string>& arguments) = 0;
  /// Shows `text` to the user; returns when it is closed.
  virtual void ShowError(const QString& text) = 0;
};

/// Does what the command line asks for: runs the program, or one command. `windows` is null in the
/// executable without any. Returns the exit code; never throws.
int Launch(int argc, char** argv, WindowSystem* windows) noexcept;

}  // namespace orvalis
