#pragma once

#include <QTimeZone>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "history/history_recorder.h"
#include "history/past_reader.h"
#include "history/word_limits.h"
#include "ui/controls/theme.h"
#include "ui/graphs/graph_files.h"
#include "ui/graphs/graph_kind.h"

class QLabel;
class QPushButton;
class QScrollBar;

namespace orvalis {

class HistoryPlot;

/// A window with one graph of recent values. A scroll bar sets the update rate. It does nothing while closed.
class frmGraph : public QWidget {
  Q_OBJECT
 public:
  struct Parts {
    const HistoryRecorder& recorder;
    std::function<DisplayUnits()> units;
    std::function<WordLimits()> limits;
    std::function<bool()> on_top;  ///< whether the panel is kept on top, and would cover the window
    std::function<void(const std::string& text)> report;  ///< called with what could not be saved
    TimeStyle style{};
    QTimeZone zone = QTimeZone::systemTimeZone();
  };
  frmGraph(const GraphKind& kind, Parts parts, QWidget* parent = nullptr);

  /// Black and red, or the desktop's colours.
  void SetNightTheme(bool on);
  /// Call when the unit of temperature or the limits may have changed.
  void UpdateSettings();
  /// Call when the history was replaced.
  void ShowDefaultRange();

  /// Whether it updates automatically.
  [[nodiscard]] bool updating() const { return update_timer_.isActive(); }
  [[nodiscard]] HistoryPlot& plot() const { return *plot_; }

  /// Saves the current view to `path`: a picture by its extension, ".png" or ".pdf", the values or the
  /// verdicts. Writes in the background; the window shows the result.
  void SavePicture(const QString& path);
  void SaveValues(const QString& path);
  void SaveVerdicts(const QString& path);

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  /// The buttons for zoom and for how much time is shown.
  QWidget* BuildRanges();
  /// Presses the button of the range that was chosen.
  void ShowChosen();
  QWidget* BuildControls();
  void SetUpdateRate(int position);
  void ApplyTheme();
  /// The timer runs only while the window is visible.
  void RunTimer();
  /// `what` is in the suggested name.
  [[nodiscard]] QString AskForFile(const QString& title, const QString& filter, const char* what, const char* suffix);
  void Save(const QString& path, FileContent content);
  void Say(const QString& text, Colour colour);

  const GraphKind& kind_;
  Parts parts_;
  PastReader saved_verdicts_;
  Theme theme_;
  bool night_ = false;
  bool applying_theme_ = false;
  QString folder_;  ///< where the last file was saved
  QTimer update_timer_;

  HistoryPlot* plot_ = nullptr;
  std::vector<std::pair<QPushButton*, double>> ranges_;  ///< with the seconds that each of them shows
  QLabel* rate_label_ = nullptr;
  QScrollBar* rate_ = nullptr;
  QLabel* message_ = nullptr;
};

}  // namespace orvalis
