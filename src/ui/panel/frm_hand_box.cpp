#include "ui/panel/frm_hand_box.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QToolButton>
#include <algorithm>
#include <cmath>

#include "ui/controls/night_style.h"
#include "ui/controls/panel_texts.h"
#include "ui/controls/words.h"
#include "ui/desktop.h"
#include "ui/panel/connect_button.h"
#include "ui/panel/standing_notices.h"
#include "ui/panel/status_text.h"

namespace orvalis {
namespace {

/// Some styles draw a line below each menu and the bar, which is not as wide as the window here.
constexpr const char* kPlainMenuBar = R"(
QMenuBar { background: transparent; border: none; }
QMenuBar::item { background: transparent; padding: 4px 8px; border-radius: 4px; }
QMenuBar::item:selected { background: palette(highlight); color: palette(highlighted-text); }
)";

}  // namespace

void frmHandBox::Refresh() {
  ShowWords();
  ShowValues();
  ShowControls();
}

void frmHandBox::ShowWords() {
  const Tone unknown = theme_.Stale(Theme::Shape::kCard);
  ShowVerdict();

  const BigWordText sky = SkyText(model_);
  sky_word_->Show(
      {sky.word, sky.detail, WordMeaning(model_.cloud.text), sky.colour ? theme_.Quiet(*sky.colour) : unknown});

  const QString wind_unit = ToQString(model_.units.WindName());
  ShowTile(wind_word_, model_.wind_word, Measured(model_.shown.wind), wind_unit, {});
  ShowTile(rain_word_, model_.rain_word, model_.rain, tr("counts"), {});
  ShowTile(light_word_, model_.light_word, model_.light, tr("counts"), tr("higher is darker"));
  ShowSwitch(heater_, model_.heater);
  ShowSwitch(relay_, model_.relay);
}

void frmHandBox::ShowVerdict() {
  const VerdictBanner& banner = model_.banner;
  const BigWordText verdict = VerdictText(banner);
  QStringList reasons;
  for (const std::string& explanation : banner.explanations) reasons += ToQString(explanation);
  QString line = ToQString(banner.text);
  if (!banner.since.empty()) line += ", " + ToQString(banner.since);
  verdict_->Show({verdict.word, verdict.detail, reasons.join('\n'), theme_.Strong(*verdict.colour), line});
}

void frmHandBox::ShowTile(WordCard* tile, const Word& word, const std::string& value, const QString& unit,
                          const QString& hint) {
  const QString detail = value.empty() ? QString() : ToQString(value) + " " + unit;
  QStringList meanings{WordMeaning(word.text), hint};
  meanings.removeAll(QString());
  const QString meaning = meanings.join("; ");
  tile->Show({OrDash(ToQString(word.text)), detail, meaning,
              model_.stale ? theme_.Stale(Theme::Shape::kCard) : theme_.Quiet(word.colour)});
}

std::string frmHandBox::Measured(const std::string& value) const { return model_.fresh_at ? value : std::string(); }

void frmHandBox::ShowSwitch(WordCard* strip, const Word& sign) {
  const QString meaning = SwitchMeaning(sign.text);
  strip->Show({OrDash(ToQString(sign.text)), meaning, meaning,
               model_.stale ? theme_.Stale(Theme::Shape::kCard) : theme_.Quiet(sign.colour)});
}

void frmHandBox::ShowRow(ValueRow* row, const QString& label, const std::string& value, const QString& unit,
                         const QString& meaning, Colour background) {
  const Tone tone = model_.stale ? theme_.Stale(Theme::Shape::kText) : theme_.Plain(background);
  row->Show({label, OrDash(ToQString(value)), unit, meaning, tone, model_.stale ? tone.ink : theme_.text(),
             theme_.hairline()});
}

