#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/clock.h"
#include "base/event_loop.h"
#include "base/once_until_mended.h"
#include "history/history.h"
#include "history/history_store.h"
#include "history/past_reader.h"
#include "history/verdict_bands.h"
#include "history/verdict_history.h"
#include "reading/sensor_frame.h"
#include "reading/weather_state.h"
#include "verdict/observation.h"

namespace orvalis {

/// Records what the working cycles measured, and the verdicts: in memory for the graphs, and in the store in batches
/// once a minute. Demo values have their own history, which is never stored; the verdict is that of the program,
/// whatever it rests on, and always stored. What the store rejects is kept and retried with the next
/// batch; a failure is reported once until it is fixed.
class HistoryRecorder {
 public:
  static constexpr std::chrono::seconds kBatchInterval{60};
  static constexpr std::int64_t kSamplesStoredMs = History::kKeptMs;
  static constexpr std::int64_t kSpansStoredMs = History::kHourMs * 24 * 400;

  struct Parts {
    EventLoop& loop;
    const Clock& clock;
    HistoryStore& store;
    std::function<void(const std::string& text)> report;
    bool remember = true;  ///< keep a history in memory; not needed without a window
  };
  explicit HistoryRecorder(Parts parts) : parts_(std::move(parts)) {}
  HistoryRecorder(const HistoryRecorder&) = delete;
  HistoryRecorder& operator=(const HistoryRecorder&) = delete;
  ~HistoryRecorder();

  /// Checks and reads the store shortly after the start.
  void LoadSoon();
  /// Keeps a history in memory from now on, if it does not yet. Reads the store at once.
  void Remember();
  /// Records a working cycle.
  void Note(const WeatherState& weather, const SensorFrame& frame);
  /// Records the verdict of `now`. To be called once a second and whenever it changes: where it was not confirmed for
  /// ten seconds it counts as unknown.
  void NoteVerdict(const Observation& now);
  /// Stores pending data at exit.
  void Flush();

  /// The history of what the panel shows: the unit's or the demo one.
  [[nodiscard]] const History& Shown() const { return demo_shown_ ? demo_ : real_; }
  [[nodiscard]] const VerdictHistory& Verdicts() const { return verdicts_; }
  /// Both together.
  [[nodiscard]] HistoryView View() const { return {.history = Shown(), .verdicts = verdicts_, .demo = demo_shown_}; }
  [[nodiscard]] bool demo_shown() const { return demo_shown_; }
  /// For what is older.
  [[nodiscard]] PastReader::Parts Store() const { return {.loop = parts_.loop, .store = parts_.store}; }
  [[nodiscard]] std::int64_t Now() const;

  /// Called when the shown history was replaced, not just extended by a sample.
  void OnReplaced(std::function<void()> replaced) { replaced_ = std::move(replaced); }

 private:
  struct Instant {
    std::int64_t tick;  ///< TickCount
    std::int64_t time;  ///< by the clock
  };

  [[nodiscard]] Instant CurrentInstant() const;
  void Load();
  void NoteForStore(const Sample& sample);
  void PutVerdict();
  void StartTimer();
  /// Returns whether it succeeded.
  bool WriteBatch();
  void ForgetOld();
  /// Runs a store operation; returns whether it succeeded.
  template <typename Work>
  bool Try(Work work);

  Parts parts_;
  History real_;
  History demo_;
  VerdictHistory verdicts_;
  bool demo_shown_ = false;
  bool load_failed_ = false;  ///< retry when the store works
  std::function<void()> replaced_;

  HistoryStore::Batch pending_;
  std::optional<Span> open_span_;                ///< incomplete; it is written anyway and replaced later
  std::optional<RecordedVerdict> open_verdict_;  ///< the present one; written like the open span
  SafetyVerdict noted_;                          ///< the same
  std::optional<std::int64_t> last_time_;        ///< of the last sample for the store
  std::optional<Instant> forgotten_at_;          ///< the last purge, or the first sample
  OnceUntilMended trouble_;
  EventLoop::TimerId batch_timer_ = 0;
  EventLoop::TimerId load_timer_ = 0;
};

}  // namespace orvalis
