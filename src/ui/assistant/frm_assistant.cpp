#include "ui/assistant/frm_assistant.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

#include "app/setup_meanings.h"
#include "ui/assistant/port_list.h"
#include "ui/controls/help_request.h"
#include "ui/controls/live_note.h"
#include "ui/controls/message_box.h"
#include "ui/controls/night_style.h"
#include "ui/controls/panel_texts.h"
#include "ui/controls/screen_place.h"
#include "ui/controls/text_fit.h"
#include "ui/controls/words.h"
#include "ui/setup/port_box.h"

namespace orvalis {
namespace {

// In units of the font size, so that it follows the desktop's font.
constexpr QSizeF kUsualSize(46, 58);
constexpr double kLeastWidth = 38;
constexpr double kTitleSize = 1.4;
constexpr std::chrono::seconds kLookAgain{1};

}  // namespace

frmAssistant::frmAssistant(Parts parts, QWidget* parent) : QDialog(parent), parts_(std::move(parts)) {
  setObjectName("frmAssistant");
  setWindowTitle(tr("Orvalis Assistant"));
  setAttribute(Qt::WA_DeleteOnClose);
  auto* column = new QVBoxLayout(this);
  auto* head = new QHBoxLayout;
  title_ = new QLabel;
  title_->setObjectName("lblTitle");
  QFont large = ScaledFont(title_->font(), kTitleSize);
  large.setBold(true);
  title_->setFont(large);
  step_ = new QLabel;
  step_->setObjectName("lblStep");
  head->addWidget(title_, 1);
  head->addWidget(step_);
  column->addLayout(head);
  pages_ = new QStackedWidget;
  pages_->setObjectName("pages");
  for (QWidget* page : {BuildUnitPage(), BuildUnitsPage(), BuildSafetyPage(), BuildClientsPage()}) {
    pages_->addWidget(page);
  }
  column->addWidget(pages_, 1);
  link_ = new LiveNote;
  link_->setObjectName("lblLink");
  column->addWidget(link_);
  column->addLayout(BuildFooter());
  ShowChoices();
  ListPorts();
  timer_.setInterval(kLookAgain);
  connect(&timer_, &QTimer::timeout, this, [this] {
    if (pages_->currentIndex() == 0) ListPorts();
    Refresh();
  });
  ShowPage(0);
  Refresh();
}

frmAssistant::~frmAssistant() = default;

QBoxLayout* frmAssistant::BuildFooter() {
  auto* column = new QVBoxLayout;
  auto* note =
      new QLabel(tr("All of this is in the setup too. \"Skip\" leaves every setting as it is; the assistant "
                    "stays in the menu Orvalis."));
  note->setWordWrap(true);
  column->addWidget(note);
  auto* row = new QHBoxLayout;
  column->addLayout(row);
  row->addWidget(ForHelp(new QPushButton(tr("Help"))));
  row->addStretch(1);
  const auto add = [row](const char* name, const QString& text) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setAutoDefault(false);
    row->addWidget(button);
    return button;
  };
  connect(add("cmdSkip", tr("S&kip")), &QPushButton::clicked, this, &frmAssistant::reject);
  back_ = add("cmdBack", tr("&Back"));
  connect(back_, &QPushButton::clicked, this, [this] { ShowPage(pages_->currentIndex() - 1); });
  next_ = add("cmdNext", {});
  next_->setDefault(true);
  connect(next_, &QPushButton::clicked, this, &frmAssistant::Next);
  return column;
}

void frmAssistant::ShowInFront() {
  PlaceBeside(*this, parentWidget(), kUsualSize * PixelSize(font()), kLeastWidth * PixelSize(font()));
  show();
  QTimer::singleShot(0, this, [this] { MoveOntoScreen(*this); });
  timer_.start();
}

void frmAssistant::SetNightTheme(bool on) { DressWindow(*this, on); }

void frmAssistant::ShowPage(int page) {
  parts_.search.Stop();
  const std::array titles{tr("The unit"), tr("Units"), tr("What makes it unsafe"), tr("What to do about it")};
  const int last = pages_->count() - 1;
  pages_->setCurrentIndex(page);
  title_->setText(titles.at(static_cast<std::size_t>(page)));
  step_->setText(tr("Step %1 of %2").arg(page + 1).arg(pages_->count()));
  setAccessibleDescription(step_->text() + ": " + title_->text());
  back_->setEnabled(page > 0);
  next_->setText(page == last ? tr("&Finish") : tr("&Next"));
  if (page == 0 && source() == Source::kUnit && search_->isEnabled()) {
    search_->setFocus();
  } else {
    next_->setFocus();
  }
  Refresh();
}

