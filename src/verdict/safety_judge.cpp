#include "verdict/safety_judge.h"

#include <algorithm>

#include "base/text.h"
#include "reading/conditions.h"

namespace orvalis {
namespace {

using std::chrono::milliseconds;

constexpr double kMetresPerSecond = 0.44704;  // of one mile per hour

/// Nothing where the value is not known.
ObservedValues::Value If(bool known, double value) { return known ? ObservedValues::Value(value) : std::nullopt; }

}  // namespace

/// What the rules look at.
struct SafetyJudge::Case {
  const Settings& settings;
  const Situation& situation;
  bool any_reading;      ///< from this source and connection
  bool stale;            ///< the last one is too old
  bool any_damaged;      ///< on this connection, since the last undamaged one
  const Facts* reading;  ///< the last undamaged one, where it is of now
  const Facts* against;  ///< a damaged one after it
};

/// A reason, and when it applies.
struct SafetyJudge::Rule {
  Reason reason;
  bool (*applies)(const Case& c);
  /// Or: to what a reading it applies, damaged ones included.
  bool (*reads)(const Facts& facts, const Case& c);
};

// clang-format off
const SafetyJudge::Rule SafetyJudge::kRules[] = {
    {Reason::kNoConnection, [](const Case& c) { return !c.situation.demo_mode && !c.situation.connected; }, nullptr},
    {Reason::kNoReading, [](const Case& c) { return (c.situation.demo_mode || c.situation.connected) && !c.any_reading; }, nullptr},
    {Reason::kStale, [](const Case& c) { return c.stale; }, nullptr},
    {Reason::kDamagedReading, [](const Case& c) { return c.reading == nullptr && c.any_damaged; }, nullptr},
    {Reason::kDemo, [](const Case& c) { return c.situation.demo_mode && c.settings.DemoCanBeSafe != 1; }, nullptr},
    {Reason::kUnitAlarm, nullptr, [](const Facts& f, const Case&) { return f.weather.unsafe_indicator != 0; }},
    {Reason::kRain, nullptr, [](const Facts& f, const Case& c) { return c.settings.VerdictRain != 0 && f.weather.rain_word.text != "Dry"; }},
    {Reason::kWind, nullptr, [](const Facts& f, const Case& c) { return c.settings.VerdictWind != 0 && f.weather.wind_word.text == "Windy"; }},
    {Reason::kClouds, nullptr, [](const Facts& f, const Case& c) {
       return c.settings.VerdictClouds != 0 && (f.cloudy_now || (f.weather.ambient_known && f.weather.cloud.text == "Cloudy")); }},
    {Reason::kLight, nullptr, [](const Facts& f, const Case& c) { return c.settings.VerdictLight != 0 && f.weather.light_word.text == "Day"; }},
    {Reason::kRelayOff, [](const Case& c) { return c.reading != nullptr && !c.situation.demo_mode && (!c.reading->relay_allowed || c.situation.relay_forced); }, nullptr},
    {Reason::kSettingsPending, [](const Case& c) { return !c.situation.demo_mode && c.situation.connected && c.situation.settings_pending; }, nullptr},
    {Reason::kSettingsLost, [](const Case& c) { return c.situation.settings_lost; }, nullptr},
    {Reason::kUnknownTemperature, [](const Case& c) { return c.reading != nullptr && !c.reading->weather.ambient_known; }, nullptr},
    {Reason::kForced, [](const Case& c) { return c.settings.ForceUnsafe != 0 || c.situation.test_left; }, nullptr},
    {Reason::kStopping, [](const Case& c) { return c.situation.stopping; }, nullptr},
};
// clang-format on

void SafetyJudge::Take(const Reading& reading, const Settings& settings, const Situation& situation, Instant now) {
  // Before the frame: after a silence, even one that this program slept through, the hold starts anew.
  NoteReasons(ReasonsNow(settings, situation, now), now);
  const bool continues = source_ == reading.source && session_ == situation.session;
  source_ = reading.source;
  session_ = situation.session;
  if (!continues) {
    good_.reset();
    damaged_.reset();
    last_rain_tick_.reset();
  }
  ++now_.frames;
  if (!reading.usable || !reading.frame.IsUndamaged()) {
    ++now_.damaged_frames;
    damaged_ = FactsOf(reading, settings);
    if (clear_frames_ < kFramesForSafe) clear_frames_ = 0;
    NoteReasons(ReasonsNow(settings, situation, now), now);
    return;
  }
  damaged_.reset();
  good_ = FactsOf(reading, settings);
  good_tick_ = now.tick;
  if (good_->weather.raining) last_rain_tick_ = now.tick;
  const ReasonSet reasons = ReasonsNow(settings, situation, now);
  NoteReasons(reasons, now);
  if (reasons.empty()) clear_frames_ = std::min(clear_frames_ + 1, kFramesForSafe);
}

const Observation& SafetyJudge::Judge(const Settings& settings, const Situation& situation, Instant now) {
  ReasonSet reasons = ReasonsNow(settings, situation, now);
  NoteReasons(reasons, now);
  now_.time = now.utc;
  now_.connected = situation.connected;
  now_.verdict.hold_left = reasons.empty() ? HoldLeft(settings, now) : milliseconds(0);
  if (reasons.empty() && (now_.verdict.hold_left.count() > 0 || clear_frames_ < kFramesForSafe)) {
    reasons.Add(Reason::kHold);
  }
  ShowReadings(situation, now);
  ShowFigures(settings, situation, now);
  ShowVerdict(reasons, now);
  return now_;
}

SafetyJudge::Facts SafetyJudge::FactsOf(const Reading& reading, const Settings& settings) {
  using Field = SensorFrame::Field;
  const SensorFrame& frame = reading.frame;
  const auto is_on = [&](Field field) { return frame.Integer(field) == 1; };
  const bool has_ambient = frame.Cut(Field::kTa) != kNoTemperature;
  const double averaged = reading.weather.difference_celsius;
  const double alone = RoundToDecimals(RoundToDecimals(frame.Celsius(Field::kTa), 1) - frame.Celsius(Field::kTp), 2);
  return {
      .weather = reading.weather,
      .relay_allowed = is_on(Field::kAr),
      .wind_alarm = is_on(Field::kAw),
      .cloud_alarm = is_on(Field::kAc),
      .light_alarm = is_on(Field::kAl),
      .wind_count = frame.Number(Field::kWnd),
      .cloudy_now = has_ambient && CloudWord(alone, settings.PartCloudyDegC, settings.FullCloudyDegC).text == "Cloudy",
      .difference = has_ambient ? std::min(alone, averaged) : averaged};
}

bool SafetyJudge::IsOfSource(const Situation& situation) const {
  return source_ == (situation.demo_mode ? ReadingSource::kDemo : ReadingSource::kUnit);
}

bool SafetyJudge::IsOfLine(const Situation& situation) const {
  return IsOfSource(situation) && session_ == situation.session && (situation.demo_mode || situation.connected);
}

milliseconds SafetyJudge::Age(Instant now) const { return milliseconds(now.tick - good_tick_); }

bool SafetyJudge::IsCurrent(const Situation& situation, Instant now) const {
  return good_ && IsOfSource(situation) && session_ == situation.session && Age(now) < kFreshFor;
}

ReasonSet SafetyJudge::ReasonsNow(const Settings& settings, const Situation& situation, Instant now) const {
  const bool of_source = good_ && IsOfSource(situation);
  const bool current = IsCurrent(situation, now);
  const Case c{.settings = settings,
               .situation = situation,
               .any_reading = of_source && session_ == situation.session,
               .stale = of_source && Age(now) >= kFreshFor,
               .any_damaged = damaged_.has_value() && IsOfLine(situation),
               .reading = current ? &*good_ : nullptr,
               .against = current && damaged_ ? &*damaged_ : nullptr};
  ReasonSet reasons;
  for (const Rule& rule : kRules) {
    const bool applies = rule.applies != nullptr ? rule.applies(c)
                                                 : (c.reading != nullptr && rule.reads(*c.reading, c)) ||
                                                       (c.against != nullptr && rule.reads(*c.against, c));
    if (applies) reasons.Add(rule.reason);
  }
  return reasons;
}

void SafetyJudge::NoteReasons(ReasonSet reasons, Instant now) {
  if (!reasons.empty()) {
    clear_ = false;
    clear_frames_ = 0;
  } else if (!clear_) {
    clear_ = true;
    clear_tick_ = now.tick;
  }
}

milliseconds SafetyJudge::HoldLeft(const Settings& settings, Instant now) const {
  return std::max(milliseconds(0),
                  milliseconds(std::chrono::seconds(settings.SafeHoldSeconds)) - milliseconds(now.tick - clear_tick_));
}

void SafetyJudge::ShowReadings(const Situation& situation, Instant now) {
  now_.age.reset();
  if (good_ && IsOfSource(situation)) now_.age = Age(now);
  now_.source = ReadingSource::kNone;
  now_.values = {};
  now_.words = {};
  if (!IsCurrent(situation, now)) return;
  const WeatherState& w = good_->weather;
  now_.source = source_;
  const bool has_dew_point = w.ambient_known && !w.humidity_faulty;
  const bool has_difference = w.ambient_known && !w.sky_faulty;
  now_.words = {.sky = has_difference ? w.cloud.text : std::string_view(),
                .wind = w.wind_word.text,
                .rain = w.rain_word.text,
                .light = w.light_word.text,
                .heater = w.heater.text,
                .relay = w.relay.text};
  now_.values = {.ambient_c = If(w.ambient_known, w.ambient_celsius),
                 .body_c = If(w.body_known, w.body_celsius),
                 .sky_c = If(!w.sky_faulty, w.sky_celsius),
                 .clear_sky_c = If(has_dew_point, w.clear_sky_celsius),
                 .difference_c = If(has_difference, w.difference_celsius),
                 .dew_point_c = If(has_dew_point, w.dew_point_celsius),
                 .humidity_percent = If(has_dew_point, w.humidity_percent),
                 .wind_m_s = w.wind_mph * kMetresPerSecond,
                 .wind_average_m_s = w.wind_average_mph * kMetresPerSecond,
                 .wind_gust_m_s = w.wind_gust_mph * kMetresPerSecond,
                 .rain_counts = w.rain,
                 .light_counts = w.light,
                 .cloud_cover_percent = If(has_difference, CloudCoverPercent(w.cloud.text))};
}

void SafetyJudge::ShowFigures(const Settings& settings, const Situation& situation, Instant now) {
  VerdictFigures& f = now_.figures;
  f = {};
  f.rain_limit = settings.RainThreshold;
  f.rain_on_time = settings.RainOnTime;
  f.wind_limit = settings.WindThreshold;
  f.wind_mph_limit = settings.WindSpeedCloseD;
  f.sky_limit_c = settings.CloudsThreshold;
  f.sky_hysteresis_c = settings.TPTempHysteresis;
  f.cloudy_limit_c = settings.FullCloudyDegC;
  f.light_limit = settings.LightThreshold;
  f.relay_forced = situation.relay_forced;
  if (settings.ForceUnsafe == 0) f.test_left = situation.test_left;
  if (!IsCurrent(situation, now)) return;
  // A damaged reading that speaks against it is told with its own figures.
  const Facts& against = damaged_ ? *damaged_ : *good_;
  f.rain = std::max(good_->weather.rain, against.weather.rain);
  f.wind = std::max(good_->wind_count, against.wind_count);
  f.wind_mph = std::max(good_->weather.wind_mph, against.weather.wind_mph);
  f.sky_c = std::max(good_->weather.sky_celsius, against.weather.sky_celsius);
  f.difference_c = std::min(good_->difference, against.difference);
  f.light = std::min(good_->weather.light, against.weather.light);
  f.wind_alarm = good_->wind_alarm;
  f.cloud_alarm = good_->cloud_alarm;
  f.light_alarm = good_->light_alarm;
  if (!last_rain_tick_) return;
  const milliseconds left = std::chrono::seconds(settings.RainOnTime) - milliseconds(now.tick - *last_rain_tick_);
  if (left.count() > 0) f.rain_on_left = left;
}

void SafetyJudge::ShowVerdict(ReasonSet reasons, Instant now) {
  SafetyVerdict& verdict = now_.verdict;
  const bool safe = reasons.empty();
  if (!judged_ || safe != verdict.safe) {
    verdict.since = now.utc;
    since_tick_ = now.tick;
  }
  reasons.Without(verdict.reasons).ForEach([&](Reason reason) {
    verdict.reason_since[static_cast<std::size_t>(reason)] = now.utc;
  });
  judged_ = true;
  verdict.safe = safe;
  verdict.reasons = reasons;
  verdict.lasted = milliseconds(now.tick - since_tick_);
}

}  // namespace orvalis
