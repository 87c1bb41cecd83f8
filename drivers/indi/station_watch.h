#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "answer.h"

namespace orvalis::indi {

/// Since the system started, including time asleep: an answer from before sleep is old.
using Moment = std::chrono::milliseconds;

/// What clients are told.
struct Account {
  std::vector<Reason> reasons;  ///< empty when it is safe
  Values values;                ///< only of now
  [[nodiscard]] bool safe() const { return reasons.empty(); }
};

/// Judges whether it is safe by what the program answered and by how long ago it was asked. Safe is said only on an
/// answer of the one station that is followed, whose reading is at most ten seconds old by the clock of this machine.
class StationWatch {
 public:
  static constexpr std::chrono::seconds kOldest{10};

  /// `followed`: the UUID of the station to follow, "" for the first one that answers.
  explicit StationWatch(std::string followed) : followed_(std::move(followed)) {}

  /// The body of an answer, to a request that was sent at `requested`.
  void Take(Moment requested, std::string_view body);
  /// A request that got no answer. What was answered before holds for as long as it is fresh: a single lost request
  /// must not close a roof.
  void TakeFailure(const std::string& problem);

  [[nodiscard]] Account At(Moment now) const;
  /// When an account that is safe ends unless there is another answer.
  [[nodiscard]] std::optional<Moment> FreshUntil() const;

  /// Follows the station that answered in place of the one that is followed. False when there was none.
  [[nodiscard]] bool FollowOther();

  [[nodiscard]] const std::string& followed() const { return followed_; }
  /// The name of the station that answered last.
  [[nodiscard]] const std::string& name() const { return name_; }

 private:
  [[nodiscard]] bool IsFresh(Moment now) const;

  std::string followed_;
  std::string name_;
  std::string other_;  ///< the UUID of another station that answered
  std::optional<Answer> answer_;
  Moment requested_{};
  Reason problem_{"no-answer", "no answer from Orvalis yet"};  ///< what is wrong when there is no fresh answer
};

}  // namespace orvalis::indi
