#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

#include "app/alerts.h"
#include "app/observer.h"
#include "base/event_list.h"
#include "base/event_loop.h"
#include "config/settings.h"

namespace orvalis {

/// The alerts of the verdict: it became unsafe, it is safe again, there are no readings. Each has a sound and a
/// program, which may close a roof: it is tried again when it fails. They have a switch of their own, and do not depend
/// on the master switch of the other alerts.
class SafetyAlerts {
 public:
  static constexpr std::size_t kKinds = 3;
  /// Before a program that failed is tried again, each time.
  static constexpr std::array<std::chrono::seconds, 3> kPauses{std::chrono::seconds(10), std::chrono::seconds(30),
                                                               std::chrono::seconds(60)};

  struct Parts {
    EventLoop& loop;
    const Settings& settings;
    Observer& observer;
    SoundPlayer& sounds;
    ProgramStarter& programs;
    EventList& events;
  };
  explicit SafetyAlerts(const Parts& parts) : parts_(parts), start_(parts.loop.TickCount()) {}
  SafetyAlerts(const SafetyAlerts&) = delete;
  SafetyAlerts& operator=(const SafetyAlerts&) = delete;
  ~SafetyAlerts();

  /// Call for each update of the observation.
  void Note(const Observation& now);

 private:
  struct Row;
  static const std::array<Row, kKinds> kRows;

  /// From the begin of what an alert is about to its end.
  struct Course {
    bool holds = false;
    bool test = false;         ///< given for a test
    std::uint64_t number = 0;  ///< tells one course from the next, of which late news of a program may come
    std::size_t failures = 0;
    EventLoop::TimerId retry = 0;
  };

  /// Whether there is something to say: a start is unsafe for want of a reading, which may take some seconds.
  [[nodiscard]] bool HasBegun(const Observation& now);
  void Begin(std::size_t kind, const Observation& now);
  void End(Course& course);
  void Play(const Row& row);
  void StartProgram(std::size_t kind, const Observation& now);
  /// `what` happened to the program of course `number`.
  void Fail(std::size_t kind, std::uint64_t number, const std::string& what, bool last_chance);
  void Retry(std::size_t kind);
  void Record(const Row& row, const std::string& what, EventLevel level = EventLevel::kError);

  Parts parts_;
  std::int64_t start_;  ///< TickCount
  bool begun_ = false;
  std::array<Course, kKinds> courses_{};
};

}  // namespace orvalis
