#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QStackedWidget>
#include <QTimer>

#include "tests/support/link_fixture.h"
#include "tests/support/window_tools.h"
#include "ui/assistant/frm_assistant.h"

namespace orvalis::test {
namespace {

class AssistantWindowTest : public LinkFixture {
 protected:
  AssistantWindowTest() {
    window->SetNightTheme(true);
    window->ShowInFront();
    QObject::connect(window, &frmAssistant::Skipped, [this] { ++skipped; });
    QObject::connect(window, &frmAssistant::ConnectWanted, [this](const QString& port) { wanted = port; });
    Settle();
  }
  ~AssistantWindowTest() override { delete window; }

  void Click(const char* name) {
    Find<QPushButton>(*window, name)->click();
    Settle();
  }
  [[nodiscard]] std::vector<QWidget*> Seen() const {
    std::vector<QWidget*> seen;
    for (auto* control : window->findChildren<QWidget*>()) {
      if (control->isVisible()) seen.push_back(control);
    }
    return seen;
  }

  AssistantChoices choices{store, settings};
  FakeSerialPort search_port{loop};
  UnitSearch search{{.port = search_port,
                     .loop = loop,
                     .is_ours = [](const std::string&) { return false; },
                     .changed = [this] { window->ShowSearch(); }}};
  std::string failure;
  int skipped = 0;
  QString wanted;
  QPointer<frmAssistant> window =
      new frmAssistant({.choices = choices,
                        .search = search,
                        .ports =
                            [] {
                              return std::vector<SerialPortEntry>{{"/dev/ttyUSB3", std::string("Adapter & Sons")}};
                            },
                        .link = [] { return frmAssistant::Link(); },
                        .now = [this]() -> const Observation& { return observer.Now(); },
                        .finish = [this] { return failure; },
                        .simulator = "orvalis-unit --link /tmp/unit",
                        .simulated_port = "/tmp/unit"});
};

TEST_F(AssistantWindowTest, OnEachPageEverythingHasANameAKeyOfItsOwnAndShowsOnlyRed) {
  for (int page = 0; page < 4; ++page) {
    QString keys;
    for (QWidget* control : Seen()) {
      const auto* button = qobject_cast<QAbstractButton*>(control);
      const auto* label = qobject_cast<QLabel*>(control);
      const QString text = button ? button->text() : label ? label->text() : QString();
      if (button != nullptr) {
        EXPECT_FALSE((text + button->accessibleName()).isEmpty()) << button->objectName().toStdString();
      }
      const auto mark = text.indexOf('&');
      if (mark < 0 || text[mark + 1] == '&') continue;
      EXPECT_FALSE(keys.contains(text[mark + 1].toLower())) << text.toStdString();
      keys += text[mark + 1].toLower();
    }
    for (QWidget* control : Seen()) {
      if (control->focusPolicy() == Qt::NoFocus) continue;
      control->setFocus(Qt::TabFocusReason);
      EXPECT_EQ(Light(window->grab().toImage()).not_red, 0) << control->objectName().toStdString();
    }
    if (page < 3) Click("cmdNext");
  }
}

TEST_F(AssistantWindowTest, TheUnitThatIsFoundIsConnectedToAndAFailureToStoreIsSaid) {
  Click("cmdSearch");
  loop.Advance(std::chrono::seconds(2));
  EXPECT_TRUE(Find<QPushButton>(*window, "cmdNext")->hasFocus());
  for (int i = 0; i < 3; ++i) Click("cmdNext");
  EXPECT_EQ(wanted, "/dev/ttyUSB3");
  failure = "disk full";
  QString said;
  QTimer::singleShot(0, window, [&] {
    auto* message = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(message, nullptr);
    said = message->text();
    message->accept();
  });
  Click("cmdNext");
  EXPECT_TRUE(said.contains("disk full")) << said.toStdString();
  EXPECT_TRUE(window->isVisible());
  failure.clear();
  Click("cmdNext");
  EXPECT_FALSE(window && window->isVisible());
  EXPECT_EQ(skipped, 0);
}

TEST_F(AssistantWindowTest, EscapeSkipsItOnceAndEndsTheSearch) {
  search_port.silent = true;
  Click("cmdSearch");
  QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
  QCoreApplication::sendEvent(window, &escape);
  Settle();
  EXPECT_EQ(skipped, 1);
  EXPECT_FALSE(search.running() || search_port.Connected());
  EXPECT_TRUE(profile.log.empty());
}

}  // namespace
}  // namespace orvalis::test
