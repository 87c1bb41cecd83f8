#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "tests/support/link_fixture.h"
#include "tests/support/window_tools.h"
#include "ui/controls/screen_place.h"
#include "ui/controls/theme.h"
#include "ui/panel/connect_button.h"
#include "ui/panel/frm_events.h"
#include "ui/panel/frm_hand_box.h"
#include "ui/panel/frm_place.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace orvalis {
namespace {

using test::Light;
using test::Settle;

QPalette Desktop(QColor window, QColor text) {
  QPalette palette;
  palette.setColor(QPalette::Window, window);
  palette.setColor(QPalette::WindowText, text);
  return palette;
}

TEST(Theme, TextIsReadableInEveryColour) {
  // With white, by the guidelines' formula: their own example, each primary by itself, and the formula's dark end.
  const std::pair<QRgb, double> contrasts[] = {
      {0x767676, 4.54}, {0xff0000, 4.00}, {0x00ff00, 1.37}, {0x0000ff, 8.59}, {0x0a0a0a, 19.80}};
  for (const auto& [colour, ratio] : contrasts) {
    EXPECT_NEAR(ContrastRatio(QColor(colour), Qt::white), ratio, 0.005) << colour;
    EXPECT_NEAR(ContrastRatio(Qt::white, QColor(colour)), ratio, 0.005) << colour;
  }
  const auto desktop = [](QRgb window, QRgb text) { return Theme::ForDesktop(Desktop(QColor(window), QColor(text))); };
  using enum Theme::Kind;
  const std::pair<Theme, Theme::Kind> themes[] = {{desktop(0xefefef, 0x000000), kLight},
                                                  {desktop(0x2a2e32, 0xfcfcfc), kDark},
                                                  {desktop(0x000000, 0xffffff), kDark},
                                                  {Theme::Night(), kNight}};
  for (const auto& [theme, kind] : themes) {
    EXPECT_EQ(theme.kind(), kind);
    std::vector<Tone> tones{theme.Stale(Theme::Shape::kCard), theme.Stale(Theme::Shape::kText)};
    for (const Colour colour : {Colour::kRed, Colour::kYellow, Colour::kGreen, Colour::kWhite}) {
      tones.insert(tones.end(), {theme.Strong(colour), theme.Quiet(colour), theme.Plain(colour)});
    }
    for (const Tone& tone : tones) {
      const QColor ground = tone.fill.isValid() ? tone.fill : theme.window();
      EXPECT_GE(ContrastRatio(tone.ink, ground), 4.5)
          << tone.ink.name().toStdString() << " on " << ground.name().toStdString();
    }
  }
}

TEST(HandBoxAtTheStart, DrawsADashForWhatWasNeverMeasured) {
  PanelModel model;
  frmHandBox box(model);
  const auto shown = [&](const char* name) { return test::Find<ValueRow>(box, name)->content().value; };
  for (const char* name : {"lblSky", "lblWind", "lblWindAverage", "lblWindGust"}) EXPECT_EQ(shown(name), "–") << name;
  EXPECT_EQ(test::Find<WordCard>(box, "lblWindWord")->content().detail, "");
  EXPECT_EQ(model.sky + " " + model.wind, "999 0.0");
  model.fresh_at = CivilTime{2026, 11, 21, 21, 4, 5, 0, 60};
  box.Refresh();
  EXPECT_EQ(shown("lblSky") + " " + shown("lblWindGust"), "999 0.0") << "now they are the unit's";
}

/// The window of a clear night with the unit connected.
class HandBox : public test::LinkFixture {
 protected:
  HandBox() {
    Connect(4);
    (void)ConnectControl();
    panel.banner.state = VerdictBanner::State::kSafe;
    panel.banner.since = "safe since 20:11";
    box.Refresh();
  }
  ~HandBox() override { QApplication::setPalette(QPalette()); }
  template <typename Widget = QWidget>
  Widget* Get(const char* name) {
    return test::Find<Widget>(box, name);
  }
  void Refresh() {
    box.Refresh();
    Settle();
  }
  /// Everything in red and yellow, with messages.
  void TurnBad() {
    Measure("R=0900 RB=1 HB=2 HUM=0999", 4);
    panel.sky_background = Colour::kRed;
    panel.banner = {};
    panel.banner.reason = std::string(100, 'x') + ", limit 350 passed at 2026-11-21 21:04";
    panel.banner.forced = true;
    panel.demo = true;
    panel.Stand({.cause = StandingMessage::Cause::kAveragingCount,
                 .text = std::string("The setting \"TempsAvgCount\" is 9999")});
    panel.connect = {"AutoConnect Enabled Will attempt reconnect in 119 secs", false, true, Colour::kYellow};
  }

