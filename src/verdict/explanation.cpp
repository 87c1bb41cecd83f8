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
  std::string (*text)(const VerdictFigures& f);
  std::string (*in_short)(const VerdictFigures& f);
};

// The rain alarm is not reported by the unit; the others count only where it reports them on.
constexpr std::array<Cause, 5> kCauses{{
    {[](const VerdictFigures& f) { return f.rain > f.rain_limit; },
     [](const VerdictFigures& f) {
       return Counts("rain", f.rain, f.rain_limit) + "; the unit stays on for " + std::to_string(f.rain_on_time) +
              " s after rain";
     },
     [](const VerdictFigures& f) { return "rain, limit " + std::to_string(f.rain_limit) + " passed"; }},
    {[](const VerdictFigures& f) { return f.rain <= f.rain_limit && f.rain_on_left.has_value(); },
     [](const VerdictFigures& f) {
       return Counts("rain", f.rain, f.rain_limit) + "; the unit stays on for " + std::to_string(f.rain_on_time) +
              " s after rain, " + Seconds(*f.rain_on_left) + " left";
     },
     [](const VerdictFigures&) { return std::string("rain, not over for long enough"); }},
    {[](const VerdictFigures& f) { return f.wind_alarm && f.wind > f.wind_limit; },
     [](const VerdictFigures& f) { return Counts("wind", f.wind, f.wind_limit); },
     [](const VerdictFigures& f) { return "wind, limit " + std::to_string(f.wind_limit) + " passed"; }},
    {[](const VerdictFigures& f) { return f.light_alarm && f.light <= f.light_limit; },
     [](const VerdictFigures& f) { return Counts("light", f.light, f.light_limit) + " (fewer is brighter)"; },
     [](const VerdictFigures&) { return std::string("light"); }},
    {[](const VerdictFigures& f) { return f.cloud_alarm && f.sky_c > f.sky_limit_c - f.sky_hysteresis_c; },
     [](const VerdictFigures& f) {
       std::string text =
           "clouds: sky " + FormatFixed(f.sky_c, 1) + " C, limit " + FormatFixed(f.sky_limit_c, 1) + " C";
       if (f.sky_c <= f.sky_limit_c) {
         text += "; the alarm ends at " + FormatFixed(f.sky_limit_c - f.sky_hysteresis_c, 1) + " C";
       }
       return text;
     },
     [](const VerdictFigures&) { return std::string("clouds"); }},
}};

std::string ExplainAlarm(const Observation& o) {
  std::string text;
  for (const Cause& cause : kCauses) {
    if (cause.holds(o.figures)) Append(text, cause.text(o.figures));
  }
  return text.empty() ? "the unit's relay is on; none of the readings explains it" : text;
}

std::string ShortAlarm(const Observation& o) {
  for (const Cause& cause : kCauses) {
    if (cause.holds(o.figures)) return cause.in_short(o.figures);
  }
  return "the unit's relay is on";
}

std::string Age(const Observation& o) { return o.age ? RoughTime(*o.age) : std::string("long"); }

std::string Test(const Observation& o) {
  return o.figures.test_left ? "test, " + Seconds(*o.figures.test_left) + " left" : "forced by hand";
}

/// How a reason is told: whole, and in short for a banner, where `time` is put before the time it began.
struct Telling {
  std::string (*whole)(const Observation& o);
  std::string (*in_short)(const Observation& o);
  std::string_view time = " since ";
};

template <const char* kText>
std::string Fixed(const Observation&) {
  return kText;
}

constexpr char kNotConnected[] = "not connected to the unit";
constexpr char kNoReadingYet[] = "no reading from the unit yet";
constexpr char kDamaged[] = "the unit's readings arrive damaged";
constexpr char kDemo[] = "demo mode: the values are simulated";
constexpr char kDemoShort[] = "demo mode";
constexpr char kPending[] = "not all settings have been sent to the unit yet";
constexpr char kLost[] = "the settings were restored or reset, and nobody has acknowledged that";
constexpr char kLostShort[] = "settings restored or reset, not acknowledged";
constexpr char kNoTemperature[] = "the ambient temperature is unknown, and so are the clouds";
constexpr char kNoTemperatureShort[] = "ambient temperature unknown";
constexpr char kStopping[] = "Orvalis is ending";
constexpr char kWindShort[] = "wind";
constexpr char kCloudShort[] = "clouds";
constexpr char kLightShort[] = "daylight";
constexpr std::string_view kNoTime = "";

