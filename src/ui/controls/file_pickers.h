#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

class QWidget;
class QWindow;

namespace orvalis {

/// File types for alerts.
inline constexpr std::string_view kSoundFileFilter =
    "All Files (*.*)|*.*|Wave Files(*.wav)|*.wav|Batch Files (*.bat)|*.bat";
inline constexpr std::string_view kProgramFileFilter =
    "All Files (*.*)|*.*|Exe Files(*.exe)|*.exe|Batch Files (*.bat)|*.bat";

/// Converts a filter of descriptions and patterns separated by bars to the toolkit's form. "*.*" becomes "*", to match
/// files without a dot too. A description without a pattern is left out.
[[nodiscard]] QString ToQtFilter(std::string_view filter);

/// The desktop's own dialog or, at night, one that can be made dark.
enum class PickerLook { kDesktop, kNight };

/// What a file dialog is asked for.
struct PickerRequest {
  enum class Kind { kFile, kFolder, kSave };
  Kind kind = Kind::kFile;
  PickerLook look = PickerLook::kDesktop;
  QString title;
  QString filter;  ///< the toolkit's
  QString start;   ///< the initial file or folder; may be empty or missing
};

/// The context of a dialog that runs in its own process.
struct PickerFrame {
  QWindow* owner = nullptr;  ///< the other process's window that it belongs to
  /// Called with the answer before the dialog is destroyed, which may block on a folder that does not respond.
  std::function<void(const std::optional<std::string>& chosen)> answer;
};
/// Shows the dialog in this process. Nothing when the user cancels.
[[nodiscard]] std::optional<std::string> ShowPicker(QWidget* parent, const PickerRequest& request,
                                                    const PickerFrame& frame = {});

// After `UsePickerProcess` the dialogs below run in a process of their own. All of them are dark at night.

/// Asks for a file, starting at `current`. Nothing when the user cancels.
[[nodiscard]] std::optional<std::string> PickFile(QWidget* parent, std::string_view filter, const std::string& current);
/// Asks for a folder for a log, starting at `current`. Nothing when the user cancels.
[[nodiscard]] std::optional<std::string> PickLogFolder(QWidget* parent, const std::string& current);
/// Asks for a file name to save, starting with `suggested`, a full path; asks before replacing a file. A name without
/// an extension gets that of the chosen filter. Nothing when the user cancels.
[[nodiscard]] std::optional<std::string> PickSaveFile(QWidget* parent, const QString& title, std::string_view filter,
                                                      const QString& suggested);

}  // namespace orvalis