  frmHandBox box{panel};
};

TEST_F(HandBox, OldReadingsLoseTheirColourInThePicture) {
  QApplication::setPalette(Desktop(QColor(0xee, 0xee, 0xee), Qt::black));
  panel.stale = true;
  Refresh();
  const auto picture = [&](const char* name) { return Get(name)->grab().toImage(); };
  for (const char* name : {"lblCloud", "lblWindWord", "lblRainWord", "lblHeater", "lblRain"}) {
    EXPECT_EQ(Light(picture(name)).coloured, 0) << name;
  }
}

TEST_F(HandBox, TheBannerIsGreenOnlyWhenSafeAndTellsEverythingToAScreenReader) {
  using State = VerdictBanner::State;
  auto* card = Get<WordCard>("lblVerdict");
  const QColor green = Theme::ForDesktop(box.palette()).Strong(Colour::kGreen).fill;
  for (const State state : {State::kSafe, State::kSafeDemo, State::kSafeSoon, State::kUnsafe}) {
    panel.banner.state = state;
    Refresh();
    EXPECT_EQ(card->content().tone.fill == green, state == State::kSafe);
  }
  panel.banner.text = "UNSAFE - rain, limit 350 passed at 21:04";
  panel.banner.explanations = {"rain 412 counts, limit 350", "forced by hand"};
  Refresh();
  EXPECT_EQ(card->accessibleName(), "Verdict: UNSAFE - rain, limit 350 passed at 21:04, safe since 20:11");
  EXPECT_EQ(card->accessibleDescription(), "rain 412 counts, limit 350\nforced by hand");
  EXPECT_TRUE(card->toolTip().endsWith(card->accessibleDescription()));
}

TEST_F(HandBox, TheVerdictsMenuAsksAndShowsWhatTheModelSays) {
  std::vector<bool> forced;
  int tested = 0;
  QObject::connect(&box, &frmHandBox::ForceUnsafeToggled, [&](bool on) { forced.push_back(on); });
  QObject::connect(&box, &frmHandBox::TestUnsafeClicked, [&] { ++tested; });
  auto* force = Get<QAction>("mnuForceUnsafe");
  auto* test = Get<QAction>("mnuTestUnsafe");
  EXPECT_EQ(Get<QMenu>("mnuVerdict")->actions(), (QList<QAction*>{force, test}));
  force->trigger();
  EXPECT_FALSE(force->isChecked()) << "it could not be stored, say";
  panel.banner.forced = true;
  Refresh();
  EXPECT_TRUE(force->isChecked() && !test->isEnabled());
  force->trigger();
  EXPECT_EQ(forced, (std::vector<bool>{true, false}));
  panel.banner.forced = false;
  Refresh();
  test->trigger();
  EXPECT_EQ(tested, 1);
}

TEST_F(HandBox, NightShowsNothingButRedAndDayComesBackAsItWas) {
  box.resize(420, 600);
  box.show();
  box.activateWindow();
  Settle();
  for (const char* night : {"good", "bad", "unknown"}) {
    SCOPED_TRACE(night);
    if (night == std::string("bad")) TurnBad();
    if (night == std::string("unknown")) panel = PanelModel();
    Get("cmdConnect")->clearFocus();  // neither picture of the day has a focus ring
    Refresh();
    const QImage day = box.grab().toImage();

    box.SetNightTheme(true);
    Get<QAction>("mnuHumidityCurve")->setChecked(true);
    EXPECT_TRUE(Get("txtHumiditySelector")->hasFocus());  // its text cursor would be white
    Settle();
    const Light light(box.grab().toImage());
    EXPECT_EQ(light.not_red, 0);
    EXPECT_GT(light.bright, 1000);

    Get("txtHumiditySelector")->clearFocus();
    Get<QAction>("mnuHumidityCurve")->setChecked(false);
    box.SetNightTheme(false);
    box.findChild<QScrollArea*>()->verticalScrollBar()->setValue(0);  // the focus has moved it where letters are large
    Settle();
    EXPECT_EQ(box.grab().toImage(), day);
  }
}

TEST_F(HandBox, FollowsTheDesktopFromLightToDark) {
  box.show();
  const auto lightness = [&](const QColor& window, const QColor& text) {
    QApplication::setPalette(Desktop(window, text));
    Settle();
    return Get<WordCard>("lblRainWord")->content().tone.fill.lightness();
  };
  EXPECT_GT(lightness(Qt::white, Qt::black), 180);
  EXPECT_LT(lightness(QColor(0x20, 0x20, 0x20), Qt::white), 80);
}

TEST_F(HandBox, ConnectButtonAsksAndShowsWhatTheModelSays) {
  panel.connect = {"Click to connect", false, true, Colour::kYellow};
  box.Refresh();
  std::vector<bool> asked;
  QObject::connect(&box, &frmHandBox::ConnectToggled, [&](bool on) { asked.push_back(on); });
  auto* button = Get<ConnectButton>("cmdConnect");

  button->click();
  EXPECT_FALSE(button->isChecked());
  panel.connect = {"Connected", true, true, Colour::kGreen};
  box.Refresh();
  button->click();
  EXPECT_TRUE(button->isChecked());
  panel.connect.enabled = false;
  box.Refresh();
  button->click();
  EXPECT_EQ(asked, (std::vector<bool>{true, false}));
}

TEST_F(HandBox, LongTextsNeitherWidenTheWindowNorGetLost) {
  TurnBad();
  panel.status = "Opening /dev/" + std::string(300, 'x') + " failed: <b>Permission</b> denied";  // nowhere to break
  QFont large = QApplication::font();
  large.setPointSizeF(16);
  box.setFont(large);
  box.resize(360, 480);
  box.show();
  Refresh();
  EXPECT_EQ(box.width(), 360);
  auto* status = Get<QPlainTextEdit>("txtStatus");
  EXPECT_EQ(status->toPlainText().toStdString(), panel.status.English());
  EXPECT_TRUE(status->toolTip().contains("&lt;b&gt;Permission"));
  EXPECT_TRUE(status->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
  for (const char* name : {"cmdConnect", "txtStatus", "cmdSetup", "lblVerdict", "lblCloud", "lblDemo"}) {
    auto* widget = Get(name);
    const QRect place(widget->mapTo(&box, QPoint()), widget->size());
    EXPECT_TRUE(box.rect().contains(place)) << name;
    EXPECT_GE(widget->height(), widget->minimumSizeHint().height()) << name;
  }
  auto* button = Get<ConnectButton>("cmdConnect");
  EXPECT_GE(button->height(), button->heightForWidth(button->width()));
}

TEST_F(HandBox, NothingMovesWhenATextGrows) {
  box.resize(420, 640);
  box.show();
  Refresh();
  const auto places = [&] {
    std::map<QString, QRect> all;
    for (const auto* widget : box.findChildren<QWidget*>()) {
      const bool is_ours = !widget->objectName().isEmpty() && !widget->objectName().startsWith("qt_");
      if (is_ours && widget->isVisible()) all[widget->objectName()] = {widget->mapTo(&box, QPoint()), widget->size()};
    }
    return all;
  };
  const auto before = places();
  panel.status = "Opening /dev/" + std::string(300, 'x') + " failed";
  panel.connect.caption = "AutoConnect Enabled Will attempt reconnect in 119 secs";
  panel.trends = {Trend::kRising, Trend::kFalling, Trend::kRising};
  panel.wind = "108.8";
  Refresh();
  for (const auto& [name, place] : places()) EXPECT_EQ(place, before.at(name)) << name.toStdString();
}

TEST_F(HandBox, ArrowsAndTheSunAreForScreenReadersToo) {
  panel.trends.sky = Trend::kFalling;
  panel.sun = {.line = "Sun 18° below the horizon, dusk 23:59, dawn 10:43", .meaning = "Next sunset 22:25"};
  Refresh();
  EXPECT_TRUE(Get("lblSky")->accessibleName().endsWith(", falling"));
  EXPECT_TRUE(Get("lblSky")->toolTip().endsWith(", falling over the last 15 minutes"));
  EXPECT_FALSE(Get("lblWind")->accessibleName().contains("ing"));
  EXPECT_FALSE(Get("lblSun")->isHidden());
  panel.sun = {};
  Refresh();
  EXPECT_TRUE(Get("lblSun")->isHidden());
}

TEST_F(HandBox, TheMenusHaveKeysOfTheirOwn) {
  std::set<QString> keys;
  for (const auto* menu : Get<QMenuBar>("mnuPanel")->findChildren<QMenu*>()) {
    const QString& title = menu->title();
    EXPECT_TRUE(keys.insert("Alt+" + title.mid(title.indexOf('&') + 1, 1).toUpper()).second) << title.toStdString();
  }
  for (const QAction* entry : box.actions()) {
    if (entry->shortcut().isEmpty()) continue;
    EXPECT_TRUE(keys.insert(entry->shortcut().toString()).second) << entry->text().toStdString();
  }
  int nights = 0;
  QObject::connect(&box, &frmHandBox::NightThemeToggled, [&](bool on) { nights += on ? 1 : 10; });
  Get<QAbstractButton>("cmdNight")->click();
  EXPECT_TRUE(Get<QAction>("mnuNight")->isChecked());
  Get<QAction>("mnuNight")->trigger();
  EXPECT_FALSE(Get<QAbstractButton>("cmdNight")->isChecked());
  EXPECT_EQ(nights, 11);
}

TEST_F(HandBox, AStandingMessageStaysUntilTheModelLetsItGo) {
  panel.Stand({.cause = StandingMessage::Cause::kSettingsLost,
               .text = "Lost: /home/" + std::string(600, 'x'),  // nowhere to break
               .to_acknowledge = true});
  box.resize(360, 480);
  box.show();
  Refresh();
  EXPECT_EQ(box.size(), QSize(360, 480));
  auto* button = Get<QAbstractButton>("cmdAcknowledge");
  EXPECT_TRUE(box.rect().contains(QRect(button->mapTo(&box, QPoint()), button->size())));
  int asked = 0;
  QObject::connect(&box, &frmHandBox::Acknowledged, &box, [&] { ++asked; });
  button->click();
  Refresh();
  EXPECT_EQ(asked, 1);
  EXPECT_TRUE(button->isVisible());
  panel.Stand({.cause = StandingMessage::Cause::kSettingsLost, .text = {}});
  Refresh();
  EXPECT_FALSE(button->isVisible());
}

TEST_F(HandBox, HumiditySelectorIsTheUsersWhileTyping) {
  box.show();
  auto* field = Get<QLineEdit>("txtHumiditySelector");
  EXPECT_FALSE(field->isVisible()) << "folded away";
  Get<QAction>("mnuHumidityCurve")->trigger();
  EXPECT_TRUE(field->isVisible());
  const auto type = [&](int key, const QString& text = {}) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(field, &press);
  };
  const auto next_pass = [&] {  // fills an empty selector
    panel.humidity_selector = "200";
    box.Refresh();
    return field->text();
  };
  field->selectAll();
  type(Qt::Key_Delete);
  EXPECT_EQ(panel.humidity_selector, "");
  EXPECT_EQ(next_pass(), "");
  type(Qt::Key_1, "1");
  type(Qt::Key_X, "x");
  EXPECT_EQ(panel.humidity_selector, "1");
  field->selectAll();
  type(Qt::Key_Delete);
  type(Qt::Key_Return);
  EXPECT_EQ(next_pass(), "200");
}

TEST_F(HandBox, ThePlaceIsCheckedWhileItIsTyped) {
  frmPlace place(
      Place{48.5, -11.25}, {.decimal_separator = ',', .name = "de"},
      [](const Place&) { return SunText{.line = "Sun", .meaning = ""}; }, &box);
  place.setAttribute(Qt::WA_DeleteOnClose, false);
  std::vector<std::optional<Place>> chosen;
  QObject::connect(&place, &frmPlace::Chosen, [&](const std::optional<Place>& p) { chosen.push_back(p); });
  auto* latitude = test::Find<QLineEdit>(place, "txtLatitude");
  auto* longitude = test::Find<QLineEdit>(place, "txtLongitude");
  auto* ok = place.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok);
  const auto advice = [&] { return test::Find<QLabel>(place, "lblAdvice")->text(); };
  EXPECT_EQ(std::pair(latitude->text(), longitude->text()), std::pair(QString("48,5"), QString("-11,25")));
  latitude->setText("91");
  EXPECT_TRUE(!ok->isEnabled() && advice().startsWith("The latitude is a number"));
  latitude->setText("33°30' S");
  EXPECT_TRUE(ok->isEnabled() && advice() == "Sun");
  place.done(QDialog::Rejected);
  EXPECT_TRUE(chosen.empty());
  ok->click();
  longitude->clear();
  EXPECT_FALSE(ok->isEnabled());
  latitude->clear();
  ok->click();
  EXPECT_EQ(chosen, (std::vector<std::optional<Place>>{Place{-33.5, -11.25}, std::nullopt}));
}

