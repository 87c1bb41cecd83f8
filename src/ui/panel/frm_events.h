#pragma once

#include <QString>
#include <QWidget>
#include <functional>
#include <string>

#include "base/event_list.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace orvalis {

class EventView;

/// The event list: everything that the program reports, to be filtered, copied and saved.
class frmEvents : public QWidget {
  Q_OBJECT
 public:
  struct Parts {
    const EventList& events;
    const TimeStyle& style;
    std::function<bool()> on_top;                         ///< whether the panel is kept above other windows
    std::function<void(const std::string& text)> report;  ///< what goes wrong
  };
  /// The parts must outlive the window, which is built hidden.
  frmEvents(Parts parts, QWidget* parent);

  /// Shows an event that was recorded.
  void Append(const Event& event);
  void ShowInFront();
  /// Black and red, or the desktop's colours.
  void SetNightTheme(bool on);

 private:
  void AddKeys();
  void Filter();
  void Copy();
  void Save();
  void Say(const QString& text);
  [[nodiscard]] std::string FilterText() const;

  Parts parts_;
  QLineEdit* filter_ = nullptr;
  QPushButton* copy_ = nullptr;
  QPushButton* save_ = nullptr;
  EventView* view_ = nullptr;
  QLabel* message_ = nullptr;
  QString folder_;  ///< the last one that was saved to
};

}  // namespace orvalis
