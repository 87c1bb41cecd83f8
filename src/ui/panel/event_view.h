#pragma once

#include <QDate>
#include <QPlainTextEdit>
#include <cstddef>

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

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 private:
  void DropOldest();

  TimeStyle style_;
  QDate last_date_;
  std::size_t count_ = 0;
};

}  // namespace orvalis
