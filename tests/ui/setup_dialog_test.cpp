#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "config/setup_fields.h"
#include "tests/support/link_fixture.h"
#include "ui/frm_setup.h"
#include "ui/setup_pickers.h"

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
    for (std::size_t i = 0; i < SetupFiles().size(); ++i) form.files.push_back("/sounds/file " + std::to_string(i));
    form.unit.force_relay = form.unit.allow_wind = true;
    form.port = "/dev/not-plugged-in";
  }

  template <typename Control>
  Control* Get(std::string_view name) {
    auto* control = dialog.findChild<Control*>(QString::fromUtf8(name.data(), static_cast<int>(name.size())));
    if (control == nullptr) throw std::logic_error("no control " + std::string(name));
    return control;
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

  std::size_t advanced_mode = 0;  ///< the layout's place among the flags
  int answered = 0;
  int reported = 0;
  int succeeded = 0;
  std::vector<SerialPortEntry> ports{{"/dev/ttyUSB0", "FTDI adapter"}, {"/dev/ttyS0", ""}};
  frmSetup dialog{{.switches = switches,
                   .ports = [this] { return ports; },
                   .report = [this](const std::exception_ptr&) { ++reported; },
                   .succeeded = [this] { ++succeeded; },
                   .version = "0.1.0"}};
  SetupForm form;
};

