// The pages of the setup dialog: the place and name of each control.

#include <QButtonGroup>
#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QScrollArea>
#include <QTabWidget>

#include "ui/controls/form_section.h"
#include "ui/setup/frm_setup.h"

namespace orvalis {
namespace {

/// The frame of a page: sections one below the other, in one column or two.
struct Page {
  QScrollArea* scroll;
  QVBoxLayout* left;
  QVBoxLayout* right;
};

/// The tab already shows the title and the border.
class PageFrame : public QGroupBox {
 protected:
  void paintEvent(QPaintEvent* /*event*/) override {}
};

enum class Columns { kOne, kTwo };

Page MakePage(const char* frame_name, const QString& title, Columns columns) {
  auto* scroll = new QScrollArea;
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setFocusPolicy(Qt::NoFocus);
  auto* frame = new PageFrame;
  frame->setObjectName(frame_name);
  frame->setAccessibleName(title);
  frame->setFlat(true);
  auto* row = new QHBoxLayout(frame);
  auto* left = new QVBoxLayout;
  auto* right = columns == Columns::kTwo ? new QVBoxLayout : nullptr;
  row->addLayout(left, 1);
  if (right != nullptr) row->addLayout(right, 1);
  scroll->setWidget(frame);
  return {scroll, left, right};
}

void Finish(const Page& page) {
  page.left->addStretch(1);
  if (page.right != nullptr) page.right->addStretch(1);
}

}  // namespace

QWidget* frmSetup::BuildConnectionPage() {
  const Page page = MakePage("Frame1", "Connection and panel", Columns::kOne);

  FormSection unit("Sensor unit", page.left);
  port_ = new PortBox([this] { return ListPorts(); });
  port_->setObjectName("gPort");
  unit.Control("Serial &port:", port_, "Choose a port, or type a device path or a port number");
  port_note_ = unit.Note({});
  auto_connect_ =
      unit.Check("AutoConnect", "Connect at &start and reconnect automatically", "Takes effect immediately");
  demo_mode_ = unit.Check("DemoMode", "&Demo mode: simulated values, no sensor unit", "Takes effect immediately");

  FormSection panel("Panel", page.left);
  panel.Check("chkAlwaysTop", "&Keep the panel on top of other windows", {});
  panel.Check("chkCentigrade", "Temperatures in degrees C&elsius", "Otherwise degrees Fahrenheit");

  FormSection logs("Logs", page.left);
  full_log_ = logs.Check("chk_FullLog", "F&ull log: one line per reading", "Takes effect immediately");
  full_log_path_ = new PathButton(PathButton::Shows::kPath);
  full_log_path_->setObjectName("FullLogPath");
  logs.Control("Folder:", full_log_path_, {});
  one_line_log_ = logs.Check("chk_OneLineLog", "&One-line log: the latest reading only", "Takes effect immediately");
  one_line_log_path_ = new PathButton(PathButton::Shows::kPath);
  one_line_log_path_->setObjectName("OneLineLogPath");
  logs.Control("Folder:", one_line_log_path_, {});
  Finish(page);
  return page.scroll;
}

QWidget* frmSetup::BuildThresholdsPage() {
  const Page page = MakePage("Frame2", "Thresholds", Columns::kTwo);

  FormSection wind("Wind", page.left);
  wind.Field("WindSpeedWarn", "\"&Breeze\" above:", "mph", "The wind word turns yellow above this speed");
  wind.Field("WindSpeedCloseD", "\"&Windy\" above:", "mph",
             "The wind word turns red above this speed; it is unsafe then if the page Safety says so");
  wind.Field("WindMultiplierL", "&Multiplier:", "÷ 10", "Tenths of a mile per hour for each count, 1 to 9");
  wind.Field("WindThreshold", "Alarm abo&ve:", "counts", "Stored in the unit: wind alarm threshold, 1 to 999");
  wind.Field("WindTimerL", "Alarm t&ime:", "s", "Stored in the unit: wind alarm duration, 1 to 999");
  wind.Check("AllowWind", "Unit alarms on win&d", {});

  FormSection light("Light", page.left);
  light.Field("LightThreshold", "\"Dar&k\" above:", "counts", "Higher is darker; 1 to 999");
  light.Check("AllowLight", "Unit alarms on li&ght", {});

  FormSection averaging("Averaging", page.left);
  averaging.Field("TempAvgCnt", "Tem&peratures over:", "frames", "1 to 300");

  FormSection clouds("Clouds", page.right);
  clouds.Field("FullCloudyDegCL", "\"Clo&udy\" up to:", "°C",
               "Ambient minus sky temperature, 1 to 40; between the two limits it is partly cloudy");
  clouds.Field("PartCloudyDegCL", "\"Clea&r\" from:", "°C", "Ambient minus sky temperature, 1 to 40");
  clouds.Field("CloudThreshCL", "Sk&y above:", "°C",
               "Stored in the unit: cloud alarm threshold, a whole number from -999 to 999");
  clouds.Field("TPTempHysteresis", "&Hysteresis:", "°C", "Stored in the unit: 0.1 to 9.9");
  clouds.Check("AllowClouds", "Unit alarms on cloud&s", {});

  FormSection rain("Rain", page.right);
  rain.Field("RainThreshold", "\"W&et\" above:", "counts", "\"Rain\" when more than 20 counts above this; 1 to 999");
  rain.Field("RainOnTimeL", "&On for:", "s", "Stored in the unit: rain alarm duration, 1 to 999");
  rain.Check("AllowRain", "Unit alarms on rain", {});

  FormSection outputs("Heater and relay", page.right);
  outputs.Checks({{"AllowHeater", "Allow heater"}, {"ForceHeater", "Force heater"}});
  outputs.Checks({{"AllowRelay", "Allow relay"}, {"ForceRelay", "Force relay"}});
  Finish(page);
  return page.scroll;
}

QWidget* frmSetup::BuildSafetyPage() {
  const Page page = MakePage("Frame5", "Safety", Columns::kTwo);
  const auto check = [](FormSection& section, const char* name, const QString& text, const QString& meaning) {
    section.Check(name, text, {});
    section.Meaning(meaning);
  };

  FormSection hold("Before it is safe", page.left);
  hold.Field("SafeHoldSeconds", "&Hold before safe:", "s", {});
  hold.Meaning(
      "How long there must be no reason to be unsafe before it is safe, 0 to 3600. Unsafe is always at once. A longer "
      "hold moves the roof less often on a changeable night.");

  FormSection own("Unsafe as well, whatever the unit's alarms say", page.left);
  check(own, "chkVerdictRain", "&Rain: \"Damp\" or \"Rain\"",
        "Leave this on: an alarm that is switched off in the unit must not keep a wet roof open.");
  check(own, "chkVerdictWind", "&Wind: \"Windy\"",
        "Closes the roof above the speed of \"Windy\", for a roof or a telescope that wind can damage.");
  check(own, "chkVerdictClouds", "Clo&uds: \"Cloudy\"", "Closes the roof under a cloudy sky, before rain can begin.");
  check(own, "chkVerdictLight", "&Daylight: \"Day\"", "Keeps the roof closed by day. Not for solar telescopes.");

  FormSection trust("Only for tests and for older programs", page.right);
  check(trust, "chkDemoCanBeSafe", "Demo &mode can be safe",
        "Never on where a roof listens: simulated values would open it under a real sky.");
  check(trust, "chkKeepVerdict", "\"Safe\" &keeps the last verdict",
        "Programs that read only \"Safe\" get the last answer of a unit that has fallen silent, however old: the roof "
        "may stay open in rain.");

  FormSection record("Record", page.right);
  check(record, "chkVerdictLog", "&Verdict log: orvalis_verdicts.txt",
        "A line for each change of the verdict, with its reasons and values: why the roof closed last night.");
  Finish(page);
  return page.scroll;
}

QWidget* frmSetup::BuildAlertsPage() {
  const Page page = MakePage("Frame3", "Alerts", Columns::kOne);
  struct Row {
    const char* title;
    const char* sound_box;
    const char* sound;
    const char* program_box;
    const char* program;
  };
  const auto add = [](FormSection& section, const Row& row) {
    section.AlertRow(row.title, {row.sound_box, row.sound}, {row.program_box, row.program});
  };

  FormSection verdict("By verdict", page.left);
  verdict.Check("chkSafetyAlerts", "&Give these alerts",
                "The switch of these three; they do not depend on \"Enable alerts\"");
  verdict.Note(
      "For a roof: each is given when the verdict changes, whether or not alerts are enabled below.\nA program that "
      "fails is started again after 10, 30 and 60 s while the verdict stays.");
  constexpr Row kVerdictRows[] = {
      {"Unsafe", "chkUnsafeSound", "UnsafeSound", "chkUnsafeApp", "UnsafeApp"},
      {"Safe again", "chkSafeSound", "SafeSound", "chkSafeApp", "SafeApp"},
      {"No readings", "chkNoReadingsSound", "NoReadingsSound", "chkNoReadingsApp", "NoReadingsApp"},
  };
  for (const Row& row : kVerdictRows) add(verdict, row);

  FormSection condition("By condition", page.left);
  condition.Check("chkEnableSounds", "&Enable alerts", "Switch for the sounds and programs of the five conditions");
  condition.Checks({{"chkRepeatSounds", "&Repeat sounds"}, {"chkRepeatApp", "Repeat &programs"}});
  constexpr Row kConditionRows[] = {
      {"Rain", "chkRainSounds", "RainSounds", "chkRainApp", "RainApp"},
      {"Wind", "chkWindSounds", "WindSounds", "chkWindApp", "WindApp"},
      {"Light", "chkLightSounds", "LightSounds", "chkLightApp", "LightApp"},
      {"Clouds", "chkCloudSounds", "CloudSounds", "chkCloudApp", "CloudApp"},
      {"Relay", "chkRelaySounds", "RelaySounds", "chkRelayApp", "RelayApp"},
  };
  for (const Row& row : kConditionRows) add(condition, row);
  Finish(page);
  return page.scroll;
}

QWidget* frmSetup::BuildNetworkPage() {
  const Page page = MakePage("Frame6", "Network", Columns::kTwo);

  FormSection serving("For other programs", page.left);
  serving.Check("chkNetworkEnabled", "&Serve the readings over HTTP", {});
  serving.Meaning(
      "Observatory programs, scripts and browsers can read the values and whether it is safe. Nothing can be changed "
      "that way, and no password is read.");
  address_ = new AddressBox;
  address_->setObjectName("NetworkAddress");
  serving.Control("A&ddress:", address_, {});
  address_note_ = serving.Meaning({});
  address_->setToolTip("For one interface alone, type its address");
  serving.Field("NetworkPort", "&Port:", {}, {});
  serving.Meaning("1 to 65535. A second Orvalis on this machine needs a port of its own.");
  serving.Check("chkNetworkDiscovery", "Clients find it by themsel&ves", {});
  serving.Meaning("Programs that look for ASCOM Alpaca see it, while it is open to the network.");

  FormSection now("Now served at", page.right);
  network_now_ = now.Note({});
  network_now_->setObjectName("NetworkNow");
  network_now_->setTextFormat(Qt::RichText);
  network_now_->setWordWrap(true);
  network_now_->setTextInteractionFlags(Qt::TextBrowserInteraction | Qt::LinksAccessibleByKeyboard);
  network_now_->setAccessibleName("Now served at");

  FormSection names("Names", page.right);
  names.Text("NetworkStation", "Stat&ion:");
  names.Meaning("What other programs call this one. Empty: the machine's name.");
  names.Text("NetworkNames", "Further na&mes:");
  names.Meaning("Host names that a browser may reach this machine by, besides its own, such as a proxy's.");
  names.Text("NetworkAllowOrigin", "&Other site:");
  names.Meaning("A web site whose pages may read too, such as https://club.example.org; * for all. Empty: none.");
  Finish(page);
  return page.scroll;
}

QWidget* frmSetup::BuildMqttPage() {
  const Page page = MakePage("Frame7", "MQTT", Columns::kTwo);

  FormSection broker("Broker", page.left);
  broker.Check("chkMqttEnabled", "&Publish the readings to a broker", {});
  broker.Meaning("For Home Assistant, Node-RED and programs of your own. Nothing can be changed that way.");
  broker.Text("MqttHost", "&Host:");
  broker.Field("MqttPort", "Po&rt:", {}, {});
  broker.Meaning("1883 as a rule, 8883 for an encrypted line.");
  broker.Text("MqttUser", "&User:");
  broker.Text("MqttPassword", "Pass&word:")->setEchoMode(QLineEdit::Password);
  broker.Check("chkMqttTls", "&Encrypted line (TLS)", {});
  broker.Meaning(parts_.mqtt_tls ? "The broker's certificate and its name are checked."
                                 : "Not available in this version: with this box nothing is published.");
  broker.Text("MqttCaFile", "CA f&ile:");
  broker.Meaning("Of the authority that made the certificate. Empty: those that the system trusts.");
  broker.Check("chkMqttAllowPlainPassword", "&Send the password unencrypted to another machine", {});
  broker.Meaning("Whoever listens on the network can read it then. Otherwise nothing is published.");

  FormSection now("Now", page.right);
  mqtt_now_ = now.Note({});
  mqtt_now_->setObjectName("MqttNow");
  mqtt_test_ = new QPushButton("Test");
  mqtt_test_->setObjectName("cmdMqttTest");
  mqtt_test_->setAutoDefault(false);
  mqtt_test_->setToolTip("Connects as typed here; publishes nothing");
  now.Row({mqtt_test_});
  mqtt_result_ = now.Note({});
  mqtt_result_->setObjectName("MqttResult");
  for (QLabel* label : {mqtt_now_, mqtt_result_}) {
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
  }

  FormSection messages("Messages", page.right);
  messages.Text("MqttPrefix", "&Begin topics with:");
  messages.Meaning("The station's name follows, which is on the page Network.");
  messages.Check("chkMqttHomeAssistant", "H&ome Assistant finds the values by itself", {});
  messages.Meaning("In Home Assistant, \"unavailable\" must close the roof too: see the guide.");
  Finish(page);
  return page.scroll;
}

QWidget* frmSetup::BuildLeftoversPage() {
  const Page page = MakePage("Frame4", "Leftover focuser settings", Columns::kTwo);

  FormSection moves("Position and steps", page.left);
  moves.Note(
      "This program grew from a focuser driver. These settings\nare left from it. They do not affect the readings, "
      "but\nthey do affect some members that clients use: see the\ntool tips.");
  relative_ = new QRadioButton("Relative");
  auto* absolute = new QRadioButton("Absolute");
  absolute->setObjectName("Absolute");
  auto* group = new QButtonGroup(this);
  group->setObjectName("optType");
  group->addButton(absolute);
  group->addButton(relative_);
  moves.Row({absolute, relative_});
  moves.Field("MaxInc", "Max increment:", "steps", "Above 0");
  moves.Field("StepTime", "Step time:", "s", "Above 0; clients read it as WindSpeedWarn");
  moves.Check("chkCanStepSize", "Reports step size", "Clients can call Halt only while this is on");
  moves.Checks({{"chkReverse", "Reverse"}, {"chkHalfStep", "Half step"}});
  moves.Check("chkSynchronous", "Synchronous", {});
  moves.Check("AllowAsyncWindCB", "Allow asynchronous wind", "Not available in synchronous mode");
  moves.Checks({{"chkCanHalt", "Can halt"}, {"AllowUnload", "Allow unload"}});
  moves.Check("chkBacklashDir", "Backlash compensation", {});
  moves.Field("BacklashComp", "Backlash:", "steps", {});
  moves.Field("Lpt_addr", "LPT address:", {}, {});
  auto* reset = new QPushButton("Reset position");
  reset->setObjectName("cmdResetPos");
  reset->setAutoDefault(false);
  reset->setEnabled(false);
  reset->setToolTip("A weather sensor has no position to reset");
  moves.Row({reset});

  FormSection temperature("Temperature compensation", page.right);
  temperature.Check("chkCanTempComp", "Can compensate", "Clients can read Temperature only while this is on");
  temperature.Field("TempMax", "Delta T:", "°", "Above 0");
  temperature.Field("TempSteps", "Steps for delta T:", "steps", "Above 0");
  temperature.Check("TempCompCB", "Compensate", {});
  temperature.Check("chkCanTemp", "Reports temperature", "Clients can read WindSpeedWarn only while this is on");
  temperature_label_ = temperature.Field("TempCur", {}, {}, {});
  temperature_label_->setObjectName("TempLabel");
  temperature.Field("TPTempOffset", "Offset:", "°", {});

  FormSection coefficients("Coefficients", page.right);
  coefficients.Field("Thermistor_A", "Thermistor A:", {}, "Steinhart-Hart", FormSection::Width::kCoefficient);
  coefficients.Field("Thermistor_B", "Thermistor B:", {}, "Steinhart-Hart", FormSection::Width::kCoefficient);
  coefficients.Field("Thermistor_C", "Thermistor C:", {}, "Steinhart-Hart", FormSection::Width::kCoefficient);
  coefficients.Field("ThermistorR_A", "Second A:", {}, "Steinhart-Hart", FormSection::Width::kCoefficient);
  coefficients.Field("ThermistorR_B", "Second B:", {}, "Steinhart-Hart", FormSection::Width::kCoefficient);
  coefficients.Field("ThermistorR_C", "Second C:", {}, "Steinhart-Hart", FormSection::Width::kCoefficient);
  coefficients.Field("Joystick_slopeR", "Joystick slope:", {}, {}, FormSection::Width::kCoefficient);
  coefficients.Field("Joystick_interceptR", "Joystick intercept:", {}, {}, FormSection::Width::kCoefficient);
  Finish(page);
  return page.scroll;
}

}  // namespace orvalis
