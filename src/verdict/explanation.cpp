#include "verdict/explanation.h"

#include <array>
#include <cstddef>
#include <string_view>

#include "base/text.h"

namespace orvalis {
namespace {

using std::chrono::milliseconds;

/// How a person reads the numbers.
struct Style {
  NumberLocale locale;
  DisplayUnits units;
};

std::string Whole(double count) { return FormatFixed(count, 0); }
std::string Tenths(double value, const Style& style) { return FormatFixed(value, 1, style.locale); }

// Without the degree sign: programs show these texts too, and not all can.
std::string DegreeName(const Style& style) { return style.units.centigrade ? " C" : " F"; }
std::string Temperature(double celsius, const Style& style) {
  return Tenths(style.units.Temperature(celsius), style) + DegreeName(style);
}
std::string Difference(double celsius, const Style& style) {
  return Tenths(style.units.Difference(celsius), style) + DegreeName(style);
}
std::string Wind(double mph, const Style& style) {
  return Tenths(style.units.Wind(mph), style) + " " + std::string(style.units.WindName());
}

std::string Seconds(milliseconds time) {
  return std::to_string(std::chrono::ceil<std::chrono::seconds>(time).count()) + " s";
}

Message RainText(const VerdictFigures& f) { return Message::Of("rain %1 counts, limit %2").With(f.rain, f.rain_limit); }
constexpr Phrase kRainSince = Message::Of("rain, limit %1 passed at %2");

/// A condition that can have set off the unit's alarm.
struct Cause {
  bool (*holds)(const VerdictFigures& f);
  Message (*text)(const VerdictFigures& f, const Style& style);
  /// `began` is the time when the alarm began.
  Message (*in_short)(const VerdictFigures& f, const std::string& began);
};

// The rain alarm is not reported by the unit; the others count only where it reports them on.
constexpr std::array<Cause, 5> kCauses{{
    {[](const VerdictFigures& f) { return f.rain > f.rain_limit; },
     [](const VerdictFigures& f, const Style&) {
       return Message::Of("%1; the unit stays on for %2 s after rain").With(RainText(f), f.rain_on_time);
     },
     [](const VerdictFigures& f, const std::string& began) { return kRainSince.With(f.rain_limit, began); }},
    {[](const VerdictFigures& f) { return f.rain <= f.rain_limit && f.rain_on_left.has_value(); },
     [](const VerdictFigures& f, const Style&) {
       return Message::Of("%1; the unit stays on for %2 s after rain, %3 left")
           .With(RainText(f), f.rain_on_time, Seconds(*f.rain_on_left));
     },
     [](const VerdictFigures& f, const std::string&) {
       return Message::Of("rain just over, the unit stays on for %1").With(Seconds(*f.rain_on_left));
     }},
    {[](const VerdictFigures& f) { return f.wind_alarm && f.wind > f.wind_limit; },
     [](const VerdictFigures& f, const Style&) {
       return Message::Of("wind %1 counts, limit %2").With(Whole(f.wind), f.wind_limit);
     },
     [](const VerdictFigures& f, const std::string& began) {
       return Message::Of("wind, limit %1 passed at %2").With(f.wind_limit, began);
     }},
    {[](const VerdictFigures& f) { return f.light_alarm && f.light <= f.light_limit; },
     [](const VerdictFigures& f, const Style&) {
       return Message::Of("light %1 counts, limit %2 (fewer is brighter)").With(Whole(f.light), f.light_limit);
     },
     [](const VerdictFigures&, const std::string& began) { return Message::Of("light since %1").With(began); }},
    {[](const VerdictFigures& f) { return f.cloud_alarm && f.sky_c > f.sky_limit_c - f.sky_hysteresis_c; },
     [](const VerdictFigures& f, const Style& style) {
       Message text =
           Message::Of("clouds: sky %1, limit %2").With(Temperature(f.sky_c, style), Temperature(f.sky_limit_c, style));
       if (f.sky_c > f.sky_limit_c) return text;
       return Message::Of("%1; the alarm ends at %2")
           .With(text, Temperature(f.sky_limit_c - f.sky_hysteresis_c, style));
     },
     [](const VerdictFigures&, const std::string& began) { return Message::Of("clouds since %1").With(began); }},
}};

Message ExplainAlarm(const Observation& o, const Style& style) {
  Message text;
  for (const Cause& cause : kCauses) {
    if (cause.holds(o.figures)) text = Joined(text, "; ", cause.text(o.figures, style));
  }
  if (text.empty()) return Message::Of("the unit's relay is on; none of the readings explains it");
  // The program's own limits are told in like words: beside them it has to be told apart.
  ReasonSet alarm;
  alarm.Add(Reason::kUnitAlarm);
  const bool stands_alone = o.verdict.reasons.Without(alarm).empty();
  return stands_alone ? text : Message::Of("unit's alarm: %1").With(text);
}

Message ShortAlarm(const Observation& o, const std::string& began) {
  for (const Cause& cause : kCauses) {
    if (cause.holds(o.figures)) return cause.in_short(o.figures, began);
  }
  return Message::Of("unit's relay on since %1").With(began);
}

Message NoReadingFor(const Observation& o) {
  return o.age ? Message::Of("no reading for %1").With(RoughTime(*o.age)) : Message::Of("no reading for long");
}

Message TestLeft(const Observation& o) { return Message::Of("a test, %1 left").With(Seconds(*o.figures.test_left)); }

/// How a reason is told: whole, and in short for a banner with the time `began`.
struct Telling {
  Message (*whole)(const Observation& o, const Style& style);
  Message (*in_short)(const Observation& o, const std::string& began);
};

/// A reason that has no figures.
template <const Phrase& kText>
Message Plain(const Observation&, const Style&) {
  return kText;
}
/// The short form of it, with the time if it has a place for one.
template <const Phrase& kText>
Message Since(const Observation&, const std::string& began) {
  return kText.With(began);
}

constexpr auto kNotConnected = Message::Of("not connected to the unit");
constexpr auto kNotConnectedSince = Message::Of("not connected to the unit since %1");
constexpr auto kNoReadingYet = Message::Of("no reading from the unit yet");
constexpr auto kDamaged = Message::Of("the unit's readings arrive damaged");
constexpr auto kDamagedSince = Message::Of("damaged readings since %1");
constexpr auto kDemo = Message::Of("demo mode: the values are simulated");
constexpr auto kDemoShort = Message::Of("demo mode");
constexpr auto kPending = Message::Of("not all settings have been sent to the unit yet");
constexpr auto kLost = Message::Of("the settings were restored or reset, and nobody has acknowledged that");
constexpr auto kLostShort = Message::Of("settings restored or reset, not acknowledged");
constexpr auto kNoTemperature = Message::Of("the ambient temperature is unknown, and so are the clouds");
constexpr auto kNoTemperatureSince = Message::Of("ambient temperature unknown since %1");
constexpr auto kStopping = Message::Of("Orvalis is ending");
constexpr auto kWindSince = Message::Of("wind since %1");
constexpr auto kCloudsSince = Message::Of("clouds since %1");
constexpr auto kDaylightSince = Message::Of("daylight since %1");

// In the order of Reason.
constexpr std::array<Telling, kReasonCount> kTellings{{
    {Plain<kNotConnected>, Since<kNotConnectedSince>},
    {Plain<kNoReadingYet>, Since<kNoReadingYet>},
    {[](const Observation& o, const Style&) { return NoReadingFor(o); },
     [](const Observation& o, const std::string&) { return NoReadingFor(o); }},
    {Plain<kDamaged>, Since<kDamagedSince>},
    {Plain<kDemo>, Since<kDemoShort>},
    {ExplainAlarm, ShortAlarm},
    {[](const Observation& o, const Style&) {
       return o.words.rain == "Damp"
                  ? Message::Of("damp, %1 counts, limit %2").With(o.figures.rain, o.figures.rain_limit)
                  : RainText(o.figures);
     },
     [](const Observation& o, const std::string& began) { return kRainSince.With(o.figures.rain_limit, began); }},
    {[](const Observation& o, const Style& style) {
       return Message::Of("wind %1, limit %2")
           .With(Wind(o.figures.wind_mph, style), Wind(o.figures.wind_mph_limit, style));
     },
     Since<kWindSince>},
    {[](const Observation& o, const Style& style) {
       const std::int32_t limit = o.figures.cloudy_limit_c;  // a whole number of degrees Celsius
       return Message::Of("cloudy: the sky is %1 colder than the air, limit %2")
           .With(Difference(o.figures.difference_c, style),
                 style.units.centigrade ? std::to_string(limit) + " C" : Difference(limit, style));
     },
     Since<kCloudsSince>},
    {[](const Observation& o, const Style&) {
       return Message::Of("daylight: light %1 counts").With(Whole(o.figures.light));
     },
     Since<kDaylightSince>},
    {[](const Observation& o, const Style&) -> Message {
       return o.figures.relay_forced
                  ? Message::Of("the unit's relay is forced, so it says nothing about the sky")
                  : Message::Of("the unit's relay is switched off, so it says nothing about the sky");
     },
     [](const Observation& o, const std::string& began) {
       return o.figures.relay_forced ? Message::Of("relay forced since %1").With(began)
                                     : Message::Of("relay switched off since %1").With(began);
     }},
    {Plain<kPending>, Since<kPending>},
    {Plain<kLost>, Since<kLostShort>},
    {Plain<kNoTemperature>, Since<kNoTemperatureSince>},
    {[](const Observation& o, const Style&) -> Message {
       return o.figures.test_left ? TestLeft(o) : Message::Of("forced by hand");
     },
     [](const Observation& o, const std::string& began) {
       return o.figures.test_left ? TestLeft(o) : Message::Of("forced by hand since %1").With(began);
     }},
    {Plain<kStopping>, Since<kStopping>},
    {[](const Observation& o, const Style&) -> Message {
       const milliseconds left = o.verdict.hold_left;
       if (left.count() <= 0) return Message::Of("safe after another good reading");
       return Message::Of("safe in %1 if nothing else comes up").With(Seconds(left));
     },
     [](const Observation& o, const std::string&) -> Message {
       const milliseconds left = o.verdict.hold_left;
       if (left.count() <= 0) return Message::Of("after another good reading");
       return Message::Of("in %1").With(Seconds(left));
     }},
}};

const Telling& TellingOf(Reason reason) { return kTellings[static_cast<std::size_t>(reason)]; }

}  // namespace

Message RoughTime(milliseconds time) {
  struct Unit {
    std::int64_t from;  ///< as many seconds
    std::int64_t seconds;
    Phrase text;
  };
  constexpr std::array<Unit, 3> kUnits{{{std::int64_t{2} * 86400, 86400, Message::Of("%1 days")},
                                        {std::int64_t{2} * 3600, 3600, Message::Of("%1 h")},
                                        {120, 60, Message::Of("%1 min")}}};
  const std::int64_t seconds = std::chrono::floor<std::chrono::seconds>(time).count();
  for (const Unit& unit : kUnits) {
    if (seconds >= unit.from) return unit.text.With(seconds / unit.seconds);
  }
  return std::to_string(seconds) + " s";
}

Message Explain(Reason reason, const Observation& observation, NumberLocale locale, const DisplayUnits& units) {
  return TellingOf(reason).whole(observation, {locale, units});
}

std::string Explain(const Observation& observation) {
  std::string text;
  observation.verdict.reasons.ForEach([&](Reason reason) {
    if (!text.empty()) text += ". ";
    text += Explain(reason, observation).English();
  });
  return text;
}

std::string ReasonNames(const SafetyVerdict& verdict) {
  std::string names;
  verdict.reasons.ForEach([&](Reason reason) {
    if (!names.empty()) names += ", ";
    names += Name(reason);
  });
  return names;
}

Message FirstReason(const Observation& observation, const TimeOfDay& time_of_day) {
  const SafetyVerdict& verdict = observation.verdict;
  Message text;
  verdict.reasons.ForEach([&](Reason reason) {
    if (!text.empty()) return;
    const std::string began = time_of_day(verdict.reason_since[static_cast<std::size_t>(reason)]);
    text = TellingOf(reason).in_short(observation, began);
  });
  return text;
}

Message Banner(const Observation& observation, const TimeOfDay& time_of_day) {
  if (observation.verdict.safe) return Message::Of("SAFE");
  const Message reason = FirstReason(observation, time_of_day);
  const bool hold = observation.verdict.reasons.Has(Reason::kHold);
  return hold ? Message::Of("SAFE %1").With(reason) : Message::Of("UNSAFE - %1").With(reason);
}

}  // namespace orvalis
