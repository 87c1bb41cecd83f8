#include <QtCore/qtestsupport_core.h>
#ifndef _WIN32
#include <sys/wait.h>
#endif

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>

#include "app/setup_fields.h"
#include "tests/support/link_fixture.h"
#include "tests/support/window_tools.h"
#include "ui/controls/file_pickers.h"
#include "ui/controls/picker_process.h"
#include "ui/setup/frm_setup.h"

namespace orvalis::test {
namespace {

/// The dialog between the real switches and a profile in memory. What the user does is done by `Exec`'s argument.
class SetupDialogTest : public LinkFixture {
 protected:
  SetupDialogTest() {
    for (std::size_t i = 0; i < SetupFields().size(); ++i) form.texts.push_back(std::to_string(i) + ".50");
    for (std::size_t i = 0; i < SetupFlags().size(); ++i) {
      form.flags.push_back(i % 2 == 0);
      if (SetupFlags()[i].name == "AdvancedMode") advanced_mode = i;
    }
    form.choices.assign(SetupChoices().size(), 2);
    for (std::size_t i = 0; i < SetupTexts().size(); ++i) form.plain_texts.push_back("text " + std::to_string(i));
    for (std::size_t i = 0; i < SetupFiles().size(); ++i) form.files.push_back("/sounds/file " + std::to_string(i));
    form.unit.force_relay = form.unit.allow_wind = true;
    form.unit_known = true;
    form.port = "/dev/not-plugged-in";
  }

  template <typename Control>
  Control* Get(std::string_view name) {
    return Find<Control>(dialog, name);
  }
  void Click(const char* name) { Get<QAbstractButton>(name)->click(); }

  /// Shows the dialog, lets the user do `what`, and closes it with the named button.
  bool Exec(const std::function<void()>& what, const char* button = "cmdOK") {
    QTimer::singleShot(0, &dialog, [this, what, button] {
      what();
      Click(button);
    });
    return dialog.Exec(form);
  }
  [[nodiscard]] QString Text(const char* button) { return Get<QPushButton>(button)->text(); }
  [[nodiscard]] bool Checked(const char* box) { return Get<QCheckBox>(box)->isChecked(); }

  /// Answers the next dialog that opens on top, within the time that a click takes.
  template <typename Dialog>
  void Answer(const std::function<void(Dialog&)>& answer) {
    QTimer::singleShot(0, &dialog, [this, answer] {
      auto* top = qobject_cast<Dialog*>(QApplication::activeModalWidget());
      ++answered;
      ASSERT_NE(top, nullptr) << "no dialog came";
      answer(*top);
    });
  }

  /// Chooses a file or folder in the next file dialog, or nothing.
  void Choose(const QString& path = {}) {
    Answer<QFileDialog>([path](QFileDialog& picker) {
      picker.selectFile(path);
      static_cast<QDialog&>(picker).done(path.isEmpty() ? QDialog::Rejected : QDialog::Accepted);
    });
  }

