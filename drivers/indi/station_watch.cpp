#include "station_watch.h"

#include <utility>

namespace orvalis::indi {

void StationWatch::Take(Moment requested, std::string_view body) {
  auto read = ReadAnswer(body);
  answer_.reset();
  other_.clear();
  if (const auto* none = std::get_if<NoAnswer>(&read)) {
    problem_ = {"no-observation", none->problem};
    return;
  }
  auto& answer = std::get<Answer>(read);
  name_ = answer.station;
  if (!followed_.empty() && answer.uuid != followed_) {
    other_ = answer.uuid;
    problem_ = {"other-station", "another station answers, \"" + answer.station +
                                     "\"; if that is the right one, press \"Follow this station\""};
    return;
  }
  followed_ = answer.uuid;
  answer_ = std::move(answer);
  requested_ = requested;
  problem_ = {"stale", "no reading for more than ten seconds"};
}

void StationWatch::TakeFailure(const std::string& problem) {
  problem_ = {"no-answer", Printable("no answer from Orvalis: " + problem, 200)};
}

std::optional<Moment> StationWatch::FreshUntil() const {
  if (!answer_ || !answer_->age) return std::nullopt;
  return requested_ + kOldest - *answer_->age;
}

bool StationWatch::IsFresh(Moment now) const {
  const std::optional<Moment> end = FreshUntil();
  return end && now <= *end;
}

Account StationWatch::At(Moment now) const {
  const bool fresh = IsFresh(now);
  if (!answer_ || now - requested_ > kOldest || (answer_->safe && !fresh)) return {.reasons = {problem_}, .values = {}};
  Account account{.reasons = answer_->reasons, .values = fresh ? answer_->values : Values{}};
  if (!answer_->safe && account.reasons.empty()) account.reasons = {{"unsafe", "unsafe, without a reason"}};
  return account;
}

bool StationWatch::FollowOther() {
  if (other_.empty()) return false;
  followed_ = std::exchange(other_, "");
  problem_ = {"no-answer", "waiting for the station's next answer"};
  return true;
}

}  // namespace orvalis::indi
