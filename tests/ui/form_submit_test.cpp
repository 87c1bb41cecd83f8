#include <QtCore/qtestsupport_core.h>
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QTextCursor>

#include "tests/support/publish_fixture.h"
#include "tests/support/window_tools.h"
#include "ui/panel/frm_hand_box.h"
#include "ui/publishing/frm_form_submit.h"
#include "ui/setup/frm_setup.h"

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
  Control* Get(std::string_view name) {
    return Find<Control>(form, name);
  }
  void Type(std::string_view name, const QString& text) {
    auto* edit = Get<QLineEdit>(name);
    edit->selectAll();
    for (const QChar c : text) {
      QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, c);
      QApplication::sendEvent(edit, &press);
    }
  }
  /// What a box of the window holds when it has had the time to show it.
  QString Text(const char* name) {
    form.hide();
    form.show();
    QApplication::processEvents();
    return Get<QPlainTextEdit>(name)->toPlainText();
  }
  void Click(std::string_view button) { Get<QAbstractButton>(button)->click(); }

  frmFormSubmit form{publisher, Red};
};

TEST_F(FormSubmitTest, ShowsTheSettingsAndTakesWhatIsTyped) {
  EXPECT_EQ(Get<QLineEdit>("txtVariableName0")->text(), "KTEST1");
  EXPECT_EQ(Get<QLineEdit>("webcamUrl")->text(), "ftp.example");
  EXPECT_TRUE(Get<QCheckBox>("chk_AllowPWS")->isChecked() && !Get<QCheckBox>("chk_AllowWEB")->isChecked());
  EXPECT_EQ(Get<QComboBox>("PWSUploadTime")->currentText(), "15");
  EXPECT_EQ(Get<QComboBox>("WEBUploadTime")->currentIndex(), -1);
  EXPECT_TRUE(profile.log.empty()) << "loading is no edit";
  EXPECT_FALSE(script.empty());

  for (const SubmitText& box : kSubmitTexts) {
    Type(box.control, "typed");
    EXPECT_EQ(settings.*box.member, "typed") << box.control;
  }
  EXPECT_EQ(Get<QLineEdit>("txtVariableValue0")->text(), Get<QLineEdit>("txtVariableValue1")->text())
      << "one password, whichever box it is typed into";
  const auto* remark = Get<QLabel>("lblRemark0");
  EXPECT_TRUE(remark->isHidden());
  Type("txtVariableName0", "a b");
  EXPECT_TRUE(remark->isVisible());
  Click("Command1");
  EXPECT_TRUE(outside.calls.empty()) << "not allowed: it asks first";
  form.findChild<QMessageBox*>()->button(QMessageBox::Cancel)->click();
  Click("chk_AllowWEB");
  Click("Command1");
  EXPECT_EQ(settings.g_bAllow_WEB, 1);
  EXPECT_EQ(outside.calls.size(), 2u) << "both of the other programs";
}

TEST_F(FormSubmitTest, WhatIsNotAllowedIsSentOnceWhenTheUserAgrees) {
  Click("chk_AllowPWS");
  const auto* target = Get<QLabel>("lblReadingsTarget");
  EXPECT_EQ(target->text(),
            "Sent as KTEST1 to service.example, port 8080. Uploads are off: the button asks, and sends "
            "once.");
  Click("cmdSend");
  auto* box = form.findChild<QMessageBox*>();
  ASSERT_TRUE(box != nullptr && box->text().contains("KTEST1 to service.example"));
  EXPECT_EQ(socket.requests.size(), 0u);
  for (auto* button : box->buttons()) {
    if (button->text() == "&Send once") button->click();
  }
  ASSERT_EQ(socket.requests.size(), 1u);
  publisher.readings().Preview();
  EXPECT_TRUE(publisher.boxes().request_caption().English().starts_with("Request sent"))
      << "it goes on showing what was sent";
  EXPECT_EQ(settings.g_bAllow_PWS, 0);
  EXPECT_EQ(publisher.readings().Start(), UploadTurn::kTaken);
  EXPECT_EQ(socket.requests.size(), 1u) << "not on schedule";
  Type("txtUrl", "https://h/");
  EXPECT_TRUE(target->text().startsWith("Cannot be sent: ")) << target->text().toStdString();
  Click("chkWebcamBuiltIn");
  EXPECT_TRUE(Get<QLabel>("lblPictureTarget")->text().startsWith("Sent as cam to ftp.example/image.jpg, port 21."));
}

