#include "ui/panel/event_view.h"

#include <QScrollBar>
#include <QTextBlock>
#include <QTextCursor>
#include <utility>

#include "ui/controls/panel_texts.h"

namespace orvalis {
namespace {

/// The user state of the lines that are dates; other lines have -1.
constexpr int kDateLine = 1;

void RemoveBlock(const QTextBlock& block) {
  QTextCursor cursor(block);
  cursor.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor);
  cursor.removeSelectedText();
}

}  // namespace

EventView::EventView(const TimeStyle& style, QWidget* parent) : NightProof(parent), style_(style) {
  setReadOnly(true);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  setTabChangesFocus(true);
  setUndoRedoEnabled(false);
  setPlaceholderText(tr("No events yet."));
  setAccessibleName(tr("Events"));
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void EventView::Append(const Event& event) {
  const bool at_end = verticalScrollBar()->value() == verticalScrollBar()->maximum();
  events_.push_back(event);
  Write(event);
  if (events_.size() > EventList::kKept) DropOldest();
  if (at_end) ScrollToNewest();
}

void EventView::Replace(std::deque<Event> events) {
  clear();
  last_date_ = {};
  events_ = std::move(events);
  for (const Event& event : events_) Write(event);
  ScrollToNewest();
}

void EventView::Write(const Event& event) {
  const QDate date(event.time.year, event.time.month, event.time.day);
  if (date != last_date_) {
    appendPlainText(ToQString(style_.date(event.time)));
    document()->lastBlock().setUserState(kDateLine);
    last_date_ = date;
  }
  // A text of several lines stays one line: each line begins with its time.
  appendPlainText(ToQString(style_.time(event.time)) + "  " + QString::fromStdString(event.text).simplified());
  document()->lastBlock().setUserState(-1);
}

void EventView::ScrollToNewest() { verticalScrollBar()->setValue(verticalScrollBar()->maximum()); }

void EventView::DropOldest() {
  // The first line is the date of the oldest event, the second that event.
  RemoveBlock(document()->firstBlock().next());
  events_.pop_front();
  if (document()->firstBlock().next().userState() == kDateLine) RemoveBlock(document()->firstBlock());
}

QSize EventView::sizeHint() const {
  const QFontMetrics metrics(font());
  return {metrics.averageCharWidth() * 40, metrics.lineSpacing() * 8};
}

QSize EventView::minimumSizeHint() const {
  const QFontMetrics metrics(font());
  return {metrics.averageCharWidth() * 20, metrics.lineSpacing() * 5};
}

}  // namespace orvalis
