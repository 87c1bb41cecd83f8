#include "ui/assistant/port_list.h"

#include <QCheckBox>
#include <QLabel>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

#include "ui/controls/live_note.h"
#include "ui/controls/panel_texts.h"
#include "ui/controls/words.h"

namespace orvalis {
namespace {

/// The part that tells it from others, at a length that a page has room for.
QString ShortName(const std::string& port) {
  constexpr int kMost = 56;
  QString name = ToQString(port);
  name.remove("/dev/serial/by-id/");
  if (name.size() > kMost) name = name.left(kMost / 2) + "…" + name.right(kMost / 2);
  return name.replace('&', "&&");
}

bool Same(const SerialPortEntry& one, const SerialPortEntry& other) {
  return one.name == other.name && one.description == other.description;
}

}  // namespace

PortList::PortList(QWidget* parent) : QWidget(parent), column_(new QVBoxLayout(this)), none_(new QLabel) {
  column_->setContentsMargins(0, 0, 0, 0);
  none_->setObjectName("lblNoPorts");
  none_->setText(tr("This machine has no serial port now. Plug the adapter in: it appears here by itself."));
  none_->setWordWrap(true);
  column_->addWidget(none_);
}

void PortList::SetPorts(const std::vector<SerialPortEntry>& ports) {
  const auto same = [](const Row& row, const SerialPortEntry& port) { return Same(row.entry, port); };
  if (std::ranges::equal(rows_, ports, same)) return;
  const std::vector<Row> before = std::move(rows_);
  rows_.clear();
  for (const SerialPortEntry& port : ports) {
    const auto known = std::ranges::find(before, port.name, [](const Row& row) { return row.entry.name; });
    rows_.push_back(MakeRow(port, known == before.end() || known->box->isChecked()));
    column_->addWidget(rows_.back().widget);
  }
  for (const Row& row : before) {
    row.widget->hide();
    row.widget->deleteLater();
  }
  none_->setVisible(rows_.empty());
  emit TicksChanged();
}

PortList::Row PortList::MakeRow(const SerialPortEntry& entry, bool ticked) {
  auto* widget = new QWidget(this);
  auto* column = new QVBoxLayout(widget);
  column->setContentsMargins(0, 0, 0, 2);
  column->setSpacing(2);
  auto* box = new QCheckBox(ShortName(entry.name));
  box->setObjectName("chkPort");
  box->setToolTip(ToQString(entry.name));
  box->setAccessibleName(ToQString(entry.name));
  box->setAccessibleDescription(Translated(entry.description));
  box->setChecked(ticked);
  connect(box, &QCheckBox::toggled, this, &PortList::TicksChanged);
  column->addWidget(box);
  constexpr int kBesideMark = 6;
  const int mark = style()->pixelMetric(QStyle::PM_IndicatorWidth) + kBesideMark;
  if (!entry.description.empty()) {
    auto* about = new QLabel(Translated(entry.description));
    about->setTextFormat(Qt::PlainText);
    about->setWordWrap(true);
    about->setIndent(0);
    about->setContentsMargins(mark, 0, 0, 0);
    column->addWidget(about);
  }
  auto* line = new QHBoxLayout;
  line->setContentsMargins(mark, 0, 0, 0);
  auto* finding = new LiveNote;
  finding->setObjectName("lblFinding");
  finding->hide();
  line->addWidget(finding);
  column->addLayout(line);
  return {entry, widget, box, finding};
}

void PortList::ShowResults(const std::vector<UnitSearch::Result>& results, bool running) {
  using enum UnitSearch::Finding;
  const auto describe = [&](const UnitSearch::Result& result) -> std::pair<QString, Colour> {
    switch (result.finding) {
      case kWaiting:
        return {running ? QString() : tr("Not tried"), Colour::kWhite};
      case kTrying:
        return {tr("Trying…"), Colour::kWhite};
      case kUnit:
        return {tr("The unit answers here."), Colour::kGreen};
      case kSilent:
        return {tr("No answer within 4 seconds"), Colour::kYellow};
      case kOther:
        return {tr("What is connected here is not the unit."), Colour::kYellow};
      case kNotOpened:
        return {tr("Cannot be opened: %1").arg(Translated(result.detail)), Colour::kYellow};
      case kOurs:
        return {tr("Orvalis itself has it open: see whether it is connected."), Colour::kWhite};
    }
    return {};
  };
  for (const Row& row : rows_) {
    row.box->setEnabled(!running);
    const auto found = std::ranges::find(results, row.entry.name, &UnitSearch::Result::port);
    const auto [text, colour] = found == results.end() ? std::pair(QString(), Colour::kWhite) : describe(*found);
    row.finding->Show(text, colour);
    row.finding->setVisible(!text.isEmpty());
    row.box->setAccessibleDescription(Translated(row.entry.description) + (text.isEmpty() ? "" : ". ") + text);
  }
}

void PortList::ComeAfter(QWidget* before) const {
  for (const Row& row : rows_) {
    setTabOrder(before, row.box);
    before = row.box;
  }
}

std::vector<std::string> PortList::Ticked() const {
  std::vector<std::string> ports;
  for (const Row& row : rows_) {
    if (row.box->isChecked()) ports.push_back(row.entry.name);
  }
  return ports;
}

}  // namespace orvalis
