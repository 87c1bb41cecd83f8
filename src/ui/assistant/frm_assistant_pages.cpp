// The pages of the assistant: the place and name of each control.

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QClipboard>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>

#include "reading/display_units.h"
#include "ui/assistant/frm_assistant.h"
#include "ui/assistant/port_list.h"
#include "ui/controls/live_note.h"
#include "ui/controls/panel_texts.h"
#include "ui/setup/port_box.h"
#include "ui/setup/setup_page.h"

namespace orvalis {
namespace {

template <typename Control>
Control* Named(Control* control, const char* name) {
  control->setObjectName(name);
  return control;
}

struct Section {
  QGroupBox* box;
  QVBoxLayout* column;
};
Section AddSection(QBoxLayout* page, const QString& title) {
  auto* box = new QGroupBox(title);
  auto* column = new QVBoxLayout(box);
  page->addWidget(box);
  return {box, column};
}

QLabel* AddText(QBoxLayout* column, const QString& text) {
  auto* label = new QLabel(text);
  label->setWordWrap(true);
  label->setTextFormat(Qt::PlainText);
  column->addWidget(label);
  return label;
}

/// Adds `button` with its meaning below its text.
void AddExplained(QBoxLayout* column, QAbstractButton* button, const QString& meaning) {
  column->addWidget(button);
  if (meaning.isEmpty()) return;
  button->setAccessibleDescription(meaning);
  constexpr int kBesideMark = 6;
  const int mark = button->style()->pixelMetric(QStyle::PM_IndicatorWidth) + kBesideMark;
  AddText(column, meaning)->setContentsMargins(mark, 0, 0, 4);
}

QPushButton* MakeButton(const char* name, const QString& text) {
  auto* button = Named(new QPushButton(text), name);
  button->setAutoDefault(false);
  return button;
}

void AddRow(QBoxLayout* column, std::initializer_list<QWidget*> controls) {
  auto* row = new QHBoxLayout;
  for (QWidget* control : controls) row->addWidget(control);
  row->addStretch(1);
  column->addLayout(row);
}

}  // namespace

QWidget* frmAssistant::BuildUnitPage() {
  const SetupPage page = MakeSetupPage("pageUnit", tr("The unit"), SetupPage::Columns::kOne);
  BuildSources(page.left);
  BuildSearch(page.left);
  BuildPort(page.left);
  page.Finish();
  return page.scroll;
}

void frmAssistant::BuildSources(QBoxLayout* column) {
  const Section section = AddSection(column, tr("Where the readings come from"));
  sources_ = new QButtonGroup(this);
  const auto add = [&](Source source, const char* name, const QString& text, const QString& meaning) {
    auto* button = Named(new QRadioButton(text), name);
    sources_->addButton(button, static_cast<int>(source));
    AddExplained(section.column, button, meaning);
    return button;
  };
  add(Source::kUnit, "optUnit", tr("A sensor &unit on a serial port"), {});
  QRadioButton* simulated =
      add(Source::kSimulated, "optSimulated", tr("The si&mulated unit"),
          parts_.simulator.isEmpty() ? QString() : tr("A program that behaves on a serial line as the unit does."));
  simulated->setHidden(parts_.simulator.isEmpty());
  add(Source::kDemo, "optDemo", tr("&Demo mode"), tr("Made-up values, to look around. It is never safe then."));
  connect(sources_, &QButtonGroup::idClicked, this, [this](int id) { SetSource(static_cast<Source>(id)); });

  const Section simulator = AddSection(column, tr("The simulated unit"));
  simulator_box_ = simulator.box;
  AddText(simulator.column, tr("Start it in a terminal with this command, and leave it running:"));
  auto* command = Named(new NightProof<QLineEdit>, "txtSimulator");
  command->setText(parts_.simulator);
  command->setReadOnly(true);
  command->setAccessibleName(tr("Command that starts the simulated unit"));
  command->setCursorPosition(0);
  QPushButton* copy = MakeButton("cmdCopy", tr("C&opy"));
  connect(copy, &QPushButton::clicked, this, [this] { QApplication::clipboard()->setText(parts_.simulator); });
  auto* row = new QHBoxLayout;
  row->addWidget(command, 1);
  row->addWidget(copy);
  simulator.column->addLayout(row);
}

void frmAssistant::BuildSearch(QBoxLayout* column) {
  const Section section = AddSection(column, tr("Search for the unit"));
  search_box_ = section.box;
  AddText(section.column,
          tr("Opening a port can reset what is connected to it. Untick the ports of a mount, a focuser or a roof. "
             "The search opens the others one after the other, sends the unit's greeting and nothing else, and closes "
             "them again."));
  port_list_ = Named(new PortList, "ports");
  port_list_->setAccessibleName(tr("Ports to search"));
  section.column->addWidget(port_list_);
  search_ = Named(new QPushButton, "cmdSearch");
  search_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  search_result_ = Named(new LiveNote, "lblSearch");
  search_result_->hide();
  auto* row = new QHBoxLayout;
  row->addWidget(search_, 0, Qt::AlignTop | Qt::AlignLeft);
  row->addWidget(search_result_, 1);
  section.column->addLayout(row);
  connect(search_, &QPushButton::clicked, this, &frmAssistant::ToggleSearch);
  connect(port_list_, &PortList::TicksChanged, this, &frmAssistant::UpdateUnitPage);
}

void frmAssistant::BuildPort(QBoxLayout* column) {
  const Section section = AddSection(column, tr("The port to use"));
  port_box_ = section.box;
  port_ = Named(new PortBox(parts_.ports), "gPort");
  port_->setToolTip(tr("Choose a port, or type a device path or a port number"));
  auto* label = new QLabel(tr("Serial &port:"));
  label->setBuddy(port_);
  port_->lineEdit()->setAccessibleName(tr("The port to use"));
  auto* row = new QHBoxLayout;
  row->addWidget(label);
  row->addWidget(port_, 1);
  section.column->addLayout(row);
  connect_ = Named(new QCheckBox(tr("&Connect to it with \"Next\"")), "chkConnect");
  connect_->setChecked(true);
  AddExplained(section.column, connect_, tr("It gets the settings of its alarms then, and you see its readings."));
  auto_connect_ = Named(new QCheckBox(tr("At e&very start too, and again when it is lost")), "chkAutoConnect");
  section.column->addWidget(auto_connect_);
  connect(port_, &QComboBox::editTextChanged, this, &frmAssistant::UpdateUnitPage);
  connect(port_->lineEdit(), &QLineEdit::editingFinished, this, &frmAssistant::TakeTypedPort);
}

QWidget* frmAssistant::BuildUnitsPage() {
  const SetupPage page = MakeSetupPage("pageUnits", tr("Units"), SetupPage::Columns::kOne);
  AddText(page.left,
          tr("For the panel, the graphs and their pictures. Other programs, logs and uploads get the same whatever you "
             "choose."));
  const auto add = [this](QBoxLayout* column, QButtonGroup* group, int id, const char* name, const QString& text) {
    auto* button = Named(new QRadioButton(text), name);
    group->addButton(button, id);
    column->addWidget(button);
  };
  const Section temperature = AddSection(page.left, tr("Temperature"));
  temperatures_ = new QButtonGroup(this);
  add(temperature.column, temperatures_, 1, "optCelsius", tr("Degrees &Celsius (°C)"));
  add(temperature.column, temperatures_, 0, "optFahrenheit", tr("Degrees &Fahrenheit (°F)"));
  const Section wind = AddSection(page.left, tr("Wind"));
  winds_ = new QButtonGroup(this);
  const auto speed = [&](WindUnit unit, const char* name, const QString& text) {
    add(wind.column, winds_, static_cast<int>(unit), name, text);
  };
  speed(WindUnit::kMilesPerHour, "optMph", tr("Miles per &hour (mph)"));
  speed(WindUnit::kKilometresPerHour, "optKmh", tr("Kilo&metres per hour (km/h)"));
  speed(WindUnit::kMetresPerSecond, "optMs", tr("Metres per secon&d (m/s)"));
  speed(WindUnit::kKnots, "optKnots", tr("Kn&ots (kn)"));
  example_ = Named(new LiveNote, "lblExample");
  page.left->addWidget(example_);
  connect(temperatures_, &QButtonGroup::idClicked, this, [this](int id) {
    parts_.choices.chosen.Centigrade = id == 1;
    ShowReadings();
  });
  connect(winds_, &QButtonGroup::idClicked, this, [this](int id) {
    parts_.choices.chosen.WindUnit = id;
    ShowReadings();
  });
  page.Finish();
  return page.scroll;
}

QWidget* frmAssistant::BuildSafetyPage() {
  const SetupPage page = MakeSetupPage("pageSafety", tr("What makes it unsafe"), SetupPage::Columns::kOne);
  AddText(page.left,
          tr("A roof may open only while it is safe. Without a reading of the last ten seconds it never is, nor while "
             "the unit itself alarms. These count as well, if you tick them:"));
  const Section section = AddSection(page.left, tr("Unsafe as well"));
  const auto add = [&](const char* name, const QString& text, const QString& meaning, const char* live,
                       std::int32_t Settings::*member) {
    auto* box = Named(new QCheckBox(text), name);
    AddExplained(section.column, box, meaning);
    auto* note = Named(new LiveNote, live);
    section.column->addWidget(note);
    section.column->addSpacing(6);
    connect(box, &QCheckBox::clicked, this, [this, member](bool on) { parts_.choices.chosen.*member = on ? 1 : 0; });
    reasons_.push_back({box, note, live, member});
  };
  add("chkVerdictRain", tr("&Rain: \"Damp\" or \"Rain\""),
      tr("Leave this on: an alarm that is switched off in the unit must not keep a wet roof open."), "RainWordNow",
      &Settings::VerdictRain);
  add("chkVerdictWind", tr("&Wind: \"Windy\""),
      tr("Closes the roof above the speed of \"Windy\", for a roof or a telescope that wind can damage."),
      "WindWordNow", &Settings::VerdictWind);
  add("chkVerdictClouds", tr("&Clouds: \"Cloudy\""), tr("Closes the roof under a cloudy sky, before rain can begin."),
      "SkyWordNow", &Settings::VerdictClouds);
  add("chkVerdictLight", tr("&Daylight: \"Day\""), tr("Keeps the roof closed by day. Not for solar telescopes."),
      "LightWordNow", &Settings::VerdictLight);
  QPushButton* more = MakeButton("cmdSafety", tr("&All of it in the setup…"));
  connect(more, &QPushButton::clicked, this, [this] { emit SetupWanted("Frame5"); });
  AddRow(page.left, {more});
  page.Finish();
  return page.scroll;
}

QWidget* frmAssistant::BuildClientsPage() {
  const SetupPage page = MakeSetupPage("pageClients", tr("What to do about it"), SetupPage::Columns::kOne);
  const auto button = [this](const Section& section, const char* name, const QString& text, const char* frame) {
    QPushButton* made = MakeButton(name, text);
    connect(made, &QPushButton::clicked, this, [this, frame] { emit SetupWanted(frame); });
    AddRow(section.column, {made});
  };
  const Section alerts = AddSection(page.left, tr("Alerts"));
  AddText(alerts.column, tr("A sound or a program of yours when it becomes unsafe, such as one that closes the roof."));
  button(alerts, "cmdAlerts", tr("&Alerts…"), "Frame3");

  const Section clients = AddSection(page.left, tr("Observatory programs"));
  AddText(clients.column,
          tr("Programs on this machine that know the driver find it by themselves; nothing has to be set for them."));
  network_ = Named(new QCheckBox(tr("&Serve the readings over HTTP")), "chkNetwork");
  AddExplained(clients.column, network_,
               tr("For ASCOM Alpaca, for INDI with KStars and Ekos, and for your browser. On this machine alone, until "
                  "you open it to the network."));
  connect(network_, &QCheckBox::clicked, this, [this](bool on) { parts_.choices.chosen.NetworkEnabled = on ? 1 : 0; });
  button(clients, "cmdNetwork", tr("Net&work…"), "Frame6");

  const Section mqtt = AddSection(page.left, tr("MQTT"));
  AddText(mqtt.column, tr("Readings for a broker: Home Assistant, Node-RED, several domes."));
  button(mqtt, "cmdMqtt", tr("M&QTT…"), "Frame7");

  const Section window = AddSection(page.left, tr("Window"));
  on_top_ = Named(new QCheckBox(tr("Keep the panel on &top of other windows")), "chkOnTop");
  window.column->addWidget(on_top_);
  connect(on_top_, &QCheckBox::clicked, this, [this](bool on) { parts_.choices.chosen.AlwaysOnTop = on; });
  page.Finish();
  return page.scroll;
}

}  // namespace orvalis