TEST_F(FormSubmitTest, ThePasswordIsSeenNowhere) {
  Click("cmdSend");
  ASSERT_EQ(socket.requests.size(), 1u);
  EXPECT_NE(socket.requests[0].find("PASSWORD=s3cr3t/x&"), std::string::npos);
  socket.handlers.received("HTTP/1.0 302 s3cr3t/x\r\nLocation: http://h/?PASSWORD=s3cr3t/x\r\n\r\nend" +
                           std::string(1, '\0'));
  socket.handlers.closed();
  EXPECT_TRUE(Text("txtRequest").contains("PASSWORD=********&"));
  EXPECT_EQ(Text("txtResponse"),
            QString("HTTP/1.0 302 ********\nLocation: http://h/?PASSWORD=********\n\nend") + QChar(0xfffd));
  EXPECT_TRUE(Text("errsWinsock").contains("(status 302)"));
  for (const char* box : {"txtVariableValue0", "txtVariableValue1"}) {
    EXPECT_EQ(Get<QLineEdit>(box)->echoMode(), QLineEdit::Password);
  }
}

TEST_F(FormSubmitTest, RowsAreAddedToTheRequestAndTakenOut) {
  Get<QComboBox>("cboRequestMethod")->setCurrentIndex(1);
  emit Get<QComboBox>("cboRequestMethod")->activated(1);
  for (const std::string kind : {"Header", "Variable"}) {
    Click("cmdAdd" + kind);
    Type("txt" + kind + "Name", "X-a");
    Type("txt" + kind + "Value", "b c");
  }
  for (const char* part : {"POST /update", "\nX-a: b c\n", "&X%2Da=b%20c"}) {
    EXPECT_TRUE(Text("txtRequest").contains(part)) << part;
  }
  Click("cmdRemoveHeader");
  Click("cmdRemoveVariable");
  for (const char* part : {"X-a", "X%2Da"}) EXPECT_FALSE(Text("txtRequest").contains(part)) << part;
}

TEST_F(FormSubmitTest, WhatComesWhileTextIsSelectedIsShownAfterwards) {
  const char* const names[] = {"txtResponse", "errsWinsock"};
  const auto shown = [&](const char* name) { return Get<QPlainTextEdit>(name)->toPlainText(); };
  Click("cmdSend");
  socket.handlers.received("first");
  publisher.boxes().AddError("one");
  EXPECT_EQ(Text("txtResponse"), "first");
  for (const char* name : names) Get<QPlainTextEdit>(name)->selectAll();
  socket.handlers.received(", second");
  publisher.boxes().AddError("two");
  Settle();
  EXPECT_EQ(shown("txtResponse"), "first");
  for (const char* name : names) Get<QPlainTextEdit>(name)->moveCursor(QTextCursor::End);
  EXPECT_TRUE(QTest::qWaitFor([&] { return shown("errsWinsock").contains("two"); }));
  EXPECT_EQ(shown("txtResponse"), "first, second");
}

TEST_F(FormSubmitTest, MessagesDoNotPileUp) {
  form.ShowMessage("Invalid Host", "ERROR");
  form.ShowMessage("Invalid protocol schema", "Orvalis");
  const auto boxes = form.findChildren<QMessageBox*>();
  ASSERT_EQ(boxes.size(), 1);
  EXPECT_EQ(boxes[0]->text(), "Invalid protocol schema");
  boxes[0]->close();
}

TEST_F(FormSubmitTest, NoKeyIsTakenTwice) { EXPECT_EQ(KeysTakenTwice(form), ""); }

// Windows of the panel get its style sheet as well, which took their own palette away.
TEST_F(FormSubmitTest, NothingButRedShinesAtNight) {
  frmHandBox box(panel);
  AlertTrial trial({.observer = observer, .sounds = alerted, .programs = alerted, .events = events});
  frmSetup setup({.switches = switches,
                  .trial = trial,
                  .ports = [] { return std::vector<SerialPortEntry>(); },
                  .report = {},
                  .succeeded = {},
                  .version = "1"},
                 &box);
  frmFormSubmit submit(publisher, Red, &box);
  submit.Load();
  box.show();
  box.SetNightTheme(true);
  setup.SetNightTheme(true);
  submit.SetNightTheme(true);
  publisher.boxes().AddError("something");
  for (QWidget* window : std::initializer_list<QWidget*>{&setup, &submit}) {
    QApplication::processEvents();
    window->show();
    QApplication::processEvents();
    EXPECT_EQ(Light(window->grab().toImage()).not_red, 0) << window->objectName().toStdString();
    window->hide();
  }
}

}  // namespace
}  // namespace orvalis::test
