#include "ui/traffic/call_table.h"

#include <QAction>
#include <QClipboard>
#include <QDateTime>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLocale>
#include <QScrollBar>
#include <algorithm>
#include <array>
#include <chrono>
#include <iterator>
#include <utility>

#include "ui/controls/words.h"

namespace orvalis {
namespace {

enum Column { kTime, kCaller, kMember, kAnswer, kTook, kColumns };

struct ColumnLook {
  const char* title;
  const char* widest;  ///< what it usually holds
};
constexpr std::array<ColumnLook, kColumns> kLooks{
    {{QT_TRANSLATE_NOOP("orvalis::Words", "Time"), "00:00:00 PM"},
     {QT_TRANSLATE_NOOP("orvalis::Words", "Caller"), "255.255.255.255"},
     //: A noun: the member that was called.
     {QT_TRANSLATE_NOOP("orvalis::Words", "Call"), "GET /api/v1/safetymonitor/0/issafe"},
     //: A noun.
     {QT_TRANSLATE_NOOP("orvalis::Words", "Answer"), "unsafe (no_connection)"},
     //: How long a call took.
     {QT_TRANSLATE_NOOP("orvalis::Words", "Took"), "000.00 ms"}}};

QString ToText(const std::string& text) { return QString::fromStdString(text); }

QString Duration(std::chrono::microseconds took) {
  const double milliseconds = std::chrono::duration<double, std::milli>(took).count();
  const QLocale locale;
  constexpr double kSecond = 1000;
  //: Seconds.
  if (milliseconds >= kSecond) return Words::tr("%1 s").arg(locale.toString(milliseconds / kSecond, 'f', 1));
  //: Milliseconds.
  return Words::tr("%1 ms").arg(locale.toString(milliseconds, 'f', 2));
}

}  // namespace

void CallModel::Append(std::deque<TrafficCall> calls) {
  if (calls.empty()) return;
  if (calls.size() > kKept) calls.erase(calls.begin(), calls.end() - kKept);
  if (const std::size_t sum = calls_.size() + calls.size(); sum > kKept) {
    const auto surplus = static_cast<std::ptrdiff_t>(sum - kKept);
    beginRemoveRows({}, 0, static_cast<int>(surplus) - 1);
    calls_.erase(calls_.begin(), calls_.begin() + surplus);
    endRemoveRows();
  }
  beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(calls.size()) - 1);
  std::ranges::move(calls, std::back_inserter(calls_));
  endInsertRows();
}

void CallModel::Clear() {
  beginResetModel();
  calls_.clear();
  endResetModel();
}

int CallModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(calls_.size());
}

int CallModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kColumns; }

QVariant CallModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:  // a long answer is cut off in its column
      return Text(calls_[static_cast<std::size_t>(index.row())], index.column());
    case Qt::TextAlignmentRole:
      return QVariant::fromValue(Qt::AlignVCenter | (index.column() == kTook ? Qt::AlignRight : Qt::AlignLeft));
    default:
      return {};
  }
}

QVariant CallModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::TextAlignmentRole) {
    return QVariant::fromValue(Qt::AlignVCenter | (section == kTook ? Qt::AlignRight : Qt::AlignLeft));
  }
  return role == Qt::DisplayRole ? Words::tr(kLooks.at(static_cast<std::size_t>(section)).title) : QVariant();
}

QString CallModel::Text(const TrafficCall& call, int column) const {
  switch (column) {
    case kTime: {
      constexpr int kSecondsPerMinute = 60;
      const int offset = QDateTime::fromMSecsSinceEpoch(call.began).offsetFromUtc() / kSecondsPerMinute;
      return ToText(style_.time(TimeAt(call.began, offset)));
    }
    case kCaller:
      return ToText(call.caller);
    case kMember:
      return ToText(call.member);
    case kAnswer:
      return ToText(call.answer).trimmed();  // some texts of errors follow a name
    default:
      return Duration(call.took);
  }
}

CallTable::CallTable(const TimeStyle& style, QWidget* parent) : QTableView(parent), model_(style, this) {
  setModel(&model_);
  setAccessibleName(tr("Calls"));
  setSelectionBehavior(QAbstractItemView::SelectRows);
  setShowGrid(false);
  setWordWrap(false);
  setTabKeyNavigation(false);
  setCornerButtonEnabled(false);
  verticalHeader()->hide();
  horizontalHeader()->setStretchLastSection(false);
  horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
  horizontalHeader()->setSectionResizeMode(kAnswer, QHeaderView::Stretch);
  horizontalHeader()->setHighlightSections(false);
  auto* copy = new QAction(tr("&Copy"), this);
  copy->setShortcut(QKeySequence::Copy);
  copy->setShortcutContext(Qt::WidgetShortcut);
  connect(copy, &QAction::triggered, this, &CallTable::Copy);
  auto* all = new QAction(tr("Select &all"), this);
  all->setShortcut(QKeySequence::SelectAll);
  all->setShortcutContext(Qt::WidgetShortcut);
  connect(all, &QAction::triggered, this, &CallTable::selectAll);
  addActions({copy, all});
  setContextMenuPolicy(Qt::ActionsContextMenu);
  FitColumns();
}

void CallTable::Append(std::deque<TrafficCall> calls) {
  const QScrollBar* const bar = verticalScrollBar();
  const bool at_newest = bar->value() == bar->maximum();
  model_.Append(std::move(calls));
  if (at_newest) scrollToBottom();
}

void CallTable::Copy() const {
  QModelIndexList rows = selectionModel()->selectedRows();
  std::ranges::sort(rows, {}, &QModelIndex::row);
  QStringList lines;
  for (const QModelIndex& row : rows) {
    QStringList cells;
    for (int column = 0; column < kColumns; ++column) cells << row.siblingAtColumn(column).data().toString();
    lines << cells.join('\t');
  }
  if (!lines.isEmpty()) QGuiApplication::clipboard()->setText(lines.join('\n') + '\n');
}

void CallTable::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange) FitColumns();
}

void CallTable::FitColumns() {
  constexpr int kPadding = 16;  // pixels
  for (int column = 0; column < kColumns; ++column) {
    const ColumnLook& look = kLooks.at(static_cast<std::size_t>(column));
    const int widest =
        std::max(fontMetrics().horizontalAdvance(look.widest), fontMetrics().horizontalAdvance(Words::tr(look.title)));
    setColumnWidth(column, widest + kPadding);
  }
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kPadding / 4);
}

}  // namespace orvalis