void frmAssistant::Next() {
  const int page = pages_->currentIndex();
  if (page == 0) {
    const bool demo = source() == Source::kDemo;
    AssistantChoices& choices = parts_.choices;
    choices.chosen.DemoMode = demo ? 1 : 0;
    choices.chosen.AutoConnect = auto_connect_->isChecked() ? 1 : 0;
    choices.port = demo ? std::string() : port_->port();
    parts_.search.Stop();  // before its port may be connected to
    if (!choices.port.empty() && connect_->isChecked()) emit ConnectWanted(ToQString(choices.port));
  }
  if (page + 1 < pages_->count()) return ShowPage(page + 1);
  const Message failure = parts_.finish();
  if (failure.empty()) return accept();
  MessageBox(QMessageBox::Warning, windowTitle(),
             tr("Nothing was stored: %1\n\nTry \"Finish\" again once that is mended.").arg(Translated(failure)),
             QMessageBox::Ok, this)
      .exec();
}

void frmAssistant::reject() {
  parts_.search.Stop();
  emit Skipped();
  QDialog::reject();
}

void frmAssistant::ShowChoices() {
  const Settings& chosen = parts_.choices.chosen;
  auto_connect_->setChecked(chosen.AutoConnect == 1);
  port_->SetPort(parts_.choices.port);
  SetSource(chosen.DemoMode == 1 ? Source::kDemo : shown_source_ == Source::kDemo ? Source::kUnit : shown_source_);
  temperatures_->button(chosen.Centigrade ? 1 : 0)->setChecked(true);
  winds_->button(static_cast<int>(UnitsOf(chosen).wind))->setChecked(true);
  for (const Reason& reason : reasons_) reason.box->setChecked(chosen.*reason.member == 1);
  network_->setChecked(chosen.NetworkEnabled != 0);
  on_top_->setChecked(chosen.AlwaysOnTop);
}

frmAssistant::Source frmAssistant::source() const { return static_cast<Source>(sources_->checkedId()); }

void frmAssistant::SetSource(Source source) {
  sources_->button(static_cast<int>(source))->setChecked(true);
  if (source != Source::kUnit) parts_.search.Stop();
  if (source == Source::kSimulated && shown_source_ != source) {
    typed_port_ = port_->currentText();
    port_->SetPort(parts_.simulated_port.toStdString());
  } else if (source == Source::kUnit && shown_source_ == Source::kSimulated) {
    port_->SetPort(typed_port_.toStdString());
  }
  if (source != Source::kDemo) shown_source_ = source;
  search_box_->setVisible(source == Source::kUnit);
  simulator_box_->setVisible(source == Source::kSimulated);
  port_box_->setVisible(source != Source::kDemo);
  UpdateUnitPage();
}

void frmAssistant::UpdateUnitPage() {
  const bool running = parts_.search.running();
  search_->setText(running ? tr("&Stop") : tr("&Search"));
  search_->setEnabled(running || !port_list_->Ticked().empty());
  for (QCheckBox* box : {connect_, auto_connect_}) box->setEnabled(!port_->port().empty());
}

void frmAssistant::TakeTypedPort() {
  ready_port_ = port_->port();
  ListPorts();
}

void frmAssistant::ListPorts() {
  if (parts_.search.running()) return;
  const std::string typed = port_->port();
  if (!port_->hasFocus() || typed == last_port_) ready_port_ = typed;  // a second without a key is the end of typing
  last_port_ = typed;
  std::vector<SerialPortEntry> ports = parts_.ports();
  const bool listed = std::ranges::find(ports, ready_port_, &SerialPortEntry::name) != ports.end();
  if (!ready_port_.empty() && !listed) {
    ports.push_back({.name = ready_port_, .description = tr("typed below").toStdString()});
  }
  port_list_->SetPorts(ports);
  port_list_->ComeAfter(sources_->button(static_cast<int>(Source::kDemo)));
  if (searched_) port_list_->ShowResults(parts_.search.results(), false);
  UpdateUnitPage();
}

