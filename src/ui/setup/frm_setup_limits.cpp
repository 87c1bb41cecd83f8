// The two pages of limits: what the panel calls it, and what makes the unit alarm.

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QScrollArea>

#include "app/setup_advice.h"
#include "app/setup_meanings.h"
#include "reading/display_units.h"
#include "ui/controls/form_section.h"
#include "ui/controls/live_note.h"
#include "ui/controls/panel_texts.h"
#include "ui/setup/frm_setup.h"
#include "ui/setup/setup_page.h"

namespace orvalis {

QWidget* frmSetup::BuildPanelPage() {
  const SetupPage page = MakeSetupPage("Frame2", "Panel", SetupPage::Columns::kOne);

  FormSection words("What the panel calls it", page.left);
  words.Paragraph(
      "These limits choose words and colours, and with them the alerts by condition. None of them closes a roof, "
      "unless the page Safety counts the word.");

  FormSection wind("Wind", page.left);
  wind.Field("WindSpeedWarn", "\"&Breeze\" above:", "mph", "The wind word turns yellow above this speed");
  wind.Field("WindSpeedCloseD", "\"W&indy\" above:", "mph",
             "The wind word turns red above this speed; it is unsafe then if the page Safety says so");
  wind.Live("WindWordNow", 2);
  wind.Field("WindMultiplierL", "&Speed per count:", "÷ 10 mph",
             "Tenths of a mile per hour for each count of the wind sensor, 1 to 9");

  FormSection clouds("Sky: how much colder it is than the air", page.left);
  clouds.Field("FullCloudyDegCL", "\"Cloud&y\" up to:", "°C",
               "Ambient minus sky temperature, 1 to 40; between the two limits it is partly cloudy");
  clouds.Field("PartCloudyDegCL", "\"Clea&r\" from:", "°C", "Ambient minus sky temperature, 1 to 40");
  clouds.Live("SkyWordNow", 2);

  FormSection shared("Rain and light", page.left);
  shared.Live("RainWordNow", "Rain:", "Follows the rain alarm's limit, on the page Unit alarms");
  shared.Live("LightWordNow", "Light:", "Follows the light alarm's limit, on the page Unit alarms");
  shared.Paragraph(
      "Their limits are the unit's own: \"Damp\" above the rain alarm's, \"Rain\" more than 20 counts above it, "
      "\"Dark\" above the light alarm's, \"Dusk\" above 200.");

  FormSection averaging("Averaging", page.left);
  averaging.Field("TempAvgCnt", "Temperatures &over:", "readings", "1 to 300; one comes every two seconds");

  FormSection units("Units", page.left);
  units.Check("chkCentigrade", "Temperatures in degrees C&elsius",
              "Otherwise degrees Fahrenheit, on the panel, in the graphs and in pictures");
  QStringList speeds;
  for (const WindUnit unit : kWindUnits) speeds += ToQString(Name(unit));
  wind_unit_ = units.Choice("WindUnit", "Win&d in:", speeds,
                            "On the panel and in its pictures. Other programs, logs and uploads get the same as ever; "
                            "limits are in mph");

  FormSection panel("Window", page.left);
  panel.Check("chkAlwaysTop", "Keep the panel on &top of other windows", "Takes effect with OK");
  page.Finish();
  return page.scroll;
}

QWidget* frmSetup::BuildUnitPage() {
  const SetupPage page = MakeSetupPage("Frame8", "Unit alarms", SetupPage::Columns::kOne);

  FormSection alarms("What makes the unit alarm", page.left);
  alarms.Paragraph(
      "The unit watches these limits by itself. When one is passed and its alarm is on, it switches its relay: "
      "UNSAFE for every program, and the roof closes.");

  FormSection rain("Rain", page.left);
  rain.Field("RainThreshold", "Alarm a&bove:", "counts",
             "Wetter is higher; 1 to 999. The panel says \"Damp\" above it and \"Rain\" more than 20 counts above");
  rain.Live("RainAlarmNow", 1);
  rain.Field("RainOnTimeL", "Stays &on for:", "s", "How long the unit goes on alarming after rain, 1 to 999");
  rain.Explained("AllowRain", "Unit alarms on &rain",
                 "Rain closes the roof. The unit does not say whether this is on: only a change of the box is sent.");

  FormSection wind("Wind", page.left);
  wind.Field("WindThreshold", "Alarm abo&ve:", "counts", "Of the wind sensor, 1 to 999");
  wind.Live("WindAlarmNow", 1);
  wind.Field("WindTimerL", "Alarm t&ime:", "s", "Stored in the unit, 1 to 999");
  wind.Explained("AllowWind", "Unit alarms on win&d", "Wind above this limit closes the roof.");

  FormSection clouds("Clouds", page.left);
  clouds.Field("CloudThreshCL", "S&ky above:", "°C",
               "A cloudy sky is warmer. The sky's own temperature, a whole number from -999 to 999");
  clouds.Live("CloudAlarmNow", 1);
  clouds.Field("TPTempHysteresis", "&Hysteresis:", "°C", "The alarm ends this much below the limit, 0.1 to 9.9");
  clouds.Explained("AllowClouds", "Unit alarms on cloud&s", "A sky warmer than this limit closes the roof.");

  FormSection light("Light", page.left);
  light.Field("LightThreshold", "Alarm up &to:", "counts",
              "Higher is darker; 1 to 999. The panel says \"Dark\" above it");
  light.Live("LightAlarmNow", 1);
  light.Explained("AllowLight", "Unit alarms on li&ght", "Daylight closes the roof. Not for solar telescopes.");

  FormSection outputs("Heater and relay", page.left);
  outputs.Explained("AllowHeater", "Allow h&eater", "The unit warms its sensor when it is wet or dew may form.");
  outputs.Explained("ForceHeater", "Force heater", "The heater is always on, in dry air too.");
  outputs.Explained("AllowRelay", "Allow rela&y",
                    "Leave this on: the relay is the alarm. Without it no reading counts as safe.");
  outputs.Explained("ForceRelay", "Force relay",
                    "Switches the relay on, whatever the sky does: the roof closes, and it is UNSAFE until you untick "
                    "it.");
  page.Finish();
  return page.scroll;
}

void frmSetup::ShowMeanings() {
  static const Observation nothing;
  TypedSetup typed{.settings = TypedSettings(FieldTexts(), parts_.locale),
                   .unit = UnitTyped(),
                   .unit_known = unit_known_,
                   .units = {},
                   .locale = parts_.locale};
  typed.settings.Centigrade = Find<QCheckBox>("chkCentigrade")->isChecked();
  typed.settings.WindUnit = wind_unit_->currentIndex();
  typed.units = UnitsOf(typed.settings);
  for (const LimitMeaning& meaning : MeaningsNow(typed, parts_.now ? parts_.now() : nothing)) {
    Find<LiveNote>(meaning.name)->Show(ToQString(meaning.text), meaning.colour);
  }
}

}  // namespace orvalis
