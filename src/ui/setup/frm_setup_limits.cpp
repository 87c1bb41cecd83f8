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
#include "ui/controls/words.h"
#include "ui/setup/frm_setup.h"
#include "ui/setup/setup_page.h"

namespace orvalis {

QWidget* frmSetup::BuildPanelPage() {
  const SetupPage page = MakeSetupPage("Frame2", tr("Panel"), SetupPage::Columns::kOne);
  //: Miles per hour.
  const QString mph = tr("mph");

  FormSection words(tr("What the panel calls it"), page.left);
  words.Paragraph(
      tr("These limits choose words and colours, and with them the alerts by condition. None of them closes a roof, "
         "unless the page Safety counts the word."));

  FormSection wind(tr("Wind"), page.left);
  // The words of the panel are the same in every language.
  //: In quotation marks: a word of the panel, which is not translated. So in the other texts of this window.
  wind.Field("WindSpeedWarn", tr("\"&Breeze\" above:"), mph, tr("The wind word turns yellow above this speed"));
  wind.Field("WindSpeedCloseD", tr("\"W&indy\" above:"), mph,
             tr("The wind word turns red above this speed; it is unsafe then if the page Safety says so"));
  wind.Live("WindWordNow", 2);
  wind.Field("WindMultiplierL", tr("&Speed per count:"), tr("÷ 10 mph"),
             tr("Tenths of a mile per hour for each count of the wind sensor, 1 to 9"));

  FormSection clouds(tr("Sky: how much colder it is than the air"), page.left);
  clouds.Field("FullCloudyDegCL", tr("\"Cloud&y\" up to:"), Fixed("°C"),
               tr("Ambient minus sky temperature, 1 to 40; between the two limits it is partly cloudy"));
  clouds.Field("PartCloudyDegCL", tr("\"Clea&r\" from:"), Fixed("°C"), tr("Ambient minus sky temperature, 1 to 40"));
  clouds.Live("SkyWordNow", 2);

  FormSection shared(tr("Rain and light"), page.left);
  shared.Live("RainWordNow", tr("Rain:"), tr("Follows the rain alarm's limit, on the page Unit alarms"));
  //: The light of the sky.
  shared.Live("LightWordNow", tr("Light:"), tr("Follows the light alarm's limit, on the page Unit alarms"));
  shared.Paragraph(
      tr("Their limits are the unit's own: \"Damp\" above the rain alarm's, \"Rain\" more than 20 counts above it, "
         "\"Dark\" above the light alarm's, \"Dusk\" above 200."));

  FormSection averaging(tr("Averaging"), page.left);
  //: After a number: how many readings are averaged.
  const QString readings = tr("readings");
  averaging.Field("TempAvgCnt", tr("Temperatures &over:"), readings, tr("1 to 300; one comes every two seconds"));

  FormSection units(tr("Units"), page.left);
  units.Check("chkCentigrade", tr("Temperatures in degrees C&elsius"),
              tr("Otherwise degrees Fahrenheit, on the panel, in the graphs and in pictures"));
  QStringList speeds;
  for (const WindUnit unit : kWindUnits) speeds += ToQString(Name(unit));
  wind_unit_ =
      units.Choice("WindUnit", tr("Win&d in:"), speeds,
                   tr("On the panel, in the graphs and in pictures. Other programs, logs and uploads get the same as "
                      "ever; limits are typed in mph and shown in this unit beside"));

  //: The title of what is set for the panel's window.
  FormSection panel(tr("Window"), page.left);
  panel.Check("chkAlwaysTop", tr("Keep the panel on &top of other windows"), tr("Takes effect with OK"));
  page.Finish();
  return page.scroll;
}

QWidget* frmSetup::BuildUnitPage() {
  const SetupPage page = MakeSetupPage("Frame8", tr("Unit alarms"), SetupPage::Columns::kOne);
  //: What the sensor counts: a reading without a unit.
  const QString counts = tr("counts");
  //: Seconds.
  const QString seconds = tr("s");

  FormSection alarms(tr("What makes the unit alarm"), page.left);
  alarms.Paragraph(
      tr("The unit watches these limits by itself. When one is passed and its alarm is on, it switches its relay: "
         "UNSAFE for every program, and the roof closes."));

  FormSection rain(tr("Rain"), page.left);
  rain.Field("RainThreshold", tr("Alarm a&bove:"), counts,
             tr("Wetter is higher; 1 to 999. The panel says \"Damp\" above it and \"Rain\" more than 20 counts above"));
  rain.Live("RainAlarmNow", 1);
  rain.Field("RainOnTimeL", tr("Stays &on for:"), seconds,
             tr("How long the unit goes on alarming after rain, 1 to 999"));
  rain.Explained(
      "AllowRain", tr("Unit alarms on &rain"),
      tr("Rain closes the roof. The unit does not say whether this is on: only a change of the box is sent."));

  FormSection wind(tr("Wind"), page.left);
  wind.Field("WindThreshold", tr("Alarm abo&ve:"), counts, tr("Of the wind sensor, 1 to 999"));
  wind.Live("WindAlarmNow", 1);
  wind.Field("WindTimerL", tr("Alarm t&ime:"), seconds, tr("Stored in the unit, 1 to 999"));
  wind.Explained("AllowWind", tr("Unit alarms on win&d"), tr("Wind above this limit closes the roof."));

  FormSection clouds(tr("Clouds"), page.left);
  clouds.Field("CloudThreshCL", tr("S&ky above:"), Fixed("°C"),
               tr("A cloudy sky is warmer. The sky's own temperature, a whole number from -999 to 999"));
  clouds.Live("CloudAlarmNow", 1);
  clouds.Field("TPTempHysteresis", tr("&Hysteresis:"), Fixed("°C"),
               tr("The alarm ends this much below the limit, 0.1 to 9.9"));
  clouds.Explained("AllowClouds", tr("Unit alarms on cloud&s"), tr("A sky warmer than this limit closes the roof."));

  //: The light of the sky.
  FormSection light(tr("Light"), page.left);
  light.Field("LightThreshold", tr("Alarm up &to:"), counts,
              tr("Higher is darker; 1 to 999. The panel says \"Dark\" above it"));
  light.Live("LightAlarmNow", 1);
  light.Explained("AllowLight", tr("Unit alarms on li&ght"), tr("Daylight closes the roof. Not for solar telescopes."));

  FormSection outputs(tr("Heater and relay"), page.left);
  outputs.Explained("AllowHeater", tr("Allow h&eater"),
                    tr("The unit warms its sensor when it is wet or dew may form."));
  outputs.Explained("ForceHeater", tr("Force heater"), tr("The heater is always on, in dry air too."));
  outputs.Explained("AllowRelay", tr("Allow rela&y"),
                    tr("Leave this on: the relay is the alarm. Without it no reading counts as safe."));
  outputs.Explained(
      "ForceRelay", tr("Force relay"),
      tr("Switches the relay on, whatever the sky does: the roof closes, and it is UNSAFE until you untick "
         "it."));
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
    Find<LiveNote>(meaning.name)->Show(Translated(meaning.text), meaning.colour);
  }
}

}  // namespace orvalis
