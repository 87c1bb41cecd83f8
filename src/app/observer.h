#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "app/settings_loss.h"
#include "base/clock.h"
#include "base/error_boundary.h"
#include "base/event_loop.h"
#include "config/settings_store.h"
#include "unit/sensor_link.h"
#include "unit/unit_commands.h"
#include "verdict/observation.h"
#include "verdict/safety_judge.h"

namespace orvalis {

/// Gives everybody the same account of now, and tells them when the verdict changes. It is judged again at every look,
/// so that no "safe" outlives the reading that it rests on.
class Observer {
 public:
  /// How long a test that it is unsafe takes.
  static constexpr std::chrono::seconds kTest{30};

  struct Parts {
    EventLoop& loop;
    const Clock& clock;
    SettingsStore& store;
    Settings& settings;
    const SensorLink& link;
    const UnitOptions& options;
    const SettingsLoss& settings_loss;
    ErrorBoundary& boundary;
    std::function<bool()> demo_mode;
  };
  /// What there is to tell with an observation.
  struct News {
    bool reading = false;        ///< it rests on another reading, whether usable or not
    bool reasons = false;        ///< the verdict or its reasons changed; the first counts
    bool verdict = false;        ///< it became safe or unsafe; the first counts
    ReasonSet new_reasons = {};  ///< that did not apply since it became unsafe
  };
  using Listener = std::function<void(const Observation& now, const News& news)>;

  explicit Observer(Parts parts) : parts_(std::move(parts)) {}
  Observer(const Observer&) = delete;
  Observer& operator=(const Observer&) = delete;
  ~Observer();

  /// The account of now.
  [[nodiscard]] const Observation& Now();

  /// A complete frame has arrived. Tells the listeners.
  void Take(const SafetyJudge::Reading& reading);
  /// Tells the listeners how things are. To be called once a second and whenever something changes. What ends by
  /// itself, the age of a reading or the hold, is told at that moment.
  void Update() { Tell(false); }

  /// Unsafe until it is released, also over a restart. Throws RunTimeError when that cannot be stored; it holds for
  /// this run all the same.
  void ForceUnsafe(bool forced);
  [[nodiscard]] bool forced() const { return parts_.settings.ForceUnsafe != 0; }
  /// Unsafe for `kTest`, to see what follows from it; again ends the test.
  void TestUnsafe();
  /// The program is ending: the last word is unsafe.
  void Stop();

  /// `listener` is called for every update. A failure of one keeps nothing from the others.
  void Listen(Listener listener) { listeners_.push_back(std::move(listener)); }

 private:
  [[nodiscard]] Situation SituationNow() const;
  [[nodiscard]] Instant InstantNow() const;
  void Tell(bool reading);
  /// Tells again when `told` ends by itself.
  void TellAtTheEndOf(const Observation& told);

  Parts parts_;
  SafetyJudge judge_;
  std::vector<Listener> listeners_;
  std::optional<std::int64_t> test_until_;  ///< TickCount
  bool stopping_ = false;
  std::optional<SafetyVerdict> told_;
  ReasonSet told_reasons_;  ///< all since it became unsafe
  EventLoop::TimerId end_timer_ = 0;
};

}  // namespace orvalis