/// The window of the event list.
class Events : public test::LinkFixture {
 protected:
  void Record(const std::string& text) {
    events.Record(text);
    window.Append(events.events().back());
  }
  [[nodiscard]] QStringList Lines() const {
    return test::Find<QPlainTextEdit>(window, "txtEvents")->toPlainText().split('\n');
  }

  TimeStyle style;
  frmEvents window{{.events = events, .style = style, .on_top = [] { return false; }, .report = {}}, nullptr};
};

TEST_F(Events, AreBoundedAndKeepTheDateOfTheirDay) {
  Record("first");
  clock.now.day = 22;
  Record("two\nlines");
  EXPECT_EQ(Lines(), (QStringList{"2026-11-21", "21:04:05  first", "2026-11-22", "21:04:05  two lines"}));
  for (std::size_t i = 2; i < EventList::kKept + 1; ++i) Record("later");
  Record("last");
  EXPECT_EQ(Lines().mid(0, 2), (QStringList{"2026-11-22", "21:04:05  later"}));
  EXPECT_EQ(Lines().size(), 1 + static_cast<qsizetype>(EventList::kKept));
  EXPECT_EQ(Lines().back(), "21:04:05  last");
}

TEST_F(Events, AreFilteredAndCopiedAsTheyAreShown) {
  Record("Connected to /dev/ttyUSB0");
  auto* filter = test::Find<QLineEdit>(window, "txtFilter");
  auto* copy = test::Find<QPushButton>(window, "cmdCopy");
  filter->setText("usb  connected");
  Record("connection lost");
  Record("connected to\n/dev/ttyUSB1");
  copy->click();
  EXPECT_EQ(QApplication::clipboard()->text(),
            "2026-11-21 21:04:05  Connected to /dev/ttyUSB0\n2026-11-21 21:04:05  connected to /dev/ttyUSB1\n");
  filter->setText("rain");
  EXPECT_FALSE(copy->isEnabled());
  Record("it began to rain");
  EXPECT_TRUE(copy->isEnabled());
  filter->clear();
  EXPECT_EQ(Lines().size(), 5) << "with its date";
}

