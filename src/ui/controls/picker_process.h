#pragma once

#include <QString>
#include <optional>
#include <string>
#include <vector>

#include "ui/controls/file_pickers.h"

namespace orvalis {

// Reading a folder on an unavailable network can block for hours, and a file dialog reads every folder that it shows.
// So it runs in a process of its own, this program started with internal arguments, and cannot block the program.

/// From now on each file dialog runs in its own process: `program`, started with arguments that `IsPicker` accepts.
void UsePickerProcess(const QString& program);
/// Whether `UsePickerProcess` was called.
[[nodiscard]] bool UsesPickerProcess();

/// Asks in another process. The windows take no input until it has answered; everything else continues. If the dialog
/// does not respond, a message says so and offers to give up. Nothing when the user cancels or gives up, or when the
/// program ends.
[[nodiscard]] std::optional<std::string> PickInProcess(QWidget* parent, const PickerRequest& request);

/// Whether `arguments` start such a process.
[[nodiscard]] bool IsPicker(const std::vector<std::string>& arguments);
/// Shows its dialog, writes the answer to standard output, and ends the process.
[[noreturn]] void ServePicker(const std::vector<std::string>& arguments);

}  // namespace orvalis
