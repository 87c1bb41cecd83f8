#pragma once

#include <QString>
#include <optional>
#include <string>
#include <vector>

#include "ui/controls/file_pickers.h"

namespace orvalis {

// A folder on a network that is gone answers to nothing, and whoever looks into it waits, for hours perhaps; a file
// dialog looks into every folder that it shows. So it runs in a process of its own, the program started once more with
// words that no person types, and the program goes on whatever becomes of it.

/// From now on each file dialog is a process: `program` started with what `IsPicker` knows.
void UsePickerProcess(const QString& program);
/// Whether `UsePickerProcess` was called.
[[nodiscard]] bool UsesPickerProcess();

/// Asks in a process. The windows of this one take no input until it has answered; all else goes on. When the dialog is
/// held up, a message says so and offers to give it up. Nothing when the user cancels or gives up, or when the program
/// is ended.
[[nodiscard]] std::optional<std::string> PickInProcess(QWidget* parent, const PickerRequest& request);

/// Whether `arguments` are those of such a process.
[[nodiscard]] bool IsPicker(const std::vector<std::string>& arguments);
/// Shows its dialog, writes the answer to standard output, and ends the process.
[[noreturn]] void ServePicker(const std::vector<std::string>& arguments);

}  // namespace orvalis
