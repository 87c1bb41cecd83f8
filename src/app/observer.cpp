#include "app/observer.h"

#include <algorithm>
#include <string_view>

namespace orvalis {

using std::chrono::milliseconds;

Observer::~Observer() {
  if (end_timer_ != 0) parts_.loop.Cancel(end_timer_);
}

const Observation& Observer::Now() { return judge_.Judge(parts_.settings, SituationNow(), InstantNow()); }

void Observer::Take(const SafetyJudge::Reading& reading) {
  judge_.Take(reading, parts_.settings, SituationNow(), InstantNow());
  Tell(true);
}

void Observer::ForceUnsafe(bool forced) {
  parts_.settings.ForceUnsafe = forced ? 1 : 0;
  Update();
  parts_.store.Write("ForceUnsafe", parts_.settings);
}

void Observer::TestUnsafe() {
  test_until_ = test_until_ ? std::nullopt : std::optional(parts_.loop.TickCount() + milliseconds(kTest).count());
  Update();
}

void Observer::Stop() {
  stopping_ = true;
  Update();
}

Situation Observer::SituationNow() const {
  Situation situation{.demo_mode = parts_.demo_mode(),
                      .connected = parts_.link.state() == LinkState::kConnected && parts_.link.Connected(),
                      .settings_pending = parts_.link.SettingsPending(),
                      .settings_lost = parts_.settings_loss.IsOpen(),
                      .relay_forced = parts_.options.force_relay,
                      .stopping = stopping_};
  if (!situation.demo_mode) situation.session = parts_.link.session();
  if (test_until_ && *test_until_ > parts_.loop.TickCount()) {
    situation.test_left = milliseconds(*test_until_ - parts_.loop.TickCount());
  }
  return situation;
}

Instant Observer::InstantNow() const {
  return {.tick = parts_.loop.TickCount(), .utc = UtcMilliseconds(parts_.clock.UtcNow())};
}

void Observer::Tell(bool reading) {
  if (test_until_ && *test_until_ <= parts_.loop.TickCount()) test_until_.reset();
  // A copy: a listener may look again.
  const Observation now = Now();
  const SafetyVerdict& verdict = now.verdict;
  News news{.reading = reading,
            .reasons = !told_ || !verdict.SameAs(*told_),
            .verdict = !told_ || verdict.safe != told_->safe};
  if (news.verdict) told_reasons_ = {};
  news.new_reasons = verdict.reasons.Without(told_reasons_);
  news.new_reasons.ForEach([this](Reason reason) { told_reasons_.Add(reason); });
  told_ = verdict;
  for (const Listener& listener : listeners_) {
    parts_.boundary.RunToEnd(Message::Of("announcing the verdict"), [&] { listener(now, news); });
  }
  TellAtTheEndOf(now);
}

void Observer::TellAtTheEndOf(const Observation& told) {
  if (end_timer_ != 0) parts_.loop.Cancel(std::exchange(end_timer_, 0));
  if (told.source == ReadingSource::kNone || !told.age) return;
  // Whoever looks then is told something else at once: those who wait to be told must not believe the old for longer.
  const milliseconds fresh_left = kFreshFor - *told.age;
  const milliseconds hold_left = told.verdict.hold_left;
  const milliseconds left = hold_left.count() > 0 ? std::min(fresh_left, hold_left) : fresh_left;
  end_timer_ = parts_.loop.CallAfter(left, [this] {
    end_timer_ = 0;
    parts_.boundary.RunToEnd(Message::Of("judging whether it is safe"), [this] { Update(); });
  });
}

}  // namespace orvalis