// In the order of Reason.
constexpr std::array<Telling, kReasonCount> kTellings{{
    {Fixed<kNotConnected>, Fixed<kNotConnected>},
    {Fixed<kNoReadingYet>, Fixed<kNoReadingYet>, kNoTime},
    {[](const Observation& o) { return "no reading for " + Age(o); },
     [](const Observation& o) { return "no reading for " + Age(o); }, kNoTime},
    {Fixed<kDamaged>, Fixed<kDamaged>},
    {Fixed<kDemo>, Fixed<kDemoShort>, kNoTime},
    {ExplainAlarm, ShortAlarm, " at "},
    {[](const Observation& o) {
       return o.words.rain == "Damp" ? Counts("damp,", o.figures.rain, o.figures.rain_limit)
                                     : Counts("rain", o.figures.rain, o.figures.rain_limit);
     },
     [](const Observation& o) { return "rain, limit " + std::to_string(o.figures.rain_limit) + " passed"; }, " at "},
    {[](const Observation& o) {
       return "wind " + FormatFixed(o.figures.wind_mph, 1) + " mph, limit " + FormatFixed(o.figures.wind_mph_limit, 1) +
              " mph";
     },
     Fixed<kWindShort>},
    {[](const Observation& o) {
       return "cloudy: the sky is " + FormatFixed(o.figures.difference_c, 1) + " C colder than the air, limit " +
              std::to_string(o.figures.cloudy_limit_c) + " C";
     },
     Fixed<kCloudShort>},
    {[](const Observation& o) { return "daylight: light " + FormatFixed(o.figures.light, 0) + " counts"; },
     Fixed<kLightShort>},
    {[](const Observation& o) -> std::string {
       return o.figures.relay_forced ? "the unit's relay is forced, so it says nothing about the sky"
                                     : "the unit's relay is switched off, so it says nothing about the sky";
     },
     [](const Observation& o) -> std::string {
       return o.figures.relay_forced ? "relay forced" : "relay switched off";
     }},
    {Fixed<kPending>, Fixed<kPending>, kNoTime},
    {Fixed<kLost>, Fixed<kLostShort>, kNoTime},
    {Fixed<kNoTemperature>, Fixed<kNoTemperatureShort>},
    {Test, Test},
    {Fixed<kStopping>, Fixed<kStopping>, kNoTime},
    {[](const Observation& o) -> std::string {
       const milliseconds left = o.verdict.hold_left;
       return left.count() > 0 ? "safe in " + Seconds(left) + " if nothing else comes up"
                               : std::string("safe after another good reading");
     },
     nullptr, kNoTime},
}};

const Telling& TellingOf(Reason reason) { return kTellings[static_cast<std::size_t>(reason)]; }

}  // namespace

std::string RoughTime(milliseconds time) {
  struct Unit {
    std::int64_t seconds;
    const char* name;
  };
  constexpr std::array<Unit, 3> kUnits{{{2 * 86400, " days"}, {2 * 3600, " h"}, {120, " min"}}};
  constexpr std::array<std::int64_t, 3> kDivisors{86400, 3600, 60};
  const std::int64_t seconds = std::chrono::floor<std::chrono::seconds>(time).count();
  for (std::size_t i = 0; i < kUnits.size(); ++i) {
    if (seconds >= kUnits[i].seconds) return std::to_string(seconds / kDivisors[i]) + kUnits[i].name;
  }
  return std::to_string(seconds) + " s";
}

std::string Explain(Reason reason, const Observation& observation) { return TellingOf(reason).whole(observation); }

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

std::string Banner(const Observation& observation, const TimeOfDay& time_of_day) {
  const SafetyVerdict& verdict = observation.verdict;
  if (verdict.safe) return "SAFE";
  if (verdict.reasons.Has(Reason::kHold)) {
    return verdict.hold_left.count() > 0 ? "SAFE in " + Seconds(verdict.hold_left)
                                         : std::string("SAFE after another good reading");
  }
  std::string banner;
  verdict.reasons.ForEach([&](Reason reason) {
    if (!banner.empty()) return;
    const Telling& telling = TellingOf(reason);
    banner = "UNSAFE - " + telling.in_short(observation);
    if (telling.time.empty()) return;
    banner += telling.time;
    banner += time_of_day(verdict.reason_since[static_cast<std::size_t>(reason)]);
  });
  return banner;
}

}  // namespace orvalis
