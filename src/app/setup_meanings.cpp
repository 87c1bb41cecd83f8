#include "app/setup_meanings.h"

#include <chrono>
#include <optional>

#include "app/setup_fields.h"
#include "reading/conditions.h"
#include "reading/wind.h"

namespace orvalis {
namespace {

/// What a note says after the value.
struct Said {
  Message value;
  Message meaning;
  Colour colour;
};

struct Case {
  const TypedSetup& typed;
  const Observation& now;

  [[nodiscard]] const Settings& settings() const { return typed.settings; }
  [[nodiscard]] const VerdictFigures& figures() const { return now.figures; }
  [[nodiscard]] std::string Tenths(double value) const { return FormatFixed(value, 1, typed.locale); }
  /// The speed of now with the multiplier that is typed.
  [[nodiscard]] double Mph() const { return WindMph(figures().wind, settings().WindMultiplier); }

  [[nodiscard]] bool OtherWind() const { return typed.units.wind != WindUnit::kMilesPerHour; }
  [[nodiscard]] std::string Chosen(double mph) const {
    return Tenths(typed.units.Wind(mph)) + " " + std::string(typed.units.WindName());
  }
  [[nodiscard]] std::string Speed(double mph) const {
    return Tenths(mph) + " mph" + (OtherWind() ? " (" + Chosen(mph) + ")" : "");
  }
  /// `shown` is the value in Fahrenheit.
  [[nodiscard]] std::string Degrees(double celsius, double shown) const {
    return Tenths(celsius) + " °C" + (typed.units.centigrade ? "" : " (" + Tenths(shown) + " °F)");
  }
  /// What the unit gets of a setting: it cuts off digits.
  [[nodiscard]] std::int32_t InUnit(std::string_view key) const {
    const UnitCommand& command = *FindUnitCommand(key);
    return command.Received(command.setting(settings()));
  }
};

Message Counts(double count) { return Message::Of("%1 counts").With(FormatFixed(count, 0)); }

Said Called(Message value, const Word& word) { return {std::move(value), std::string(word.text), word.colour}; }

/// Whether an alarm is on in the unit; nothing where the unit does not say.
using Alarm = std::optional<bool>;

Said Alarming(Message value, bool above, Alarm on) {
  if (!above) return {std::move(value), Message::Of("no alarm"), Colour::kGreen};
  if (!on) return {std::move(value), Message::Of("UNSAFE if this alarm is on"), Colour::kYellow};
  if (!*on) return {std::move(value), Message::Of("past the limit, but the alarm is off"), Colour::kYellow};
  return {std::move(value), Message::Of("alarm, UNSAFE"), Colour::kRed};
}

Alarm AlarmOf(const Case& c, bool UnitOptions::*alarm) {
  return c.typed.unit_known ? Alarm(c.typed.unit.*alarm) : std::nullopt;
}

std::optional<Said> WindWordNow(const Case& c) {
  const Settings& s = c.settings();
  Said said = Called(c.Speed(c.Mph()), WindWord(c.Mph(), s.WindSpeedCloseD, s.WindSpeedWarn));
  if (c.OtherWind()) {
    const Message limits = Message::Of("Limits: %1, %2").With(c.Chosen(s.WindSpeedWarn), c.Chosen(s.WindSpeedCloseD));
    said.meaning = Joined(said.meaning, "\n", limits);
  }
  return said;
}

std::optional<Said> SkyWordNow(const Case& c) {
  const auto difference = c.now.values.difference_c;
  if (!difference) return std::nullopt;
  const Settings& s = c.settings();
  Said said = Called(c.Degrees(*difference, c.typed.units.Difference(*difference)),
                     CloudWord(*difference, s.PartCloudyDegC, s.FullCloudyDegC));
  if (!c.typed.units.centigrade) {
    const auto shown = [&c](double celsius) { return c.Tenths(c.typed.units.Difference(celsius)) + " °F"; };
    const Message limits = Message::Of("Limits: %1, %2").With(shown(s.FullCloudyDegC), shown(s.PartCloudyDegC));
    said.meaning = Joined(said.meaning, "\n", limits);
  }
  return said;
}

std::optional<Said> RainWordNow(const Case& c) {
  return Called(Counts(c.figures().rain), RainWord(c.figures().rain, c.settings().RainThreshold));
}

std::optional<Said> LightWordNow(const Case& c) {
  return Called(Counts(c.figures().light), LightWord(RoundToInteger(c.figures().light), c.settings().LightThreshold));
}

std::optional<Said> WindAlarmNow(const Case& c) {
  const std::int32_t limit = c.InUnit("WindThreshold");
  Said said = Alarming(Joined(Counts(c.figures().wind), ", ", c.Chosen(c.Mph())), c.figures().wind > limit,
                       AlarmOf(c, &UnitOptions::allow_wind));
  const Message speed = Message::Of("Limit: %1").With(c.Chosen(WindMph(limit, c.settings().WindMultiplier)));
  said.meaning = Joined(said.meaning, "\n", speed);
  return said;
}

std::optional<Said> RainAlarmNow(const Case& c) {
  // A box without a tick says nothing: the unit does not report this alarm.
  const Alarm on = c.typed.unit_known && c.typed.unit.allow_rain ? Alarm(true) : std::nullopt;
  Said said = Alarming(Counts(c.figures().rain), c.figures().rain > c.InUnit("RainThreshold"), on);
  if (const auto left = c.figures().rain_on_left; left && said.colour == Colour::kGreen) {
    const auto seconds = std::chrono::ceil<std::chrono::seconds>(*left).count();
    said.meaning = Message::Of("no alarm, but rain has only just ended: %1 s left").With(seconds);
    said.colour = Colour::kYellow;
  }
  return said;
}

std::optional<Said> CloudAlarmNow(const Case& c) {
  const auto sky = c.now.values.sky_c;
  if (!sky) return std::nullopt;
  const std::int32_t limit = c.InUnit("CloudsThreshold");
  const double hysteresis =
      c.settings().TPTempHysteresis == SetupReading::kSentinel ? 0 : c.InUnit("TPTempHysteresis") / 10.0;
  Said said =
      Alarming(c.Degrees(*sky, c.typed.units.Temperature(*sky)), *sky > limit, AlarmOf(c, &UnitOptions::allow_clouds));
  if (said.colour == Colour::kGreen && *sky > limit - hysteresis) {
    said.meaning = Message::Of("no new alarm; one that is on ends at %1")
                       .With(c.Degrees(limit - hysteresis, c.typed.units.Temperature(limit - hysteresis)));
    said.colour = Colour::kYellow;
  }
  if (!c.typed.units.centigrade) {
    const Message shown = Message::Of("Limit: %1").With(c.Tenths(c.typed.units.Temperature(limit)) + " °F");
    said.meaning = Joined(said.meaning, "\n", shown);
  }
  return said;
}

std::optional<Said> LightAlarmNow(const Case& c) {
  return Alarming(Counts(c.figures().light), c.figures().light <= c.InUnit("LightThreshold"),
                  AlarmOf(c, &UnitOptions::allow_light));
}

struct Row {
  std::string_view name;
  /// Nothing where the value is not known.
  std::optional<Said> (*say)(const Case& c);
};
constexpr std::array<Row, kLimitMeanings> kRows{{
    {"WindWordNow", WindWordNow},
    {"SkyWordNow", SkyWordNow},
    {"RainWordNow", RainWordNow},
    {"LightWordNow", LightWordNow},
    {"WindAlarmNow", WindAlarmNow},
    {"RainAlarmNow", RainAlarmNow},
    {"CloudAlarmNow", CloudAlarmNow},
    {"LightAlarmNow", LightAlarmNow},
}};

LimitMeaning MeaningOf(const Row& row, const Case& c) {
  const ReadingSource source = c.now.source;
  if (source == ReadingSource::kNone) return {row.name, Message::Of("No reading now")};
  const auto said = row.say(c);
  if (!said) return {row.name, Message::Of("Not known now")};
  const Message text = source == ReadingSource::kDemo ? Message::Of("Demo: %1: %2").With(said->value, said->meaning)
                                                      : Message::Of("Now %1: %2").With(said->value, said->meaning);
  return {row.name, text, said->colour};
}

}  // namespace

std::array<LimitMeaning, kLimitMeanings> MeaningsNow(const TypedSetup& typed, const Observation& now) {
  const Case c{typed, now};
  std::array<LimitMeaning, kLimitMeanings> meanings;
  for (std::size_t i = 0; i < kRows.size(); ++i) meanings[i] = MeaningOf(kRows[i], c);
  return meanings;
}

}  // namespace orvalis
