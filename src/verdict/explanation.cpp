#include "verdict/explanation.h"

#include <array>
#include <cstddef>
#include <string_view>

#include "base/text.h"

namespace orvalis {
namespace {

using std::chrono::milliseconds;

std::string Counts(std::string_view what, double count, std::int32_t limit) {
  return std::string(what) + " " + FormatFixed(count, 0) + " counts, limit " + std::to_string(limit);
}

/// How a person reads the numbers.
struct Style {
  NumberLocale locale;
  DisplayUnits units;
};

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

void Append(std::string& text, const std::string& more, std::string_view separator = "; ") {
  if (more.empty()) return;
  if (!text.empty()) text += separator;
  text += more;
}

/// A condition that can have set off the unit's alarm.
struct Cause {
  bool (*holds)(const VerdictFigures& f);
  std::string (*text)(const VerdictFigures& f, const Style& style);
  /// Where it ends with a blank, the time when the alarm began follows.
  std::string (*in_short)(const VerdictFigures& f);
};

// The rain alarm is not reported by the unit; the others count only where it reports them on.
constexpr std::array<Cause, 5> kCauses{{
    {[](const VerdictFigures& f) { return f.rain > f.rain_limit; },
     [](const VerdictFigures& f, const Style&) {
       return Counts("rain", f.rain, f.rain_limit) + "; the unit stays on for " + std::to_string(f.rain_on_time) +
              " s after rain";
     },
     [](const VerdictFigures& f) { return "rain, limit " + std::to_string(f.rain_limit) + " passed at "; }},
    {[](const VerdictFigures& f) { return f.rain <= f.rain_limit && f.rain_on_left.has_value(); },
     [](const VerdictFigures& f, const Style&) {
       return Counts("rain", f.rain, f.rain_limit) + "; the unit stays on for " + std::to_string(f.rain_on_time) +
              " s after rain, " + Seconds(*f.rain_on_left) + " left";
     },
     [](const VerdictFigures& f) { return "rain just over, the unit stays on for " + Seconds(*f.rain_on_left); }},
    {[](const VerdictFigures& f) { return f.wind_alarm && f.wind > f.wind_limit; },
     [](const VerdictFigures& f, const Style&) { return Counts("wind", f.wind, f.wind_limit); },
     [](const VerdictFigures& f) { return "wind, limit " + std::to_string(f.wind_limit) + " passed at "; }},
    {[](const VerdictFigures& f) { return f.light_alarm && f.light <= f.light_limit; },
     [](const VerdictFigures& f, const Style&) {
       return Counts("light", f.light, f.light_limit) + " (fewer is brighter)";
     },
     [](const VerdictFigures&) { return std::string("light since "); }},
    {[](const VerdictFigures& f) { return f.cloud_alarm && f.sky_c > f.sky_limit_c - f.sky_hysteresis_c; },
     [](const VerdictFigures& f, const Style& style) {
       std::string text = "clouds: sky " + Temperature(f.sky_c, style) + ", limit " + Temperature(f.sky_limit_c, style);
       if (f.sky_c <= f.sky_limit_c) {
         text += "; the alarm ends at " + Temperature(f.sky_limit_c - f.sky_hysteresis_c, style);
       }
       return text;
     },
     [](const VerdictFigures&) { return std::string("clouds since "); }},
}};

std::string ExplainAlarm(const Observation& o, const Style& style) {
  std::string text;
  for (const Cause& cause : kCauses) {
    if (cause.holds(o.figures)) Append(text, cause.text(o.figures, style));
  }
  if (text.empty()) return "the unit's relay is on; none of the readings explains it";
  // The program's own limits are told in like words: beside them it has to be told apart.
  ReasonSet alarm;
  alarm.Add(Reason::kUnitAlarm);
  const bool stands_alone = o.verdict.reasons.Without(alarm).empty();
  return stands_alone ? text : "unit's alarm: " + text;
}

std::string ShortAlarm(const Observation& o) {
  for (const Cause& cause : kCauses) {
    if (cause.holds(o.figures)) return cause.in_short(o.figures);
  }
  return "unit's relay on since ";
}

std::string Age(const Observation& o) { return o.age ? RoughTime(*o.age) : std::string("long"); }

std::string TestLeft(const Observation& o) { return "a test, " + Seconds(*o.figures.test_left) + " left"; }

/// How a reason is told: whole, and in short for a banner, where its time follows if the text ends with a blank.
struct Telling {
  std::string (*whole)(const Observation& o, const Style& style);
  std::string (*in_short)(const Observation& o);
};

template <const char* kText>
std::string Fixed(const Observation&, const Style&) {
  return kText;
}
template <const char* kText>
std::string Short(const Observation&) {
  return kText;
}

constexpr char kNotConnected[] = "not connected to the unit";
constexpr char kNotConnectedSince[] = "not connected to the unit since ";
constexpr char kNoReadingYet[] = "no reading from the unit yet";
constexpr char kDamaged[] = "the unit's readings arrive damaged";
constexpr char kDamagedSince[] = "damaged readings since ";
constexpr char kDemo[] = "demo mode: the values are simulated";
constexpr char kDemoShort[] = "demo mode";
constexpr char kPending[] = "not all settings have been sent to the unit yet";
constexpr char kLost[] = "the settings were restored or reset, and nobody has acknowledged that";
constexpr char kLostShort[] = "settings restored or reset, not acknowledged";
constexpr char kNoTemperature[] = "the ambient temperature is unknown, and so are the clouds";
constexpr char kNoTemperatureSince[] = "ambient temperature unknown since ";
constexpr char kStopping[] = "Orvalis is ending";
constexpr char kWindSince[] = "wind since ";
constexpr char kCloudsSince[] = "clouds since ";
constexpr char kDaylightSince[] = "daylight since ";

// In the order of Reason.
constexpr std::array<Telling, kReasonCount> kTellings{{
    {Fixed<kNotConnected>, Short<kNotConnectedSince>},
    {Fixed<kNoReadingYet>, Short<kNoReadingYet>},
    {[](const Observation& o, const Style&) { return "no reading for " + Age(o); },
     [](const Observation& o) { return "no reading for " + Age(o); }},
    {Fixed<kDamaged>, Short<kDamagedSince>},
    {Fixed<kDemo>, Short<kDemoShort>},
    {ExplainAlarm, ShortAlarm},
    {[](const Observation& o, const Style&) {
       return o.words.rain == "Damp" ? Counts("damp,", o.figures.rain, o.figures.rain_limit)
                                     : Counts("rain", o.figures.rain, o.figures.rain_limit);
     },
     [](const Observation& o) { return "rain, limit " + std::to_string(o.figures.rain_limit) + " passed at "; }},
    {[](const Observation& o, const Style& style) {
       return "wind " + Wind(o.figures.wind_mph, style) + ", limit " + Wind(o.figures.wind_mph_limit, style);
     },
     Short<kWindSince>},
    {[](const Observation& o, const Style& style) {
       const std::int32_t limit = o.figures.cloudy_limit_c;  // a whole number of degrees Celsius
       return "cloudy: the sky is " + Difference(o.figures.difference_c, style) + " colder than the air, limit " +
              (style.units.centigrade ? std::to_string(limit) + " C" : Difference(limit, style));
     },
     Short<kCloudsSince>},
    {[](const Observation& o, const Style&) {
       return "daylight: light " + FormatFixed(o.figures.light, 0) + " counts";
     },
     Short<kDaylightSince>},
    {[](const Observation& o, const Style&) -> std::string {
       return o.figures.relay_forced ? "the unit's relay is forced, so it says nothing about the sky"
                                     : "the unit's relay is switched off, so it says nothing about the sky";
     },
     [](const Observation& o) -> std::string {
       return o.figures.relay_forced ? "relay forced since " : "relay switched off since ";
     }},
    {Fixed<kPending>, Short<kPending>},
    {Fixed<kLost>, Short<kLostShort>},
    {Fixed<kNoTemperature>, Short<kNoTemperatureSince>},
    {[](const Observation& o, const Style&) { return o.figures.test_left ? TestLeft(o) : "forced by hand"; },
     [](const Observation& o) { return o.figures.test_left ? TestLeft(o) : "forced by hand since "; }},
    {Fixed<kStopping>, Short<kStopping>},
    {[](const Observation& o, const Style&) -> std::string {
       const milliseconds left = o.verdict.hold_left;
       return left.count() > 0 ? "safe in " + Seconds(left) + " if nothing else comes up"
                               : std::string("safe after another good reading");
     },
     [](const Observation& o) {
       const milliseconds left = o.verdict.hold_left;
       return left.count() > 0 ? "in " + Seconds(left) : std::string("after another good reading");
     }},
}};

const Telling& TellingOf(Reason reason) { return kTellings[static_cast<std::size_t>(reason)]; }

}  // namespace

std::string RoughTime(milliseconds time) {
  struct Unit {
    std::int64_t seconds;
    const char* name;
  };
  constexpr std::array<Unit, 3> kUnits{
      {{std::int64_t{2} * 86400, " days"}, {std::int64_t{2} * 3600, " h"}, {120, " min"}}};
  constexpr std::array<std::int64_t, 3> kDivisors{86400, 3600, 60};
  const std::int64_t seconds = std::chrono::floor<std::chrono::seconds>(time).count();
  for (std::size_t i = 0; i < kUnits.size(); ++i) {
    if (seconds >= kUnits[i].seconds) return std::to_string(seconds / kDivisors[i]) + kUnits[i].name;
  }
  return std::to_string(seconds) + " s";
}

std::string Explain(Reason reason, const Observation& observation, NumberLocale locale, const DisplayUnits& units) {
  return TellingOf(reason).whole(observation, {locale, units});
}

std::string Explain(const Observation& observation) {
  std::string text;
  observation.verdict.reasons.ForEach([&](Reason reason) { Append(text, Explain(reason, observation), ". "); });
  return text;
}

std::string ReasonNames(const SafetyVerdict& verdict) {
  std::string names;
  verdict.reasons.ForEach([&](Reason reason) { Append(names, std::string(Name(reason)), ", "); });
  return names;
}

std::string FirstReason(const Observation& observation, const TimeOfDay& time_of_day) {
  const SafetyVerdict& verdict = observation.verdict;
  std::string text;
  verdict.reasons.ForEach([&](Reason reason) {
    if (!text.empty()) return;
    text = TellingOf(reason).in_short(observation);
    if (text.ends_with(' ')) text += time_of_day(verdict.reason_since[static_cast<std::size_t>(reason)]);
  });
  return text;
}

std::string Banner(const Observation& observation, const TimeOfDay& time_of_day) {
  if (observation.verdict.safe) return "SAFE";
  const bool hold = observation.verdict.reasons.Has(Reason::kHold);
  return (hold ? "SAFE " : "UNSAFE - ") + FirstReason(observation, time_of_day);
}

}  // namespace orvalis
