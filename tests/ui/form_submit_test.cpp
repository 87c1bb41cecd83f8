#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QImage>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>

#include "tests/support/publish_fixture.h"
#include "ui/frm_form_submit.h"
#include "ui/frm_hand_box.h"
#include "ui/frm_setup.h"

namespace orvalis::test {
namespace {

QPixmap Red() {
  QPixmap picture(40, 60);
  picture.fill(Qt::red);
  return picture;
}

class FormSubmitTest : public PublishFixture {
 protected:
  FormSubmitTest() {
    settings.g_lPWSUpdate_interval_index = 2;
    settings.g_lWEBUpdate_interval_index = 99;
    weather.ambient_known = true;
    panel.stale = false;
    form.Load();
    form.show();
  }

  template <typename Control>
  Control* Get(const char* name) {
    auto* control = form.findChild<Control*>(name);
    if (control == nullptr) throw std::logic_error(std::string("no control ") + name);
    return control;
  }
  void Type(const char* name, const QString& text) {
    auto* edit = Get<QLineEdit>(name);
    edit->selectAll();
    for (const QChar c : text) {
      QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, c);
      QApplication::sendEvent(edit, &press);
    }
  }
  /// Lets the window show what its boxes hold.
  void Settle() {
    form.hide();
    form.show();
    QApplication::processEvents();
  }
  QString Text(const char* name) { return Get<QPlainTextEdit>(name)->toPlainText(); }

  frmFormSubmit form{publisher, Red};
};

TEST_F(FormSubmitTest, ShowsTheSettingsAndTakesWhatIsTyped) {
  profile.log.clear();
  EXPECT_EQ(Get<QLineEdit>("txtVariableName0")->text(), "KTEST1");
  EXPECT_EQ(Get<QLineEdit>("webcamUrl")->text(), "ftp.example");
  EXPECT_TRUE(Get<QCheckBox>("chk_AllowPWS")->isChecked());
  EXPECT_FALSE(Get<QCheckBox>("chk_AllowWEB")->isChecked());
  EXPECT_EQ(Get<QComboBox>("PWSUploadTime")->currentText(), "15");
  EXPECT_EQ(Get<QComboBox>("WEBUploadTime")->currentIndex(), -1);
  EXPECT_EQ(Get<QComboBox>("PWSUploadTime")->itemData(7), 0);
  EXPECT_EQ(Get<QCheckBox>("chk_AllowPWS")->text(), "Allow PWS Upload  Interval =");
  EXPECT_EQ(Get<QCheckBox>("chk_AllowWEB")->text(), "Allow Web   Upload Interval =");
  EXPECT_TRUE(profile.log.empty()) << "loading is no edit";
  EXPECT_FALSE(script.empty());

  for (const SubmitText& box : kSubmitTexts) {
    Type(box.control.data(), "typed");
    EXPECT_EQ(settings.*box.member, "typed") << box.control;
  }
  EXPECT_FALSE(Get<QPushButton>("Command1")->isEnabled());
  Get<QCheckBox>("chk_AllowWEB")->click();
  Get<QPushButton>("Command1")->click();
  EXPECT_EQ(settings.g_bAllow_WEB, 1);
  EXPECT_EQ(outside.calls.size(), 2u) << "both of the other programs";
  Get<QCheckBox>("chk_AllowPWS")->click();
  EXPECT_FALSE(Get<QPushButton>("cmdSend")->isEnabled());
}

TEST_F(FormSubmitTest, ThePasswordIsSeenNowhere) {
  Get<QPushButton>("cmdSend")->click();
  ASSERT_EQ(socket.requests.size(), 1u);
  EXPECT_NE(socket.requests[0].find("PASSWORD=s3cr3t/x&"), std::string::npos);
  socket.handlers.received("HTTP/1.0 302 s3cr3t/x\r\nLocation: http://h/?PASSWORD=s3cr3t/x\r\n\r\nend" +
                           std::string(1, '\0'));
  socket.handlers.closed();
  Settle();
  EXPECT_TRUE(Text("txtRequest").contains("PASSWORD=********&"));
  EXPECT_EQ(Text("txtResponse"),
            QString("HTTP/1.0 302 ********\nLocation: http://h/?PASSWORD=********\n\nend") + QChar(0xfffd));
  EXPECT_TRUE(Text("errsWinsock").contains("302 ********"));
  EXPECT_EQ(Get<QLineEdit>("txtVariableValue0")->echoMode(), QLineEdit::Password);
}

TEST_F(FormSubmitTest, RowsAreAddedToTheRequestAndTakenOut) {
  Get<QComboBox>("cboRequestMethod")->setCurrentIndex(1);
  emit Get<QComboBox>("cboRequestMethod")->activated(1);
  for (const char* kind : {"Header", "Variable"}) {
    Get<QPushButton>((std::string("cmdAdd") + kind).c_str())->click();
    Type((std::string("txt") + kind + "Name").c_str(), "X-a");
    Type((std::string("txt") + kind + "Value").c_str(), "b c");
  }
  Settle();
  for (const char* part : {"POST /update", "\nX-a: b c\n", "&X%2Da=b%20c"})
    EXPECT_TRUE(Text("txtRequest").contains(part));
  Get<QPushButton>("cmdRemoveHeader")->click();
  Get<QPushButton>("cmdRemoveVariable")->click();
  Settle();
  for (const char* part : {"X-a", "X%2Da"}) EXPECT_FALSE(Text("txtRequest").contains(part));
}

TEST_F(FormSubmitTest, MessagesDoNotPileUp) {
  form.ShowMessage("Invalid Host", "ERROR");
  form.ShowMessage("Invalid protocol schema", "Orvalis");
  const auto boxes = form.findChildren<QMessageBox*>();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0]->text(), "Invalid protocol schema");
  boxes[0]->close();
}

