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
#include "ui/controls/words.h"
#include "ui/setup/frm_setup.h"
#include "ui/setup/setup_page.h"

namespace orvalis {

QWidget* frmSetup::BuildConnectionPage() {
  const SetupPage page = MakeSetupPage("Frame1", tr("Connection and logs"), SetupPage::Columns::kOne);

  FormSection unit(tr("Sensor unit"), page.left);
  port_ = new PortBox([this] { return ListPorts(); });
  port_->setObjectName("gPort");
  unit.Control(tr("Serial po&rt:"), port_, tr("Choose a port, or type a device path or a port number"));
  port_note_ = unit.Note({});
  auto_connect_ =
      unit.Check("AutoConnect", tr("Connect at &start and reconnect automatically"), tr("Takes effect immediately"));
  demo_mode_ =
      unit.Check("DemoMode", tr("&Demo mode: simulated values, no sensor unit"), tr("Takes effect immediately"));

  FormSection logs(tr("Logs"), page.left);
  full_log_ = logs.Check("chk_FullLog", tr("Full lo&g: one line per reading"), tr("Takes effect immediately"));
  full_log_path_ = new PathButton(PathButton::Shows::kPath);
  full_log_path_->setObjectName("FullLogPath");
  full_log_path_->setAccessibleName(tr("Folder of the full log"));
  logs.Control(tr("Folder:"), full_log_path_, {});
  one_line_log_ =
      logs.Check("chk_OneLineLog", tr("&One-line log: the latest reading only"), tr("Takes effect immediately"));
  one_line_log_path_ = new PathButton(PathButton::Shows::kPath);
  one_line_log_path_->setObjectName("OneLineLogPath");
  one_line_log_path_->setAccessibleName(tr("Folder of the one-line log"));
  logs.Control(tr("Folder:"), one_line_log_path_, {});
  page.Finish();
  return page.scroll;
}

QWidget* frmSetup::BuildSafetyPage() {
  const SetupPage page = MakeSetupPage("Frame5", tr("Safety"), SetupPage::Columns::kTwo);

  FormSection hold(tr("Before it is safe"), page.left);
  hold.Field("SafeHoldSeconds", tr("&Hold before safe:"), tr("s"), {});
  hold.Meaning(tr(
      "How long there must be no reason to be unsafe before it is safe, 0 to 3600. Unsafe is always at once. A longer "
      "hold moves the roof less often on a changeable night."));

  FormSection own(tr("Unsafe as well, whatever the unit's alarms say"), page.left);
  //: In quotation marks: a word of the panel, which is not translated.
  own.Explained("chkVerdictRain", tr("&Rain: \"Damp\" or \"Rain\""),
                tr("Leave this on: an alarm that is switched off in the unit must not keep a wet roof open."));
  own.Explained("chkVerdictWind", tr("&Wind: \"Windy\""),
                tr("Closes the roof above the speed of \"Windy\", for a roof or a telescope that wind can damage."));
  own.Explained("chkVerdictClouds", tr("Cl&ouds: \"Cloudy\""),
                tr("Closes the roof under a cloudy sky, before rain can begin."));
  own.Explained("chkVerdictLight", tr("&Daylight: \"Day\""),
                tr("Keeps the roof closed by day. Not for solar telescopes."));

  FormSection trust(tr("Only for tests and for older programs"), page.right);
  trust.Explained("chkDemoCanBeSafe", tr("Demo &mode can be safe"),
                  tr("Never on where a roof listens: simulated values would open it under a real sky."));
  //: "Safe" is the name of a property that other programs read; it is not translated.
  trust.Explained(
      "chkKeepVerdict", tr("\"Safe\" &keeps the last verdict"),
      tr("Programs that read only \"Safe\" get the last answer of a unit that has fallen silent, however old: the roof "
         "may stay open in rain."));

  //: A noun: what is written down.
  FormSection record(tr("Record"), page.right);
  record.Explained(
      "chkVerdictLog", tr("&Verdict log: orvalis_verdicts.txt"),
      tr("A line for each change of the verdict, with its reasons and values: why the roof closed last night."));
  page.Finish();
  return page.scroll;
}

QWidget* frmSetup::BuildAlertsPage() {
  const SetupPage page = MakeSetupPage("Frame3", tr("Alerts"), SetupPage::Columns::kOne);
  struct Row {
    QString title;
    const char* sound_box;
    const char* sound;
    const char* program_box;
    const char* program;
  };
  const auto add = [](FormSection& section, const Row& row) {
    section.AlertRow(row.title, {row.sound_box, row.sound}, {row.program_box, row.program});
  };

  FormSection verdict(tr("By verdict"), page.left);
  verdict.Check("chkSafetyAlerts", tr("&Give these alerts"),
                tr("The switch of these three; they do not depend on \"Enable alerts\""));
  verdict.Paragraph(
      tr("For a roof: each is given when the verdict changes, whether or not alerts are enabled below. A program that "
         "fails is started again after 10, 30 and 60 s while the verdict stays."));
  const Row verdict_rows[] = {
      {tr("Unsafe"), "chkUnsafeSound", "UnsafeSound", "chkUnsafeApp", "UnsafeApp"},
      {tr("Safe again"), "chkSafeSound", "SafeSound", "chkSafeApp", "SafeApp"},
      {tr("No readings"), "chkNoReadingsSound", "NoReadingsSound", "chkNoReadingsApp", "NoReadingsApp"},
  };
  for (const Row& row : verdict_rows) add(verdict, row);

  FormSection condition(tr("By condition"), page.left);
  condition.Check("chkEnableSounds", tr("&Enable alerts"),
                  tr("Switch for the sounds and programs of the five conditions"));
  condition.Checks({{"chkRepeatSounds", tr("&Repeat sounds"),
                     tr("With every reading while the condition lasts; otherwise once when it begins")},
                    {"chkRepeatApp", tr("Repeat pr&ograms"),
                     tr("Every reading while the condition lasts; otherwise once when it begins")}});
  const Row condition_rows[] = {
      {tr("Rain"), "chkRainSounds", "RainSounds", "chkRainApp", "RainApp"},
      {tr("Wind"), "chkWindSounds", "WindSounds", "chkWindApp", "WindApp"},
      //: The light of the sky.
      {tr("Light"), "chkLightSounds", "LightSounds", "chkLightApp", "LightApp"},
      {tr("Clouds"), "chkCloudSounds", "CloudSounds", "chkCloudApp", "CloudApp"},
      {tr("Relay"), "chkRelaySounds", "RelaySounds", "chkRelayApp", "RelayApp"},
  };
  for (const Row& row : condition_rows) add(condition, row);
  page.Finish();
  return page.scroll;
}

QWidget* frmSetup::BuildNetworkPage() {
  const SetupPage page = MakeSetupPage("Frame6", tr("Network"), SetupPage::Columns::kTwo);

  FormSection serving(tr("For other programs"), page.left);
  serving.Check("chkNetworkEnabled", tr("&Serve the readings over HTTP"), {});
  serving.Meaning(tr(
      "Observatory programs, scripts and browsers can read the values and whether it is safe. Nothing can be changed "
      "that way, and no password is read."));
  address_ = new AddressBox;
  address_->setObjectName("NetworkAddress");
  serving.Control(tr("A&ddress:"), address_, {});
  address_note_ = serving.Meaning({});
  address_->setToolTip(tr("For one interface alone, type its address"));
  serving.Field("NetworkPort", tr("P&ort:"), {}, {});
  serving.Meaning(tr("1 to 65535. A second Orvalis on this machine needs a port of its own."));
  serving.Check("chkNetworkDiscovery", tr("Clients find it by themsel&ves"), {});
  serving.Meaning(tr("Programs that look for ASCOM Alpaca see it, while it is open to the network."));

  FormSection now(tr("Now served at"), page.right);
  network_now_ = now.Note({});
  network_now_->setObjectName("NetworkNow");
  network_now_->setTextFormat(Qt::RichText);
  network_now_->setWordWrap(true);
  network_now_->setTextInteractionFlags(Qt::TextBrowserInteraction | Qt::LinksAccessibleByKeyboard);
  network_now_->setAccessibleName(tr("Now served at"));
  network_now_->setToolTip(tr("A link opens the page in your browser"));

  FormSection names(tr("Names"), page.right);
  names.Text("NetworkStation", tr("Stat&ion:"));
  names.Meaning(tr("What other programs call this one. Empty: the machine's name."));
  names.Text("NetworkNames", tr("Further na&mes:"));
  names.Meaning(tr("Host names that a browser may reach this machine by, besides its own, such as a proxy's."));
  names.Text("NetworkAllowOrigin", tr("O&ther site:"));
  names.Meaning(tr("A web site whose pages may read too, such as https://club.example.org; * for all. Empty: none."));
  page.Finish();
  return page.scroll;
}

QWidget* frmSetup::BuildMqttPage() {
  const SetupPage page = MakeSetupPage("Frame7", Fixed("MQTT"), SetupPage::Columns::kTwo);

  FormSection broker(tr("Broker"), page.left);
  broker.Check("chkMqttEnabled", tr("Publish the rea&dings to a broker"), {});
  broker.Meaning(tr("For Home Assistant, Node-RED and programs of your own. Nothing can be changed that way."));
  broker.Text("MqttHost", tr("&Host:"))->setToolTip(tr("The broker's name or address"));
  broker.Field("MqttPort", tr("Po&rt:"), {}, {});
  broker.Meaning(tr("1883 as a rule, 8883 for an encrypted line."));
  broker.Text("MqttUser", tr("Us&er:"))->setToolTip(tr("Empty for a broker that asks for none"));
  QLineEdit* password = broker.Text("MqttPassword", tr("Pass&word:"));
  password->setEchoMode(QLineEdit::Password);
  password->setToolTip(tr("Of the user at the broker"));
  broker.Check("chkMqttTls", tr("Encr&ypted line (TLS)"), {});
  broker.Meaning(parts_.mqtt_tls ? tr("The broker's certificate and its name are checked.")
                                 : tr("Not available in this version: with this box nothing is published."));
  broker.Text("MqttCaFile", tr("CA f&ile:"));
  broker.Meaning(tr("Of the authority that made the certificate. Empty: those that the system trusts."));
  broker.Check("chkMqttAllowPlainPassword", tr("&Send the password unencrypted to another machine"), {});
  broker.Meaning(tr("Whoever listens on the network can read it then. Otherwise nothing is published."));

  //: The title of what is published at the moment.
  FormSection now(tr("Now"), page.right);
  mqtt_now_ = now.Note({});
  mqtt_now_->setObjectName("MqttNow");
  //: On a button: try the broker out.
  mqtt_test_ = new QPushButton(tr("Test"));
  mqtt_test_->setObjectName("cmdMqttTest");
  mqtt_test_->setAutoDefault(false);
  mqtt_test_->setToolTip(tr("Connects as typed here; publishes nothing"));
  now.Row({mqtt_test_});
  mqtt_result_ = now.Note({});
  mqtt_result_->setObjectName("MqttResult");
  for (QLabel* label : {mqtt_now_, mqtt_result_}) {
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
  }

  FormSection messages(tr("Messages"), page.right);
  messages.Text("MqttPrefix", tr("&Begin topics with:"));
  messages.Meaning(tr("The station's name follows, which is on the page Network."));
  messages.Check("chkMqttHomeAssistant", tr("H&ome Assistant finds the values by itself"), {});
  //: "unavailable" is what the program publishes; it is not translated.
  messages.Meaning(tr("In Home Assistant, \"unavailable\" must close the roof too: see the guide."));
  page.Finish();
  return page.scroll;
}

QWidget* frmSetup::BuildLeftoversPage() {
  const SetupPage page = MakeSetupPage("Frame4", tr("Leftover focuser settings"), SetupPage::Columns::kTwo);
  const QString stored = tr("Left from the focuser: stored, without effect");

  //: After a number.
  const QString steps = tr("steps");
  FormSection moves(tr("Position and steps"), page.left);
  moves.Paragraph(
      tr("This program grew from a focuser driver. These settings are left from it. They do not affect the readings, "
         "but they do affect some members that clients use: see the tool tips."));
  relative_ = new QRadioButton(tr("Relative"));
  relative_->setToolTip(tr("The leftover position is kept as it is"));
  auto* absolute = new QRadioButton(tr("Absolute"));
  absolute->setObjectName("Absolute");
  absolute->setToolTip(tr("The leftover position is kept between 0 and the limit of \"Windy\""));
  auto* group = new QButtonGroup(this);
  group->setObjectName("optType");
  group->addButton(absolute);
  group->addButton(relative_);
  moves.Row({absolute, relative_});
  moves.Field("MaxInc", tr("Max increment:"), steps, tr("Above 0"));
  moves.Field("StepTime", tr("Step time:"), tr("s"),
              //: "WindSpeedWarn" is a name for other programs, which is not translated.
              tr("Above 0; clients read it as WindSpeedWarn"));
  moves.Check("chkCanStepSize", tr("Reports step size"),
              //: "Halt" is a name for other programs, which is not translated.
              tr("Clients can call Halt only while this is on"));
  moves.Checks({{"chkReverse", tr("Reverse"), stored}, {"chkHalfStep", tr("Half step"), stored}});
  moves.Check("chkSynchronous", tr("Synchronous"), stored);
  moves.Check("AllowAsyncWindCB", tr("Allow asynchronous wind"), tr("Not available in synchronous mode"));
  moves.Checks({{"chkCanHalt", tr("Can halt"), stored}, {"AllowUnload", tr("Allow unload"), stored}});
  moves.Check("chkBacklashDir", tr("Backlash compensation"), stored);
  moves.Field("BacklashComp", tr("Backlash:"), steps, stored);
  moves.Field("Lpt_addr", tr("LPT address:"), {}, stored);
  auto* reset = new QPushButton(tr("Reset position"));
  reset->setObjectName("cmdResetPos");
  reset->setAutoDefault(false);
  reset->setEnabled(false);
  reset->setToolTip(tr("A weather sensor has no position to reset"));
  moves.Row({reset});

  FormSection temperature(tr("Temperature compensation"), page.right);
  temperature.Check("chkCanTempComp", tr("Can compensate"),
                    //: "Temperature" is a name for other programs, which is not translated.
                    tr("Clients can read Temperature only while this is on"));
  temperature.Field("TempMax", tr("Delta T:"), Fixed("°"), tr("Above 0"));
  temperature.Field("TempSteps", tr("Steps for delta T:"), steps, tr("Above 0"));
  temperature.Check("TempCompCB", tr("Compensate"), stored);
  temperature.Check("chkCanTemp", tr("Reports temperature"),
                    //: "WindSpeedWarn" is a name for other programs, which is not translated.
                    tr("Clients can read WindSpeedWarn only while this is on"));
  temperature_label_ = temperature.Field("TempCur", {}, {}, stored);
  temperature_label_->setObjectName("TempLabel");
  temperature.Field("TPTempOffset", tr("Offset:"), Fixed("°"), stored);

  FormSection coefficients(tr("Coefficients"), page.right);
  //: The name of the formula that the coefficients belong to.
  const QString formula = tr("Steinhart-Hart");
  coefficients.Field("Thermistor_A", tr("Thermistor A:"), {}, formula, FormSection::Width::kCoefficient);
  coefficients.Field("Thermistor_B", tr("Thermistor B:"), {}, formula, FormSection::Width::kCoefficient);
  coefficients.Field("Thermistor_C", tr("Thermistor C:"), {}, formula, FormSection::Width::kCoefficient);
  //: The same of a second formula.
  coefficients.Field("ThermistorR_A", tr("Second A:"), {}, formula, FormSection::Width::kCoefficient);
  coefficients.Field("ThermistorR_B", tr("Second B:"), {}, formula, FormSection::Width::kCoefficient);
  coefficients.Field("ThermistorR_C", tr("Second C:"), {}, formula, FormSection::Width::kCoefficient);
  coefficients.Field("Joystick_slopeR", tr("Joystick slope:"), {}, stored, FormSection::Width::kCoefficient);
  coefficients.Field("Joystick_interceptR", tr("Joystick intercept:"), {}, stored, FormSection::Width::kCoefficient);
  page.Finish();
  return page.scroll;
}

}  // namespace orvalis
