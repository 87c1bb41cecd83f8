#pragma once

#include <QDate>
#include <QPlainTextEdit>
#include <deque>

#include "base/event_list.h"
#include "ui/controls/night_proof.h"

namespace orvalis {

/// The events, newest at the bottom, each with its time; a line with the date precedes the first of each day.
/// Keeps as many as EventList does.
class EventView : public NightProof<QPlainTextEdit> {
  Q_OBJECT
 public:
  EventView(const TimeStyle& style, QWidget* parent);

  /// Stays at the bottom if it is there, to show the newest; otherwise does not scroll.
  void Append(const Event& event);
  void ScrollToNewest();
  /// Shows these instead, beginning with the newest.
  void Replace(std::deque<Event> events);
  [[nodiscard]] const std::deque<Event>& events() const { return events_; }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 private:
  void Write(const Event& event);
  void DropOldest();

  TimeStyle style_;
  QDate last_date_;
  std::deque<Event> events_;
};

}  // namespace orvalis