TEST_F(FormSubmitTest, ThePictureIsWrittenInBothFormats) {
  QTemporaryDir folder;
  const std::string bitmap = folder.filePath("a.bmp").toStdString();
  EXPECT_THROW(form.SaveBitmap(bitmap), RunTimeError) << "there is none yet";
  form.Capture();
  form.SaveBitmap(bitmap);
  form.SaveJpeg(folder.filePath("a.jpg").toStdString());
  for (const char* name : {"a.bmp", "a.jpg"}) {
    const QImage picture(folder.filePath(name));
    EXPECT_EQ(picture.size(), QSize(40, 60)) << name;
    EXPECT_GT(picture.pixelColor(20, 30).red(), 250) << name;
  }
  EXPECT_THROW(form.SaveJpeg("/no/such/folder/a.jpg"), RunTimeError);
}

TEST_F(FormSubmitTest, NoKeyIsTakenTwice) {
  const auto* tabs = Get<QTabWidget>("pages");
  for (int page = 0; page < tabs->count(); ++page) {
    QStringList texts;
    for (int tab = 0; tab < tabs->count(); ++tab) texts.append(tabs->tabText(tab));
    const auto add = [&](const QWidget* control, const QString& text) {
      const QWidget* other = tabs->widget(1 - page);
      if (!other->isAncestorOf(control)) texts.append(text);
    };
    for (const QLabel* label : form.findChildren<QLabel*>()) add(label, label->text());
    for (const QAbstractButton* button : form.findChildren<QAbstractButton*>()) add(button, button->text());
    QString keys;
    for (const QString& text : texts) {
      const auto mark = text.indexOf('&');
      if (mark < 0) continue;
      EXPECT_FALSE(keys.contains(text[mark + 1].toUpper())) << text.toStdString();
      keys.append(text[mark + 1].toUpper());
    }
  }
}

// Windows of the panel get its style sheet as well, which took their own palette away.
TEST_F(FormSubmitTest, NothingButRedShinesAtNight) {
  frmHandBox box(panel);
  ImmediateSwitches switches(
      {.store = store, .settings = settings, .link = link, .connector = connector, .logs = logs, .demo_mode = {}});
  frmSetup setup({.switches = switches,
                  .ports = [] { return std::vector<SerialPortEntry>(); },
                  .report = {},
                  .succeeded = {},
                  .version = "1"},
                 &box);
  frmFormSubmit submit(publisher, Red, &box);
  submit.Load();
  box.show();
  box.SetNightTheme(true);
  setup.SetTheme(Theme::Night());
  submit.SetTheme(Theme::Night());
  publisher.boxes().AddError("something");
  for (QWidget* window : std::initializer_list<QWidget*>{&setup, &submit}) {
    QApplication::processEvents();
    window->show();
    QApplication::processEvents();
    const QImage image = window->grab().toImage();
    int shining = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        const QRgb pixel = image.pixel(x, y);
        if (qGreen(pixel) > 0 || qBlue(pixel) > 0) ++shining;
      }
    }
    EXPECT_EQ(shining, 0) << window->objectName().toStdString();
    window->hide();
  }
}

}  // namespace
}  // namespace orvalis::test
