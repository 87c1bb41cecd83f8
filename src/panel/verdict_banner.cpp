#include "panel/verdict_banner.h"

#include "verdict/explanation.h"

namespace orvalis {
namespace {

using State = VerdictBanner::State;

State StateOf(const Observation& now) {
  if (now.verdict.safe) return now.source == ReadingSource::kDemo ? State::kSafeDemo : State::kSafe;
  return now.verdict.reasons.Has(Reason::kHold) ? State::kSafeSoon : State::kUnsafe;
}

/// Writes times for people, with their date unless that is today.
class Times {
 public:
  Times(const Clock& clock, std::int64_t now) : clock_(clock), today_(DayNumber(clock.LocalAt(now))) {}

  [[nodiscard]] std::string ToTheMinute(std::int64_t utc) const { return Write(utc, clock_.style().hour_and_minute); }
  [[nodiscard]] std::string ToTheSecond(std::int64_t utc) const { return Write(utc, clock_.style().time); }

 private:
  [[nodiscard]] std::string Write(std::int64_t utc, const TimeStyle::Format& time_of_day) const {
    const CivilTime time = clock_.LocalAt(utc);
    return (DayNumber(time) == today_ ? "" : clock_.style().date(time) + " ") + time_of_day(time);
  }

  const Clock& clock_;
  std::int64_t today_;
};

/// The word and the reason.
void Split(const Observation& now, const TimeOfDay& when, VerdictBanner& banner) {
  banner.reason = FirstReason(now, when);
  switch (banner.state) {
    case State::kSafe:
      banner.word = "SAFE";
      break;
    case State::kSafeDemo:
      banner.word = "SAFE (demo)";
      banner.reason = "the values are simulated";
      banner.text += " - demo mode: " + banner.reason;
      break;
    case State::kSafeSoon:
      // "SAFE" alone would be taken for the verdict by whoever reads it from a distance.
      if (now.verdict.hold_left.count() > 0) {
        banner.word = banner.text;
        banner.reason.clear();
      } else {
        banner.word = "SAFE soon";
      }
      break;
    case State::kUnsafe:
      banner.word = "UNSAFE";
      break;
  }
}

/// How old the values are, or how many reasons there are beside the first.
std::string Rest(const Observation& now, const Times& times, std::size_t reasons) {
  const bool current = now.source != ReadingSource::kNone;
  if (now.age && (now.verdict.safe || !current)) {
    return (current ? ", reading at " : ", last reading at ") + times.ToTheSecond(now.time - now.age->count());
  }
  if (reasons < 2) return {};
  return ", " + std::to_string(reasons - 1) + (reasons == 2 ? " more reason" : " more reasons");
}

std::string SinceText(const Observation& now, const Times& times, const VerdictBanner& banner) {
  const bool alone = banner.explanations.size() == 1;  // what a person wants is named after what the sky does
  if (banner.forced) return std::string(alone ? "" : "also forced by hand, ") + "release it under \"Verdict\"";
  if (banner.testing && !alone) return "also " + Explain(Reason::kForced, now);
  // Not the clock's time when it began: the clock may have been set since.
  const std::string began = times.ToTheMinute(now.time - now.verdict.lasted.count());
  return (now.verdict.safe ? "safe since " : "unsafe since ") + began + Rest(now, times, banner.explanations.size());
}

}  // namespace

VerdictBanner BannerOf(const Observation& now, const Clock& clock, NumberLocale locale, const DisplayUnits& units) {
  const Times times(clock, now.time);
  const TimeOfDay when = [&](std::int64_t utc) { return times.ToTheMinute(utc); };
  VerdictBanner banner;
  banner.state = StateOf(now);
  banner.text = Banner(now, when);
  const bool wanted = now.verdict.reasons.Has(Reason::kForced);
  banner.testing = wanted && now.figures.test_left.has_value();
  banner.forced = wanted && !banner.testing;
  now.verdict.reasons.ForEach(
      [&](Reason reason) { banner.explanations.push_back(Explain(reason, now, locale, units)); });
  Split(now, when, banner);
  banner.since = SinceText(now, times, banner);
  return banner;
}

}  // namespace orvalis
