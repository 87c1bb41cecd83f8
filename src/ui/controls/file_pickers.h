#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

class QWidget;
class QWindow;

namespace orvalis {

/// Which files an alert may give.
inline constexpr std::string_view kSoundFileFilter =
    "All Files (*.*)|*.*|Wave Files(*.wav)|*.wav|Batch Files (*.bat)|*.bat";
inline constexpr std::string_view kProgramFileFilter =
    "All Files (*.*)|*.*|Exe Files(*.exe)|*.exe|Batch Files (*.bat)|*.bat";

/// The toolkit's form of a filter that is written as descriptions and patterns with bars between them. "*.*" becomes
/// "*": here it is to match every file, also one without a dot. A description without a pattern is left out.
[[nodiscard]] QString ToQtFilter(std::string_view filter);

/// How a picker looks: the desktop's own, or, at night, one that can be told to stay dark.
enum class PickerLook { kDesktop, kNight };

/// What a file dialog is asked for.
struct PickerRequest {
  enum class Kind { kFile, kFolder, kSave };
  Kind kind = Kind::kFile;
  PickerLook look = PickerLook::kDesktop;
  QString title;
  QString filter;  ///< the toolkit's
  QString start;   ///< the file or folder to begin with; may be empty or not be there
};

/// What surrounds a dialog that runs in a process of its own.
struct PickerFrame {
  QWindow* owner = nullptr;  ///< the other process's window that it belongs to
  /// Gets the answer before the dialog is taken down, which may wait for a folder that does not answer.
  std::function<void(const std::optional<std::string>& chosen)> answer;
};
/// Shows the dialog in this process. Nothing when the user cancels.
[[nodiscard]] std::optional<std::string> ShowPicker(QWidget* parent, const PickerRequest& request,
                                                    const PickerFrame& frame = {});

// Where there is a process for it (`UsePickerProcess`) the dialog is shown there.

/// Asks for a file, starting at `current`. Nothing when the user cancels.
[[nodiscard]] std::optional<std::string> PickFile(QWidget* parent, std::string_view filter, const std::string& current);
/// Asks for a folder for a log, starting at `current`. Nothing when the user cancels.
[[nodiscard]] std::optional<std::string> PickLogFolder(QWidget* parent, const std::string& current);
/// Asks under which name to save, starting with `suggested`, a whole path; asks again before a file is replaced. A name
/// without an ending gets that of the chosen filter. Nothing when the user cancels.
[[nodiscard]] std::optional<std::string> PickSaveFile(QWidget* parent, const QString& title, std::string_view filter,
                                                      const QString& suggested);

}  // namespace orvalis