TEST_F(HandBox, BeginsAtTheSizeThatShowsEverythingAndEndsAtTheScreen) {
  const auto* bar = box.findChild<QScrollArea*>()->verticalScrollBar();
  const int whole = box.screen()->availableGeometry().height();
  box.resize(box.width(), whole / 2);
  box.SetNightTheme(true);
  box.move(0, 0);
  Settle();
  EXPECT_GT(bar->maximum(), 0);
  box.ShowWhole();
  EXPECT_TRUE(bar->maximum() == 0 || box.frameGeometry().bottom() == whole - 1 - 8) << bar->maximum();

  QWidget other;
  other.resize(200, 100);
  other.show();
  for (const QPoint& place : {QPoint(-50, -50), QPoint(5000, 5000)}) {
    other.move(place);
    MoveOntoScreen(other);
    EXPECT_TRUE(other.screen()->availableGeometry().contains(other.frameGeometry()));
  }
}

TEST_F(HandBox, StaysWhereItIsWhenPutOnTop) {
  box.SetAlwaysOnTop(true);
  EXPECT_FALSE(box.isVisible());
  box.show();
  box.move(120, 60);
  Settle();
  for (const bool on : {true, false, true, true}) {
    box.SetAlwaysOnTop(on);
    Settle();
    EXPECT_TRUE(box.isVisible());
    EXPECT_EQ(box.pos(), QPoint(120, 60));
#ifdef _WIN32  // where it is no flag of the toolkit's
    const bool is_on_top = (GetWindowLongPtrW(reinterpret_cast<HWND>(box.winId()), GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
#else
    const bool is_on_top = box.windowFlags().testFlag(Qt::WindowStaysOnTopHint);
#endif
    EXPECT_EQ(is_on_top, on);
  }
}

}  // namespace
}  // namespace orvalis
