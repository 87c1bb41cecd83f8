#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "app/unit_search.h"
#include "unit/serial_port_entry.h"

class QCheckBox;
class QLabel;
class QVBoxLayout;

namespace orvalis {

class LiveNote;

/// The ports that can be searched, each with a tick, what its adapter says of itself, and what the search found there.
class PortList : public QWidget {
  Q_OBJECT
 public:
  explicit PortList(QWidget* parent = nullptr);

  /// New ports are ticked; the others keep their ticks. Does nothing if unchanged.
  void SetPorts(const std::vector<SerialPortEntry>& ports);
  /// `running`: the ticks cannot be changed meanwhile.
  void ShowResults(const std::vector<UnitSearch::Result>& results, bool running);
  [[nodiscard]] std::vector<std::string> Ticked() const;
  /// Makes the ticks follow `before` in the order of the tabulator key.
  void ComeAfter(QWidget* before) const;

 signals:
  void TicksChanged();

 private:
  struct Row {
    SerialPortEntry entry;
    QWidget* widget;
    QCheckBox* box;
    LiveNote* finding;
  };
  [[nodiscard]] Row MakeRow(const SerialPortEntry& entry, bool ticked);

  QVBoxLayout* column_;
  QLabel* none_;  ///< in place of rows
  std::vector<Row> rows_;
};

}  // namespace orvalis