TEST_F(SetupDialogTest, EveryRowHasItsControlAndComesBackUntouched) {
  for (const SetupField& field : SetupFields()) EXPECT_NO_THROW(Get<QLineEdit>(field.name));
  for (const SetupFlag& flag : SetupFlags()) {
    if (flag.name == "AdvancedMode") continue;  // the layout, which is no box
    EXPECT_NO_THROW(Get<QAbstractButton>(flag.name));
  }
  for (const SetupUnitOption& option : SetupUnitOptions()) EXPECT_NO_THROW(Get<QCheckBox>(option.name));
  for (const char* name :
       {"Frame1", "Frame2", "Frame3", "Frame4", "gPort", "DemoMode", "AutoConnect", "chk_FullLog", "FullLogPath",
        "chk_OneLineLog", "OneLineLogPath", "cmdResetPos", "AllowUnload", "AllowAsyncWindCB", "TempCompCB"}) {
    EXPECT_NO_THROW(Get<QWidget>(name));
  }
  EXPECT_EQ(Get<QLabel>("lblDriverInfo")->text(), "Orvalis Version 0.1.0");

  // Both ways round, so that no box gets away with always being on or off.
  for (int round = 0; round < 2; ++round) {
    const SetupForm given = form;
    EXPECT_TRUE(Exec([] {}));
    EXPECT_EQ(form.texts, given.texts);
    EXPECT_EQ(form.flags, given.flags);
    EXPECT_EQ(form.files, given.files);
    EXPECT_EQ(form.port, given.port);
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

TEST_F(SetupDialogTest, AdvancedShowsTheLeftovers) {
  form.flags[advanced_mode] = false;
  Exec([&] {
    auto* tabs = Get<QTabWidget>("pages");
    const int leftovers = 3;
    ASSERT_TRUE(tabs->widget(leftovers)->isAncestorOf(Get<QWidget>("Frame4")));
    EXPECT_FALSE(tabs->isTabVisible(leftovers));
    EXPECT_EQ(Get<QPushButton>("cmdAdvanced")->text(), "Advanced >>");
    Click("cmdAdvanced");
    EXPECT_TRUE(tabs->isTabVisible(leftovers));
    EXPECT_EQ(Get<QPushButton>("cmdAdvanced")->text(), "<< Basic");
  });
  EXPECT_TRUE(form.flags[advanced_mode]);
}

TEST_F(SetupDialogTest, BoxesOpenTheFieldsThatBelongToThem) {
  struct Case {
    const char* box;
    bool on;
    std::vector<const char*> closed;
  };
  const Case cases[] = {
      {"chkCanTemp", false, {"TempCur", "TPTempOffset", "Thermistor_A", "ThermistorR_C"}},
      {"chkCanTempComp", false, {"TempMax", "TempSteps", "TempCompCB"}},
      {"chkCanStepSize", false, {"StepTime"}},
      {"chkBacklashDir", false, {"BacklashComp"}},
      {"chkSynchronous", true, {"AllowAsyncWindCB"}},
  };
  for (const Case& row : cases) {
    for (const bool on : {row.on, !row.on}) {
      Get<QCheckBox>(row.box)->setChecked(on);
      for (const char* name : row.closed) EXPECT_EQ(Get<QWidget>(name)->isEnabled(), on != row.on) << name;
    }
  }
  EXPECT_TRUE(Get<QWidget>("TPTempHysteresis")->isEnabled());

  Get<QCheckBox>("chkCentigrade")->setChecked(true);
  EXPECT_EQ(Get<QLabel>("TempLabel")->text(), "Temp (°C):");
  Get<QCheckBox>("chkCentigrade")->setChecked(false);
  EXPECT_EQ(Get<QLabel>("TempLabel")->text(), "Temp (°F):");
}

TEST_F(SetupDialogTest, AFileIsShownByItsNameAndKeptWithItsPath) {
  QTemporaryDir folder;
  const QString file = folder.filePath("gale.wav");
  ASSERT_TRUE(QFile(file).open(QIODevice::WriteOnly));
  form.files.assign(SetupFiles().size(), "");
  form.flags.assign(SetupFlags().size(), false);
  form.files[0] = R"(C:\Sounds\rain.wav)";
  Exec([&] {
    EXPECT_EQ(Get<QPushButton>("RainSounds")->text(), "rain.wav");
    EXPECT_EQ(Get<QPushButton>("RainSounds")->toolTip(), R"(C:\Sounds\rain.wav)");
    Answer<QFileDialog>([&](QFileDialog& picker) {
      picker.selectFile(file);
      static_cast<QDialog&>(picker).accept();
    });
    Click("chkWindSounds");
    EXPECT_EQ(Get<QPushButton>("WindSounds")->text(), "gale.wav");
    // Cancelled: on with the file that there is, off without one.
    Answer<QFileDialog>([](QFileDialog& picker) { picker.reject(); });
    Click("chkRainSounds");
    Answer<QFileDialog>([](QFileDialog& picker) { picker.reject(); });
    Click("chkLightApp");
    EXPECT_TRUE(Get<QCheckBox>("chkRainSounds")->isChecked());
    EXPECT_TRUE(Get<QCheckBox>("chkWindSounds")->isChecked());
    EXPECT_FALSE(Get<QCheckBox>("chkLightApp")->isChecked());
  });
  EXPECT_EQ(answered, 3);
  EXPECT_EQ(form.files[0], R"(C:\Sounds\rain.wav)");
  EXPECT_EQ(form.files[1], file.toStdString());
}

TEST_F(SetupDialogTest, SwitchesActAtOnceAndSyncingDoesNot) {
  settings.DemoMode = settings.AutoConnect = settings.g_lFullLog = settings.g_lOneLineLog = 1;
  dialog.SyncSwitches();
  EXPECT_TRUE(profile.log.empty());
  EXPECT_FALSE(connector.connecting());
  Exec(
      [&] {
        for (const char* name : {"DemoMode", "AutoConnect", "chk_FullLog", "chk_OneLineLog"}) {
          EXPECT_TRUE(Get<QCheckBox>(name)->isChecked()) << name;
          Click(name);
        }
        Answer<QFileDialog>([](QFileDialog& picker) { picker.reject(); });
        Click("chk_FullLog");
        EXPECT_FALSE(Get<QCheckBox>("chk_FullLog")->isChecked());
      },
      "cmdCancel");
  EXPECT_EQ(answered, 1);
  EXPECT_EQ(profile.log, (std::vector<std::string>{"write /DemoMode", "write /AutoConnect", "write /g_lFullLog",
                                                   "write /g_lOneLineLog"}));

  QTemporaryDir folder;
  Exec(
      [&] {
        Answer<QFileDialog>([&](QFileDialog& picker) {
          picker.selectFile(folder.path());
          static_cast<QDialog&>(picker).accept();
        });
        Click("chk_OneLineLog");
      },
      "cmdCancel");
  EXPECT_EQ(profile.At("g_lOneLineLog"), "1");
  EXPECT_EQ(profile.At("g_sOneLineLogPath"), folder.path().toStdString());
}

TEST_F(SetupDialogTest, ASwitchThatFailsSaysSoAndGoesBack) {
  profile.fails = true;
  Exec([&] {
    Answer<QMessageBox>([](QMessageBox& box) {
      EXPECT_EQ(box.text(), "cannot write the settings to memory: full");
      box.accept();
    });
    Click("DemoMode");
    EXPECT_FALSE(Get<QCheckBox>("DemoMode")->isChecked());
    EXPECT_EQ(succeeded, 0);
    profile.fails = false;
    Click("DemoMode");
  });
  EXPECT_EQ(answered, 1);
  EXPECT_EQ(reported, 1);
  EXPECT_EQ(succeeded, 1) << "the next failure would not be listed";
}

TEST_F(SetupDialogTest, APortThatIsNotInTheListCanBeTyped) {
  auto* box = Get<QComboBox>("gPort");
  Exec([&] {
    EXPECT_EQ(box->findText("/dev/not-plugged-in"), 0);
    EXPECT_EQ(box->findText("/dev/ttyUSB0"), 1);
    box->setEditText("2 ");
  });
  EXPECT_EQ(form.port, "2");
}

// Two controls of a page with the same key would both need the key pressed twice.
TEST_F(SetupDialogTest, NoKeyIsTakenTwiceOnAPage) {
  auto* tabs = Get<QTabWidget>("pages");
  for (int page = 0; page < tabs->count(); ++page) {
    QStringList texts;
    for (int tab = 0; tab < tabs->count(); ++tab) texts.append(tabs->tabText(tab));
    for (const QLabel* label : tabs->widget(page)->findChildren<QLabel*>()) texts.append(label->text());
    for (const QCheckBox* box : tabs->widget(page)->findChildren<QCheckBox*>()) texts.append(box->text());
    QString keys;
    for (const QString& text : texts) {
      const auto mark = text.indexOf('&');
      if (mark < 0) continue;
      EXPECT_FALSE(keys.contains(text[mark + 1].toUpper())) << "page " << page << ": " << text.toStdString();
      keys.append(text[mark + 1].toUpper());
    }
  }
}

TEST(SetupPickers, FilterBecomesTheToolkits) {
  struct Case {
    std::string_view stored;
    const char* expected;
  };
  const Case cases[] = {
      {kSoundFileFilter, "All Files (*);;Wave Files (*.wav);;Batch Files (*.bat)"},
      {kProgramFileFilter, "All Files (*);;Exe Files (*.exe);;Batch Files (*.bat)"},
      {"Pictures (all)|*.png;*.jpg", "Pictures (*.png *.jpg)"},
      {"Text|*.txt|left over", "Text (*.txt)"},
      {"", ""},
  };
  for (const Case& row : cases) EXPECT_EQ(ToQtFilter(row.stored).toStdString(), row.expected) << row.stored;
}

}  // namespace
}  // namespace orvalis::test