void frmHandBox::ShowValues() {
  const QString degrees = ToQString(model_.units.TemperatureName());
  ShowRow(ambient_, Fixed("Temp (%1):").arg(degrees), model_.ambient, degrees, tr("Ambient temperature"));
  ShowRow(body_, tr("Sensor body:"), model_.body, degrees, tr("Temperature of the sensor body"));
  ShowRow(dew_point_, tr("Dew point:"), model_.dew_point, degrees, tr("Temperature at which dew forms"));
  ShowRow(sky_, tr("Sky:"), Measured(model_.sky), degrees, tr("Measured sky temperature"), model_.sky_background);
  ShowRow(clear_sky_, tr("Clear sky:"), model_.clear_sky, degrees, tr("Calculated temperature of a clear sky"));
  ShowRow(difference_, tr("Difference:"), model_.shown.difference, degrees, tr("Ambient minus sky temperature"));
  ShowRow(humidity_, tr("Humidity:"), model_.humidity, "%", tr("Relative humidity"), model_.humidity_background);
  const QString speed = ToQString(model_.units.WindName());
  ShowRow(wind_, tr("Wind:"), Measured(model_.shown.wind), speed, tr("Current wind speed"));
  ShowRow(wind_average_, tr("Wind average:"), Measured(model_.shown.wind_average), speed, tr("Average wind speed"));
  ShowRow(wind_gust_, tr("Wind gust:"), Measured(model_.shown.wind_gust), speed, tr("Highest recent wind speed"));
  ShowRow(rain_, tr("Rain:"), model_.rain, tr("counts"), tr("Rain sensor; green below the threshold, red above"),
          model_.rain_indicator);
  ShowRow(light_, tr("Light:"), model_.light, tr("counts"), tr("Light sensor; higher is darker"));

  ambient_->ShowTrend(model_.trends.ambient);
  sky_->ShowTrend(model_.trends.sky);
  wind_->ShowTrend(model_.trends.wind);

  ShowLine(averaging_, model_.averaging);
  ShowLine(sun_, model_.sun.line);
  sun_->setToolTip(ToQString(model_.sun.meaning));
  sun_->setAccessibleDescription(ToQString(model_.sun.meaning));
}

void frmHandBox::ShowLine(QLabel* line, const std::string& text) {
  const QString shown = ToQString(text);
  if (line->text() != shown) line->setText(shown);
  if (line->isHidden() != shown.isEmpty()) line->setVisible(!shown.isEmpty());
}

void frmHandBox::ShowControls() {
  force_unsafe_->setChecked(model_.banner.forced);
  test_unsafe_->setChecked(model_.banner.testing);
  test_unsafe_->setEnabled(!model_.banner.forced);
  connect_->Show({ToQString(model_.connect.caption), model_.connect.checked, model_.connect.enabled,
                  theme_.Quiet(model_.connect.background)});
  status_->Show(Translated(model_.status));

  notices_->Show(model_.standing, theme_);
  demo_->Show({tr("DEMO — simulated values"), {}, {}, theme_.Strong(Colour::kYellow)});
  if (demo_->isHidden() == model_.demo) demo_->setVisible(model_.demo);

  const QString selector = ToQString(model_.humidity_selector);
  if (!typing_ && humidity_selector_->text() != selector) humidity_selector_->setText(selector);
}

void frmHandBox::SetNightTheme(bool on) {
  night_button_->setChecked(on);
  night_->setChecked(on);
  if (on == is_night_) return;
  is_night_ = on;
  ApplyTheme();
}

void frmHandBox::ApplyTheme() {
  if (applying_theme_) return;
  applying_theme_ = true;
  menus_->setStyleSheet({});  // first, like the window's
  theme_ = DressWindow(*this, is_night_);
  if (!is_night_) menus_->setStyleSheet(kPlainMenuBar);
  applying_theme_ = false;
  Refresh();
}

void frmHandBox::SetAlwaysOnTop(bool on) { desktop::KeepOnTop(*this, on); }

void frmHandBox::closeEvent(QCloseEvent* event) {
  emit Closing();
  event->accept();
}

void frmHandBox::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  switch (event->type()) {
    case QEvent::ApplicationPaletteChange:
    case QEvent::PaletteChange:
      if (!is_night_) ApplyTheme();
      break;
    case QEvent::FontChange:
      Arrange();
      break;
    default:
      break;
  }
}

}  // namespace orvalis
