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

struct Case {
  const Observation& now;
  const Times& times;
  const Language& language;

  [[nodiscard]] std::string Say(const Message& message) const { return message.In(language); }
};

/// The word and the reason.
void Split(const Case& c, const TimeOfDay& when, VerdictBanner& banner) {
  banner.reason = c.Say(FirstReason(c.now, when));
  switch (banner.state) {
    case State::kSafe:
      banner.word = c.Say(Message::Of("SAFE"));
      break;
    case State::kSafeDemo:
      banner.word = c.Say(Message::Of("SAFE (demo)"));
      banner.reason = c.Say(Message::Of("the values are simulated"));
      banner.text = c.Say(Message::Of("SAFE - demo mode: the values are simulated"));
      break;
    case State::kSafeSoon:
      // "SAFE" alone would be taken for the verdict by whoever reads it from a distance.
      if (c.now.verdict.hold_left.count() > 0) {
        banner.word = banner.text;
        banner.reason.clear();
      } else {
        banner.word = c.Say(Message::Of("SAFE soon"));
      }
      break;
    case State::kUnsafe:
      banner.word = c.Say(Message::Of("UNSAFE"));
      break;
  }
}

/// How old the values are, or how many reasons there are beside the first.
Message Rest(const Case& c, std::size_t reasons) {
  const Observation& now = c.now;
  const bool current = now.source != ReadingSource::kNone;
  if (now.age && (now.verdict.safe || !current)) {
    const std::string at = c.times.ToTheSecond(now.time - now.age->count());
    return current ? Message::Of("reading at %1").With(at) : Message::Of("last reading at %1").With(at);
  }
  if (reasons < 2) return {};
  return reasons == 2 ? Message::Of("1 more reason") : Message::Of("%1 more reasons").With(reasons - 1);
}

Message SinceText(const Case& c, const VerdictBanner& banner) {
  const Observation& now = c.now;
  const bool alone = banner.explanations.size() == 1;  // what a person wants is named after what the sky does
  if (banner.forced) {
    return alone ? Message::Of("release it under \"Verdict\"")
                 : Message::Of("also forced by hand, release it under \"Verdict\"");
  }
  if (banner.testing && !alone) return Message::Of("also %1").With(Explain(Reason::kForced, now));
  // Not the clock's time when it began: the clock may have been set since.
  const std::string began = c.times.ToTheMinute(now.time - now.verdict.lasted.count());
  const Message since =
      now.verdict.safe ? Message::Of("safe since %1").With(began) : Message::Of("unsafe since %1").With(began);
  return Joined(since, ", ", Rest(c, banner.explanations.size()));
}

}  // namespace

VerdictBanner BannerOf(const Observation& now, const Clock& clock, NumberLocale locale, const DisplayUnits& units,
                       const Language& language) {
  const Times times(clock, now.time);
  const TimeOfDay when = [&](std::int64_t utc) { return times.ToTheMinute(utc); };
  const Case c{now, times, language};
  VerdictBanner banner;
  banner.state = StateOf(now);
  banner.text = c.Say(Banner(now, when));
  const bool wanted = now.verdict.reasons.Has(Reason::kForced);
  banner.testing = wanted && now.figures.test_left.has_value();
  banner.forced = wanted && !banner.testing;
  now.verdict.reasons.ForEach(
      [&](Reason reason) { banner.explanations.push_back(c.Say(Explain(reason, now, locale, units))); });
  Split(c, when, banner);
  banner.since = c.Say(SinceText(c, banner));
  return banner;
}

}  // namespace orvalis
