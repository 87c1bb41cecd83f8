#pragma once

#include <QAbstractTableModel>
#include <QTableView>
#include <deque>
#include <utility>

#include "base/clock.h"
#include "server/traffic.h"

namespace orvalis {

/// The calls of the traffic window, oldest first. Older ones are dropped.
class CallModel : public QAbstractTableModel {
  Q_OBJECT
 public:
  static constexpr std::size_t kKept = Traffic::kKeptCalls;

  CallModel(TimeStyle style, QObject* parent) : QAbstractTableModel(parent), style_(std::move(style)) {}

  void Append(std::deque<TrafficCall> calls);
  void Clear();

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  [[nodiscard]] QString Text(const TrafficCall& call, int column) const;

  TimeStyle style_;
  std::deque<TrafficCall> calls_;
};

/// The table of calls: it stays at the newest unless the user has scrolled away, and what is selected can be copied.
class CallTable : public QTableView {
  Q_OBJECT
 public:
  CallTable(const TimeStyle& style, QWidget* parent);

  void Append(std::deque<TrafficCall> calls);
  void Clear() { model_.Clear(); }
  /// Puts the selected rows on the clipboard, one a line, with tabs between the columns.
  void Copy() const;

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void FitColumns();

  CallModel model_;
};

}  // namespace orvalis
