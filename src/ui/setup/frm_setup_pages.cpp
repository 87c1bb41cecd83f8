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
#include "ui/setup/setup_page.h"

namespace orvalis {

QWidget* frmSetup::BuildConnectionPage() {
  const SetupPage page = MakeSetupPage("Frame1", "Connection and logs", SetupPage::Columns::kOne);

  FormSection unit("Sensor unit", page.left);
  port_ = new PortBox([this] { return ListPorts(); });
  port_->setObjectName("gPort");
  unit.Control("Serial po&rt:", port_, "Choose a port, or type a device path or a port number");
  port_note_ = unit.Note({});
  auto_connect_ =
      unit.Check("AutoConnect", "Connect at &start and reconnect automatically", "Takes effect immediately");
  demo_mode_ = unit.Check("DemoMode", "&Demo mode: simulated values, no sensor unit", "Takes effect immediately");

  FormSection logs("Logs", page.left);
  full_log_ = logs.Check("chk_FullLog", "Full lo&g: one line per reading", "Takes effect immediately");
  full_log_path_ = new PathButton(PathButton::Shows::kPath);
  full_log_path_->setObjectName("FullLogPath");
  logs.Control("Folder:", full_log_path_, {});
  one_line_log_ = logs.Check("chk_OneLineLog", "&One-line log: the latest reading only", "Takes effect immediately");
  one_line_log_path_ = new PathButton(PathButton::Shows::kPath);
  one_line_log_path_->setObjectName("OneLineLogPath");
  logs.Control("Folder:", one_line_log_path_, {});
  page.Finish();
  return page.scroll;
}

QWidget* frmSetup::BuildSafetyPage() {
  const SetupPage page = MakeSetupPage("Frame5", "Safety", SetupPage::Columns::kTwo);

  FormSection hold("Before it is safe", page.left);
  hold.Field("SafeHoldSeconds", "&Hold before safe:", "s", {});
  hold.Meaning(
      "How long there must be no reason to be unsafe before it is safe, 0 to 3600. Unsafe is always at once. A longer "
      "hold moves the roof less often on a changeable night.");

  FormSection own("Unsafe as well, whatever the unit's alarms say", page.left);
  own.Explained("chkVerdictRain", "&Rain: \"Damp\" or \"Rain\"",
                "Leave this on: an alarm that is switched off in the unit must not keep a wet roof open.");
  own.Explained("chkVerdictWind", "&Wind: \"Windy\"",
                "Closes the roof above the speed of \"Windy\", for a roof or a telescope that wind can damage.");
  own.Explained("chkVerdictClouds", "Cl&ouds: \"Cloudy\"",
                "Closes the roof under a cloudy sky, before rain can begin.");
  own.Explained("chkVerdictLight", "&Daylight: \"Day\"", "Keeps the roof closed by day. Not for solar telescopes.");

  FormSection trust("Only for tests and for older programs", page.right);
  trust.Explained("chkDemoCanBeSafe", "Demo &mode can be safe",
                  "Never on where a roof listens: simulated values would open it under a real sky.");
  trust.Explained(
      "chkKeepVerdict", "\"Safe\" &keeps the last verdict",
      "Programs that read only \"Safe\" get the last answer of a unit that has fallen silent, however old: the roof "
      "may stay open in rain.");

  FormSection record("Record", page.right);
  record.Explained(
      "chkVerdictLog", "&Verdict log: orvalis_verdicts.txt",
      "A line for each change of the verdict, with its reasons and values: why the roof closed last night.");
  page.Finish();
  return page.scroll;
}

QWidget* frmSetup::BuildAlertsPage() {
  const SetupPage page = MakeSetupPage("Frame3", "Alerts", SetupPage::Columns::kOne);
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
  verdict.Paragraph(
      "For a roof: each is given when the verdict changes, whether or not alerts are enabled below. A program that "
      "fails is started again after 10, 30 and 60 s while the verdict stays.");
  constexpr Row kVerdictRows[] = {
      {"Unsafe", "chkUnsafeSound", "UnsafeSound", "chkUnsafeApp", "UnsafeApp"},
      {"Safe again", "chkSafeSound", "SafeSound", "chkSafeApp", "SafeApp"},
      {"No readings", "chkNoReadingsSound", "NoReadingsSound", "chkNoReadingsApp", "NoReadingsApp"},
  };
  for (const Row& row : kVerdictRows) add(verdict, row);

  FormSection condition("By condition", page.left);
  condition.Check("chkEnableSounds", "&Enable alerts", "Switch for the sounds and programs of the five conditions");
  condition.Checks(
      {{"chkRepeatSounds", "&Repeat sounds",
        "With every reading while the condition lasts; otherwise once when it begins"},
       {"chkRepeatApp", "Repeat pr&ograms", "Every reading while the condition lasts; otherwise once when it begins"}});
  constexpr Row kConditionRows[] = {
      {"Rain", "chkRainSounds", "RainSounds", "chkRainApp", "RainApp"},
      {"Wind", "chkWindSounds", "WindSounds", "chkWindApp", "WindApp"},
      {"Light", "chkLightSounds", "LightSounds", "chkLightApp", "LightApp"},
      {"Clouds", "chkCloudSounds", "CloudSounds", "chkCloudApp", "CloudApp"},
      {"Relay", "chkRelaySounds", "RelaySounds", "chkRelayApp", "RelayApp"},
  };
  for (const Row& row : kConditionRows) add(condition, row);
  page.Finish();
  return page.scroll;
}

QWidget* frmSetup::BuildNetworkPage() {
  const SetupPage page = MakeSetupPage("Frame6", "Network", SetupPage::Columns::kTwo);

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
  serving.Field("NetworkPort", "P&ort:", {}, {});
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
  network_now_->setToolTip("A link opens the page in your browser");

  FormSection names("Names", page.right);
  names.Text("NetworkStation", "Stat&ion:");
  names.Meaning("What other programs call this one. Empty: the machine's name.");
  names.Text("NetworkNames", "Further na&mes:");
  names.Meaning("Host names that a browser may reach this machine by, besides its own, such as a proxy's.");
  names.Text("NetworkAllowOrigin", "O&ther site:");
  names.Meaning("A web site whose pages may read too, such as https://club.example.org; * for all. Empty: none.");
  page.Finish();
  return page.scroll;
}

QWidget* frmSetup::BuildMqttPage() {
  const SetupPage page = MakeSetupPage("Frame7", "MQTT", SetupPage::Columns::kTwo);

  FormSection broker("Broker", page.left);
  broker.Check("chkMqttEnabled", "Publish the rea&dings to a broker", {});
  broker.Meaning("For Home Assistant, Node-RED and programs of your own. Nothing can be changed that way.");
  broker.Text("MqttHost", "&Host:")->setToolTip("The broker's name or address");
  broker.Field("MqttPort", "Po&rt:", {}, {});
  broker.Meaning("1883 as a rule, 8883 for an encrypted line.");
  broker.Text("MqttUser", "Us&er:")->setToolTip("Empty for a broker that asks for none");
  QLineEdit* password = broker.Text("MqttPassword", "Pass&word:");
  password->setEchoMode(QLineEdit::Password);
  password->setToolTip("Of the user at the broker");
  broker.Check("chkMqttTls", "Encr&ypted line (TLS)", {});
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
  page.Finish();
  return page.scroll;
}

QWidget* frmSetup::BuildLeftoversPage() {
  const SetupPage page = MakeSetupPage("Frame4", "Leftover focuser settings", SetupPage::Columns::kTwo);
  const QString stored = "Left from the focuser: stored, without effect";

  FormSection moves("Position and steps", page.left);
  moves.Paragraph(
      "This program grew from a focuser driver. These settings are left from it. They do not affect the readings, "
      "but they do affect some members that clients use: see the tool tips.");
  relative_ = new QRadioButton("Relative");
  relative_->setToolTip("The leftover position is kept as it is");
  auto* absolute = new QRadioButton("Absolute");
  absolute->setObjectName("Absolute");
  absolute->setToolTip("The leftover position is kept between 0 and the limit of \"Windy\"");
  auto* group = new QButtonGroup(this);
  group->setObjectName("optType");
  group->addButton(absolute);
  group->addButton(relative_);
  moves.Row({absolute, relative_});
  moves.Field("MaxInc", "Max increment:", "steps", "Above 0");
  moves.Field("StepTime", "Step time:", "s", "Above 0; clients read it as WindSpeedWarn");
  moves.Check("chkCanStepSize", "Reports step size", "Clients can call Halt only while this is on");
  moves.Checks({{"chkReverse", "Reverse", stored}, {"chkHalfStep", "Half step", stored}});
  moves.Check("chkSynchronous", "Synchronous", stored);
  moves.Check("AllowAsyncWindCB", "Allow asynchronous wind", "Not available in synchronous mode");
  moves.Checks({{"chkCanHalt", "Can halt", stored}, {"AllowUnload", "Allow unload", stored}});
  moves.Check("chkBacklashDir", "Backlash compensation", stored);
  moves.Field("BacklashComp", "Backlash:", "steps", stored);
  moves.Field("Lpt_addr", "LPT address:", {}, stored);
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
  temperature.Check("TempCompCB", "Compensate", stored);
  temperature.Check("chkCanTemp", "Reports temperature", "Clients can read WindSpeedWarn only while this is on");
  temperature_label_ = temperature.Field("TempCur", {}, {}, stored);
  temperature_label_->setObjectName("TempLabel");
  temperature.Field("TPTempOffset", "Offset:", "°", stored);

  FormSection coefficients("Coefficients", page.right);
  coefficients.Field("Thermistor_A", "Thermistor A:", {}, "Steinhart-Hart", FormSection::Width::kCoefficient);
  coefficients.Field("Thermistor_B", "Thermistor B:", {}, "Steinhart-Hart", FormSection::Width::kCoefficient);
  coefficients.Field("Thermistor_C", "Thermistor C:", {}, "Steinhart-Hart", FormSection::Width::kCoefficient);
  coefficients.Field("ThermistorR_A", "Second A:", {}, "Steinhart-Hart", FormSection::Width::kCoefficient);
  coefficients.Field("ThermistorR_B", "Second B:", {}, "Steinhart-Hart", FormSection::Width::kCoefficient);
  coefficients.Field("ThermistorR_C", "Second C:", {}, "Steinhart-Hart", FormSection::Width::kCoefficient);
  coefficients.Field("Joystick_slopeR", "Joystick slope:", {}, stored, FormSection::Width::kCoefficient);
  coefficients.Field("Joystick_interceptR", "Joystick intercept:", {}, stored, FormSection::Width::kCoefficient);
  page.Finish();
  return page.scroll;
}

}  // namespace orvalis