void frmAssistant::ToggleSearch() {
  if (parts_.search.running()) {
    parts_.search.Stop();
    return;
  }
  searched_ = true;
  parts_.search.Start(port_list_->Ticked());
}

void frmAssistant::ShowSearch() {
  UnitSearch& search = parts_.search;
  const bool running = search.running();
  port_list_->ShowResults(search.results(), running);
  UpdateUnitPage();
  using enum UnitSearch::Finding;
  const auto has = [&](UnitSearch::Finding finding) {
    return std::ranges::find(search.results(), finding, &UnitSearch::Result::finding) != search.results().end();
  };
  search_result_->setVisible(searched_);
  if (running) {
    search_result_->Show(tr("Searching…"), Colour::kWhite);
  } else if (const UnitSearch::Result* found = search.found()) {
    search_result_->Show(tr("Found: it is the port to use below."), Colour::kGreen);
    port_->SetPort(found->port);
    if (search_->hasFocus()) next_->setFocus();
  } else if (has(kWaiting)) {
    search_result_->Show(tr("Stopped"), Colour::kWhite);
  } else {
    search_result_->Show(
        tr("No unit was found. Has it power, is its adapter plugged in, is its port ticked? You can go on without it."),
        Colour::kYellow);
  }
  if (running || !searched_) return;
  // What came of it may be below what is in sight. Its place is known after the layout.
  QTimer::singleShot(0, this, [this] {
    auto* page = qobject_cast<QScrollArea*>(pages_->widget(0));
    if (page != nullptr) page->ensureWidgetVisible(search_result_);
  });
}

void frmAssistant::Refresh() {
  if (parts_.choices.Follow()) ShowChoices();
  ShowLink();
  ShowReadings();
}

void frmAssistant::ShowLink() {
  const Link link = parts_.link();
  const QString port = ToQString(link.port);
  const auto show = [this](const QString& text, Colour colour) {
    link_->setVisible(!text.isEmpty());
    link_->Show(text, colour);
  };
  if (link.demo) return show(tr("Demo mode is on: simulated values"), Colour::kYellow);
  switch (link.state) {
    case LinkState::kConnecting:
    case LinkState::kGreeted:
      return show(tr("Connecting to %1…").arg(port), Colour::kWhite);
    case LinkState::kConnected:
      return show(tr("Connected to %1").arg(port), Colour::kGreen);
    case LinkState::kDisconnected:
      break;
  }
  if (link.failure.empty()) return show({}, Colour::kWhite);
  const QString failure = Translated(link.failure);
  show(pages_->currentIndex() == 0 ? tr("Cannot connect: %1").arg(failure)
                                   : tr("Cannot connect: %1\n\"Back\" leads to the search.").arg(failure),
       Colour::kYellow);
}

void frmAssistant::ShowReadings() {
  const Observation& now = parts_.now();
  TypedSetup typed{.settings = parts_.choices.chosen,
                   .unit = {},
                   .unit_known = false,
                   .units = UnitsOf(parts_.choices.chosen),
                   .locale = parts_.locale};
  for (const LimitMeaning& meaning : MeaningsNow(typed, now)) {
    const auto reason =
        std::ranges::find(reasons_, meaning.name, [](const Reason& row) -> std::string_view { return row.meaning; });
    if (reason != reasons_.end()) reason->note->Show(Translated(meaning.text), meaning.colour);
  }
  constexpr double kMphOfOneMetrePerSecond = 1 / 0.44704;
  const auto& [temperature, wind] = std::pair(now.values.ambient_c, now.values.wind_m_s);
  if (!temperature || !wind) return example_->Show(tr("No readings yet"), Colour::kWhite);
  const auto tenths = [this](double value) { return ToQString(FormatFixed(value, 1, parts_.locale)); };
  example_->Show(tr("Now %1 %2, wind %3 %4")
                     .arg(tenths(typed.units.Temperature(*temperature)), ToQString(typed.units.TemperatureName()),
                          tenths(typed.units.Wind(*wind * kMphOfOneMetrePerSecond)), ToQString(typed.units.WindName())),
                 Colour::kGreen);
}

}  // namespace orvalis