  std::size_t advanced_mode = 0;  ///< the layout's place among the flags
  int answered = 0;
  int reported = 0;
  int succeeded = 0;
  std::vector<SerialPortEntry> ports{{"/dev/ttyUSB0", std::string("FTDI adapter")}, {"/dev/ttyS0", {}}};
  network::Served served;
  Observation seen;
  AlertTrial trial{{.observer = observer, .sounds = alerted, .programs = alerted, .events = events}};
  frmSetup dialog{{.switches = switches,
                   .trial = trial,
                   .ports = [this] { return ports; },
                   .report = [this](const std::exception_ptr&) { ++reported; },
                   .succeeded = [this] { ++succeeded; },
                   .version = "0.1.0",
                   .now = [this]() -> const Observation& { return seen; },
                   .network = [this] { return served; }}};
  SetupForm form;
};

TEST_F(SetupDialogTest, EveryRowHasItsControlAndComesBackUntouched) {
  // Both ways round, so that no box gets away with always being on or off.
  for (int round = 0; round < 2; ++round) {
    const SetupForm given = form;
    EXPECT_TRUE(Exec([] {}));
    EXPECT_EQ(std::tie(form.texts, form.flags, form.choices, form.plain_texts, form.files, form.port),
              std::tie(given.texts, given.flags, given.choices, given.plain_texts, given.files, given.port));
    for (const SetupUnitOption& option : SetupUnitOptions()) {
      EXPECT_EQ(form.unit.*option.member, given.unit.*option.member) << option.name;
      form.unit.*option.member = !(form.unit.*option.member);
    }
    form.flags.flip();
  }
  EXPECT_TRUE(profile.log.empty());
  EXPECT_FALSE(Exec([] {}, "cmdCancel"));
}

TEST_F(SetupDialogTest, BadInputComesBackAsItWasTypedAndInFocus) {
  form.flags[advanced_mode] = false;  // the basic layout, which hides the step time
  EXPECT_TRUE(Exec([&] {
    Get<QLineEdit>("StepTime")->setText("0");
    Get<QLineEdit>("WindThreshold")->setText(" 1e");
    Get<QTabWidget>("pages")->setCurrentIndex(1);
  }));
  QTimer::singleShot(0, [] { QApplication::activeModalWidget()->close(); });
  dialog.ShowMessage("invalid input in Step Time, must be > 0");
  EXPECT_FALSE(Exec(
      [&] {
        EXPECT_EQ(Get<QLineEdit>("StepTime")->text(), "0");
        EXPECT_EQ(Get<QLineEdit>("WindThreshold")->text(), " 1e");
        EXPECT_TRUE(Get<QLineEdit>("StepTime")->isVisible());
        EXPECT_EQ(dialog.focusWidget(), Get<QLineEdit>("StepTime"));
      },
      "cmdCancel"));
  EXPECT_FALSE(form.flags[advanced_mode]) << "mending it chooses no layout";
  Exec([&] { EXPECT_FALSE(Get<QLineEdit>("StepTime")->isVisible()); });
}

TEST_F(SetupDialogTest, WhatOkWouldStoreStandsAtTheBoxWhileOneTypes) {
  Exec([&] {
    Get<QTabWidget>("pages")->setCurrentIndex(2);
    auto* advice = Get<QLabel>("RainThresholdAdvice");
    Get<QLineEdit>("RainThreshold")->setText("1000");
    EXPECT_TRUE(advice->isVisible());
    EXPECT_TRUE(advice->text().contains("the unit gets 000")) << advice->text().toStdString();
    Get<QLineEdit>("RainThreshold")->setText("999");
    EXPECT_FALSE(advice->isVisible());
    const auto* now = Get<QLabel>("RainAlarmNow");
    EXPECT_EQ(now->text(), "No reading now");
    seen.source = ReadingSource::kUnit;
    seen.figures.rain = 500;
    Get<QLineEdit>("RainThreshold")->setText("499");
    EXPECT_EQ(now->text(), "Now 500 counts: UNSAFE if this alarm is on");
    Click("AllowRain");
    EXPECT_EQ(now->text(), "Now 500 counts: alarm, UNSAFE");
    seen.figures.rain = 400;
    EXPECT_TRUE(QTest::qWaitFor([&] { return now->text() == "Now 400 counts: no alarm"; }))
        << "by the dialog's own timer";
  });
}

TEST_F(SetupDialogTest, AdvancedShowsTheLeftovers) {
  form.flags[advanced_mode] = false;
  Exec([&] {
    auto* tabs = Get<QTabWidget>("pages");
    const int leftovers = tabs->count() - 1;
    ASSERT_TRUE(tabs->widget(leftovers)->isAncestorOf(Get<QWidget>("Frame4")));
    EXPECT_FALSE(tabs->isTabVisible(leftovers));
    Click("cmdAdvanced");
    EXPECT_TRUE(tabs->isTabVisible(leftovers));
  });
  EXPECT_TRUE(form.flags[advanced_mode]);
}

TEST_F(SetupDialogTest, BoxesOpenTheFieldsThatBelongToThem) {
  const std::tuple<const char*, bool, const char*> cases[] = {{"chkCanTemp", true, "TempCur"},
                                                              {"chkCanTempComp", true, "TempMax"},
                                                              {"chkCanStepSize", true, "StepTime"},
                                                              {"chkBacklashDir", true, "BacklashComp"},
                                                              {"chkSynchronous", false, "AllowAsyncWindCB"}};
  for (const auto& [box, opens, field] : cases) {
    for (const bool on : {false, true}) {
      Get<QCheckBox>(box)->setChecked(on);
      EXPECT_EQ(Get<QWidget>(field)->isEnabled(), on == opens) << field;
    }
  }
}

TEST_F(SetupDialogTest, AFileIsShownByItsNameAndKeptWithItsPath) {
  QTemporaryDir folder;
  const QString file = folder.filePath("gale.wav");
  ASSERT_TRUE(QFile(file).open(QIODevice::WriteOnly));
  form.files.assign(SetupFiles().size(), "");
  form.flags.assign(SetupFlags().size(), false);
  form.files[0] = R"(C:\Sounds\rain.wav)";
  Exec([&] {
    EXPECT_EQ(Text("RainSounds"), "rain.wav");
    EXPECT_EQ(Get<QPushButton>("RainSounds")->toolTip(), R"(C:\Sounds\rain.wav)");
    Choose(file);
    Click("chkWindSounds");
    EXPECT_EQ(Text("WindSounds"), "gale.wav");
    // Cancelled: on with the file that there is, off without one.
    Choose();
    Click("chkRainSounds");
    Choose();
    Click("chkLightApp");
    EXPECT_TRUE(Checked("chkRainSounds") && Checked("chkWindSounds") && !Checked("chkLightApp"));
  });
  EXPECT_EQ(answered, 3);
  EXPECT_EQ(form.files[0], R"(C:\Sounds\rain.wav)");
  EXPECT_EQ(form.files[1], QDir::toNativeSeparators(file).toStdString());
}

TEST_F(SetupDialogTest, AVerdictsAlertIsOnWhenItNamesAFileAndCanBeTried) {
  form.files.assign(SetupFiles().size(), "");
  form.files[11] = "/bells/dawn.wav";
  form.files[13] = "/roof/close";
  Exec([&] {
    EXPECT_TRUE(Checked("chkSafeSound") && Checked("chkUnsafeApp") && !Checked("chkSafeApp"));
    Get<QTabWidget>("pages")->setCurrentIndex(4);
    Click("UnsafeAppTest");
    EXPECT_EQ(alerted.given, "/roof/close ");
    auto* result = Get<QLabel>("UnsafeAppResult");
    EXPECT_EQ(result->text(), "↑ started");
    alerted.calls.back().ended("ended with code 3");
    EXPECT_EQ(result->text(), "↑ ended with code 3");
    EXPECT_TRUE(result->isVisible());
    Click("SafeAppTest");
    EXPECT_EQ(Get<QLabel>("SafeAppResult")->text(), "↑ no file chosen");
    Click("chkSafeSound");
  });
  EXPECT_EQ(form.files[11] + form.files[13], "/roof/close") << "unticked, the sound is forgotten";
  EXPECT_EQ(std::string(*alerted.calls.back().facts[1].value), "1") << alerted.calls.back().facts[1].name;
}

#ifndef _WIN32  // whose own dialog asks for a folder, and no test can answer it
TEST_F(SetupDialogTest, SwitchesActAtOnceAndSyncingDoesNot) {
  settings.DemoMode = settings.AutoConnect = settings.g_lFullLog = settings.g_lOneLineLog = 1;
  dialog.SyncSwitches();
  EXPECT_TRUE(profile.log.empty());
  EXPECT_FALSE(connector.connecting());
  const auto use_switches = [&] {
    for (const char* name : {"DemoMode", "AutoConnect", "chk_FullLog", "chk_OneLineLog"}) {
      EXPECT_TRUE(Checked(name)) << name;
      Click(name);
    }
    Choose();
    Click("chk_FullLog");
    EXPECT_FALSE(Checked("chk_FullLog"));
  };
  Exec(use_switches, "cmdCancel");
  EXPECT_EQ(answered, 1);
  EXPECT_EQ(profile.TakeLog(),
            (Strings{"write /DemoMode", "write /AutoConnect", "write /g_lFullLog", "write /g_lOneLineLog"}));

  QTemporaryDir folder;
  const auto choose_folder = [&] {
    Choose(folder.path());
    Click("chk_OneLineLog");
    Click("AutoConnect");
  };
  Exec(choose_folder, "cmdCancel");
  EXPECT_TRUE(connector.connecting());
  EXPECT_EQ(profile.At("g_lOneLineLog"), "1");
  EXPECT_EQ(profile.At("g_sOneLineLogPath"), folder.path().toStdString());
  EXPECT_EQ(settings.g_sOneLineLogPath, folder.path().toStdString());
}
#endif

TEST_F(SetupDialogTest, ASwitchThatFailsSaysSoAndGoesBack) {
  profile.fails = true;
  Exec([&] {
    Answer<QMessageBox>([](QMessageBox& box) {
      EXPECT_EQ(box.text(), "cannot write the settings to memory: full");
      box.accept();
    });
    Click("DemoMode");
    EXPECT_FALSE(Checked("DemoMode"));
    EXPECT_EQ(settings.DemoMode, 0);
    EXPECT_EQ(succeeded, 0);
    profile.fails = false;
    Click("DemoMode");
  });
  EXPECT_EQ(answered, 1);
  EXPECT_EQ(reported, 1);
  EXPECT_EQ(succeeded, 1) << "the next failure would not be listed";
}

TEST_F(SetupDialogTest, APortThatIsNotInTheListCanBeTyped) {
  Exec([&] {
    EXPECT_EQ(Get<QComboBox>("gPort")->findText("/dev/ttyUSB0"), 1) << "after the one that is chosen";
    Get<QComboBox>("gPort")->setEditText("2 ");
  });
  EXPECT_EQ(form.port, "2");
}

TEST_F(SetupDialogTest, TheAddressIsChosenOrTypedAndThePagesServedAreLinks) {
  const auto address_after = [&](const char* given, const char* shown, const char* typed) {
    form.plain_texts[0] = given;
    Exec([&] {
      EXPECT_EQ(Get<AddressBox>("NetworkAddress")->currentText(), shown);
      if (typed != nullptr) Get<AddressBox>("NetworkAddress")->setEditText(typed);
    });
    return form.plain_texts[0];
  };
  served = {.pages = {"http://[::1]:11111/"}, .trouble = std::string("<port>")};
  EXPECT_EQ(address_after("0.0.0.0", "All interfaces", " 192.168.1.7 "), "192.168.1.7");
  EXPECT_EQ(address_after("0.0.0.0", "All interfaces", "This machine only"), "127.0.0.1");
  EXPECT_EQ(address_after("dome", "dome", nullptr), "dome");
  EXPECT_TRUE(Get<AddressBox>("NetworkAddress")->Meaning().startsWith("↑ Not an address"));
  const QString now = Get<QLabel>("NetworkNow")->text();
  EXPECT_TRUE(now.contains("href=\"http://[::1]:11111/\"") && now.contains("&lt;port&gt;")) << now.toStdString();
}

TEST_F(SetupDialogTest, EveryControlHasAToolTip) {
  form.files.assign(SetupFiles().size(), "");
  Exec([&] {
    for (const auto* page : Get<QTabWidget>("pages")->findChildren<QScrollArea*>()) {
      for (const auto* control : page->findChildren<QWidget*>()) {
        if (control->focusPolicy() == Qt::NoFocus || control->objectName().isEmpty()) continue;
        if (control->objectName().startsWith("qt_")) continue;
        EXPECT_FALSE(control->toolTip().isEmpty()) << control->objectName().toStdString();
      }
    }
  });
}

TEST_F(SetupDialogTest, NoKeyIsTakenTwiceOnAPage) { EXPECT_EQ(KeysTakenTwice(dialog), ""); }

TEST(SetupPickers, FilterBecomesTheToolkits) {
  const std::pair<std::string_view, const char*> cases[] = {
      {kSoundFileFilter, "All Files (*);;Wave Files (*.wav);;Batch Files (*.bat)"},
      {"Pictures (all)|*.png;*.jpg|left over", "Pictures (*.png *.jpg)"},
      {"", ""}};
  for (const auto& [stored, expected] : cases) EXPECT_EQ(ToQtFilter(stored).toStdString(), expected) << stored;
}

#ifndef _WIN32
/// Stands in for the program as the process of a file dialog.
QString PickerScript(const QTemporaryDir& folder, const char* commands) {
  QFile script(folder.filePath("picker"));
  script.open(QIODevice::WriteOnly);
  script.write(QByteArray("#!/bin/sh\n") + commands + "\n");
  script.close();
  script.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
  return script.fileName();
}

TEST(SetupPickers, AFolderThatDoesNotAnswerHoldsNothingUp) {
  const QTemporaryDir folder;
  QWidget window;
  window.show();
  const PickerRequest request{.title = "Open", .filter = {}, .start = {}};
  UsePickerProcess(PickerScript(folder, "echo .; exec sleep 100"));
  int ticks = 0;
  QTimer cycle;
  cycle.callOnTimeout([&] {
    ++ticks;
    for (QWidget* top : QApplication::topLevelWidgets()) {
      if (auto* box = qobject_cast<QMessageBox*>(top); box != nullptr && box->isVisible()) box->buttons()[0]->click();
    }
  });
  cycle.start(100);
  EXPECT_EQ(PickInProcess(&window, request), std::nullopt);
  EXPECT_GT(ticks, 30);  // in the five seconds until it could be given up
  UsePickerProcess(PickerScript(folder, "echo =/tmp/a%20%C3%A4.wav; exec sleep 100"));
  EXPECT_EQ(PickInProcess(&window, request), "/tmp/a ä.wav");
  EXPECT_LT(ticks, 80);  // an answer counts at once
  UsePickerProcess(PickerScript(folder, "exit 0"));
  EXPECT_EQ(PickInProcess(&window, request), std::nullopt);
  UsePickerProcess({});
  // Those that were let go are killed, and noticed when the system comes to it.
  const auto none_left = [] {
    siginfo_t info{};
    return waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) < 0;
  };
  EXPECT_TRUE(QTest::qWaitFor(none_left));
}
#endif

}  // namespace
}  // namespace orvalis::test
