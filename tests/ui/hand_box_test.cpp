#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "ui/connect_button.h"
#include "ui/frm_hand_box.h"
#include "ui/panel_texts.h"
#include "ui/theme.h"

namespace orvalis {
namespace {

constexpr CivilTime kReadAt{2026, 11, 21, 21, 4, 5, 0, 60};
constexpr const char* kCountdown = "AutoConnect Enabled Will attempt reconnect in 119 secs";

/// A quiet, clear night with the unit connected.
PanelModel GoodNight() {
  PanelModel model;
  model.centigrade = true;
  model.ambient = "10.5";
  model.sky = "-15.0";
  model.difference = "25.5";
  model.humidity = "57.5";
  model.rain = "220";
  model.light = "1000";
  model.cloud = {"Clear", Colour::kGreen};
  model.rain_word = {"Dry", Colour::kGreen};
  model.wind_word = {"Calm", Colour::kGreen};
  model.light_word = {"Dark", Colour::kGreen};
  model.heater = {"N", Colour::kGreen};
  model.relay = {"N", Colour::kGreen};
  model.rain_indicator = Colour::kGreen;
  model.safe = true;
  model.connect = {"Connected", true, true, Colour::kGreen};
  model.status = "Connected to /dev/ttyUSB0";
  model.stale = false;
  model.fresh_at = kReadAt;
  return model;
}

PanelModel BadNight() {
  PanelModel model = GoodNight();
  model.cloud = {"PCloudy", Colour::kYellow};
  model.rain_word = {"Rain", Colour::kRed};
  model.wind_word = {"Breeze", Colour::kYellow};
  model.heater = {"?", Colour::kYellow};
  model.relay = {"Y", Colour::kRed};
  model.humidity_background = Colour::kRed;
  model.sky_background = Colour::kRed;
  model.safe = false;
  model.demo = true;
  model.connect = {kCountdown, false, true, Colour::kYellow};
  return model;
}

QPalette Desktop(QColor window, QColor text) {
  QPalette palette;
  palette.setColor(QPalette::Window, window);
  palette.setColor(QPalette::WindowText, text);
  return palette;
}

void Settle() {
  for (int i = 0; i < 5; ++i) QApplication::processEvents();
}

template <typename Widget>
Widget* Find(frmHandBox& box, const char* name) {
  auto* found = box.findChild<Widget*>(name);
  if (!found) throw std::runtime_error(std::string("no widget ") + name);
  return found;
}

void Type(QWidget* widget, int key, const QString& text = {}) {
  QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
  QApplication::sendEvent(widget, &press);
}

// The contrast as the accessibility guidelines define it, written down anew so that it checks the program's.
double Contrast(const QColor& a, const QColor& b) {
  const auto luminance = [](const QColor& c) {
    const auto part = [](int value) {
      const double s = value / 255.0;
      return s <= 0.03928 ? s / 12.92 : std::pow((s + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(c.red()) + 0.7152 * part(c.green()) + 0.0722 * part(c.blue());
  };
  const double la = luminance(a) + 0.05;
  const double lb = luminance(b) + 0.05;
  return la > lb ? la / lb : lb / la;
}

struct ThemeCase {
  const char* name;
  Theme theme;
  Theme::Kind kind;
};

std::vector<ThemeCase> Themes() {
  return {
      {"light grey", Theme::ForDesktop(Desktop(QColor(0xef, 0xef, 0xef), Qt::black)), Theme::Kind::kLight},
      {"white", Theme::ForDesktop(Desktop(Qt::white, QColor(0x23, 0x26, 0x29))), Theme::Kind::kLight},
      {"dark", Theme::ForDesktop(Desktop(QColor(0x2a, 0x2e, 0x32), QColor(0xfc, 0xfc, 0xfc))), Theme::Kind::kDark},
      {"black", Theme::ForDesktop(Desktop(Qt::black, Qt::white)), Theme::Kind::kDark},
      {"night", Theme::Night(), Theme::Kind::kNight},
  };
}

TEST(Theme, TextIsReadableInEveryColour) {
  ASSERT_NEAR(Contrast(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.005);  // the guidelines' own example
  EXPECT_NEAR(ContrastRatio(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.005);
  for (const ThemeCase& c : Themes()) {
    EXPECT_EQ(c.theme.kind(), c.kind) << c.name;
    std::vector<Tone> tones{c.theme.Old(Theme::Shape::kCard), c.theme.Old(Theme::Shape::kText)};
    for (const Colour colour : {Colour::kRed, Colour::kYellow, Colour::kGreen, Colour::kWhite}) {
      tones.insert(tones.end(), {c.theme.Strong(colour), c.theme.Quiet(colour), c.theme.Plain(colour)});
    }
    for (const Tone& tone : tones) {
      const QColor ground = tone.fill.isValid() ? tone.fill : c.theme.window();
      EXPECT_GE(Contrast(tone.ink, ground), 4.5)
          << c.name << " " << tone.ink.name().toStdString() << " on " << ground.name().toStdString();
    }
  }
}

TEST(Verdict, IsSafeOnlyWhenSaidSoJustNow) {
  struct Case {
    bool stale;
    std::optional<bool> safe;
    std::optional<CivilTime> fresh_at;
    QDate today;
    const char* word;
    const char* detail;
    std::optional<Colour> colour;
  };
  const QDate day(2026, 11, 21);
  const std::vector<Case> cases{
      {false, true, kReadAt, day, "SAFE", "reading of 21:04:05", Colour::kGreen},
      {false, false, kReadAt, day, "UNSAFE", "reading of 21:04:05", Colour::kRed},
      {false, std::nullopt, std::nullopt, day, "NO DATA", "no reading yet", std::nullopt},
      {true, std::nullopt, std::nullopt, day, "NO DATA", "no reading yet", std::nullopt},
      {true, true, kReadAt, day, "NO DATA", "no reading since 21:04:05", std::nullopt},
      {true, false, kReadAt, day, "NO DATA", "no reading since 21:04:05", std::nullopt},
      {true, true, kReadAt, day.addDays(1), "NO DATA", "no reading since 2026-11-21 21:04:05", std::nullopt},
  };
  for (const Case& c : cases) {
    PanelModel model;
    model.stale = c.stale;
    model.safe = c.safe;
    model.fresh_at = c.fresh_at;
    const BigWordText shown = VerdictText(model, c.today);
    EXPECT_EQ(shown.word.toStdString(), c.word);
    EXPECT_EQ(shown.detail.toStdString(), c.detail);
    EXPECT_EQ(shown.colour, c.colour);
  }
}

TEST(HandBox, OldReadingsLoseTheirColourInThePicture) {
  QApplication::setPalette(Desktop(QColor(0xee, 0xee, 0xee), Qt::black));
  PanelModel model = GoodNight();
  frmHandBox box(model);
  model.stale = true;
  box.Refresh();
  std::vector<QImage> pictures;
  for (const char* name : {"lblVerdict", "lblCloud", "lblWindWord", "lblRainWord", "lblHeater", "lblRain"}) {
    const QImage picture = Find<QWidget>(box, name)->grab().toImage();
    int coloured = 0;
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) coloured += picture.pixelColor(x, y).saturation() > 8;
    }
    EXPECT_EQ(coloured, 0) << name;
  }
  const QImage was_safe = Find<QWidget>(box, "lblVerdict")->grab().toImage();
  model.safe = false;
  box.Refresh();
  EXPECT_EQ(Find<QWidget>(box, "lblVerdict")->grab().toImage(), was_safe);
  QApplication::setPalette(QPalette());
}

TEST(HandBox, NightShowsNothingButRedAndDayComesBackAsItWas) {
  PanelModel good = GoodNight();
  PanelModel bad = BadNight();
  PanelModel none;
  for (PanelModel* model : {&good, &bad, &none}) {
    frmHandBox box(*model);
    model->humidity_selector = "200";
    box.AppendEvent({kReadAt, "Connected"});
    box.resize(420, 600);
    box.show();
    box.activateWindow();
    Settle();
    Find<QWidget>(box, "cmdConnect")->clearFocus();  // neither picture of the day has a focus ring
    Settle();
    const QImage day = box.grab().toImage();

    box.SetNightTheme(true);
    Find<QAbstractButton>(box, "cmdEvents")->setChecked(true);
    Find<QWidget>(box, "txtHumiditySelector")->setFocus();  // its text cursor would be white
    Settle();
    const QImage night = box.grab().toImage();
    int not_red = 0;
    int lit = 0;
    for (int y = 0; y < night.height(); ++y) {
      for (int x = 0; x < night.width(); ++x) {
        const QRgb pixel = night.pixel(x, y);
        not_red += qGreen(pixel) != 0 || qBlue(pixel) != 0;
        lit += qRed(pixel) > 200;
      }
    }
    EXPECT_EQ(not_red, 0);
    EXPECT_GT(lit, 1000);

    Find<QAbstractButton>(box, "cmdEvents")->setChecked(false);
    Find<QWidget>(box, "txtHumiditySelector")->clearFocus();
    box.SetNightTheme(false);
    Settle();
    EXPECT_EQ(box.grab().toImage(), day);
  }
}

TEST(HandBox, FollowsTheDesktopFromLightToDark) {
  PanelModel model = GoodNight();
  QApplication::setPalette(Desktop(Qt::white, Qt::black));
  frmHandBox box(model);
  box.show();
  const QColor light = Find<WordCard>(box, "lblWindWord")->content().tone.fill;
  QApplication::setPalette(Desktop(QColor(0x20, 0x20, 0x20), Qt::white));
  Settle();
  const QColor dark = Find<WordCard>(box, "lblWindWord")->content().tone.fill;
  EXPECT_GT(light.lightness(), 180);
  EXPECT_LT(dark.lightness(), 80);
  QApplication::setPalette(QPalette());
}

TEST(HandBox, ConnectButtonAsksAndShowsWhatTheModelSays) {
  PanelModel model = GoodNight();
  model.connect = {"Click to connect", false, true, Colour::kYellow};
  frmHandBox box(model);
  std::vector<bool> asked;
  QObject::connect(&box, &frmHandBox::ConnectToggled, [&](bool on) { asked.push_back(on); });
  auto* button = Find<ConnectButton>(box, "cmdConnect");

  button->click();
  EXPECT_EQ(asked, std::vector<bool>{true});
  EXPECT_FALSE(button->isChecked());

  model.connect = {"Connected", true, true, Colour::kGreen};
  box.Refresh();
  EXPECT_TRUE(button->isChecked());
  EXPECT_EQ(asked.size(), 1U);
  button->click();
  EXPECT_EQ(asked, (std::vector<bool>{true, false}));
  EXPECT_TRUE(button->isChecked());

  model.connect.enabled = false;
  box.Refresh();
  button->click();
  EXPECT_EQ(asked.size(), 2U);
}

TEST(HandBox, LongTextsNeitherWidenTheWindowNorGetLost) {
  PanelModel model = BadNight();
  const std::string path(300, 'x');  // nowhere to break
  model.status = "Opening /dev/" + path + " failed: <b>Permission</b> denied";
  QFont large = QApplication::font();
  large.setPointSizeF(16);
  frmHandBox box(model);
  box.setFont(large);
  box.AddToolButton("&Setup");
  box.resize(360, 480);
  box.show();
  Settle();
  EXPECT_EQ(box.size(), QSize(360, 480));
  auto* status = Find<QPlainTextEdit>(box, "txtStatus");
  EXPECT_EQ(status->toPlainText().toStdString(), model.status);
  EXPECT_TRUE(status->toolTip().contains("&lt;b&gt;Permission"));
  EXPECT_TRUE(status->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
  for (const char* name : {"cmdConnect", "txtStatus", "lblVerdict", "lblCloud", "lblDemo"}) {
    auto* widget = Find<QWidget>(box, name);
    const QRect place(widget->mapTo(&box, QPoint()), widget->size());
    EXPECT_TRUE(box.rect().contains(place)) << name;
    EXPECT_GE(widget->height(), widget->minimumSizeHint().height()) << name;
  }
  for (const char* name : {"picStandards", "picGuide"}) {
    auto* logo = Find<QWidget>(box, name);
    EXPECT_TRUE(logo->isVisible()) << name;
    EXPECT_LE(logo->mapTo(&box, logo->rect().bottomRight()).x(), box.width()) << name;
  }
  auto* button = Find<ConnectButton>(box, "cmdConnect");
  EXPECT_GE(button->height(), button->heightForWidth(button->width()));
}

/// Counts what costs processor time.
class PaintCounter : public QObject {
 public:
  bool eventFilter(QObject*, QEvent* event) override {
    painted += event->type() == QEvent::Paint;
    laid_out += event->type() == QEvent::LayoutRequest;
    return false;
  }
  int painted = 0;
  int laid_out = 0;
};

TEST(HandBox, RefreshPaintsOnlyWhatChanged) {
  PanelModel model = GoodNight();
  model.connect.enabled = false;  // no text cursor may blink meanwhile
  frmHandBox box(model);
  box.show();
  Settle();
  Find<QWidget>(box, "txtHumiditySelector")->clearFocus();
  Settle();
  PaintCounter counter;
  qApp->installEventFilter(&counter);
  for (int i = 0; i < 10; ++i) {
    box.Refresh();
    Settle();
  }
  EXPECT_EQ(counter.painted, 0);
  model.ambient = "10.6";
  box.Refresh();
  Settle();
  qApp->removeEventFilter(&counter);
  EXPECT_GT(counter.painted, 0);
  EXPECT_EQ(counter.laid_out, 0);
}

TEST(HandBox, HumiditySelectorIsTheUsersWhileTyping) {
  PanelModel model = GoodNight();
  frmHandBox box(model);
  box.show();
  auto* field = Find<QLineEdit>(box, "txtHumiditySelector");
  EXPECT_EQ(field->text(), "200");
  field->selectAll();
  Type(field, Qt::Key_Delete);
  EXPECT_EQ(model.humidity_selector, "");
  model.humidity_selector = "200";  // as the next pass fills it
  box.Refresh();
  EXPECT_EQ(field->text(), "");
  Type(field, Qt::Key_1, "1");
  Type(field, Qt::Key_X, "x");
  EXPECT_EQ(model.humidity_selector, "1");
  field->selectAll();
  Type(field, Qt::Key_Delete);
  model.humidity_selector = "200";
  Type(field, Qt::Key_Return);
  box.Refresh();
  EXPECT_EQ(field->text(), "200");
}

TEST(HandBox, EventsAreBoundedAndKeepTheDateOfTheirDay) {
  PanelModel model;
  frmHandBox box(model);
  CivilTime time = kReadAt;
  box.AppendEvent({time, "first"});
  time.day = 22;
  box.AppendEvent({time, "two\nlines"});
  const auto lines = [&] { return Find<QPlainTextEdit>(box, "txtEvents")->toPlainText().split('\n'); };
  EXPECT_EQ(lines(), (QStringList{"2026-11-21", "21:04:05  first", "2026-11-22", "21:04:05  two lines"}));

  for (std::size_t i = 2; i < EventList::kKept + 1; ++i) box.AppendEvent({time, "later"});
  EXPECT_EQ(lines().mid(0, 2), (QStringList{"2026-11-22", "21:04:05  two lines"}));
  EXPECT_EQ(lines().size(), 1 + static_cast<qsizetype>(EventList::kKept));
  box.AppendEvent({time, "last"});
  EXPECT_EQ(lines().mid(0, 2), (QStringList{"2026-11-22", "21:04:05  later"}));
  EXPECT_EQ(lines().back(), "21:04:05  last");
}

TEST(HandBox, StaysWhereItIsWhenPutOnTop) {
  PanelModel model;
  frmHandBox box(model);
  box.SetAlwaysOnTop(true);
  EXPECT_FALSE(box.isVisible());
  box.show();
  box.move(120, 60);
  Settle();
  for (const bool on : {false, true, true}) {
    box.SetAlwaysOnTop(on);
    Settle();
    EXPECT_TRUE(box.isVisible());
    EXPECT_EQ(box.pos(), QPoint(120, 60));
    EXPECT_EQ(box.windowFlags().testFlag(Qt::WindowStaysOnTopHint), on);
  }
}

}  // namespace
}  // namespace orvalis
