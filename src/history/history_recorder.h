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
#include "reading/sensor_frame.h"
#include "reading/weather_state.h"

namespace orvalis {

/// Keeps what the working cycles measured: in memory for the graphs, and in the store, in batches once a minute.
/// Made-up values of demo mode have a history of their own that is never stored. What the store does not take is kept
/// and offered again with the next batch; what goes wrong is reported once until it is mended.
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
    bool remember = true;  ///< keep a history in memory; without a window nobody looks at it
  };
  explicit HistoryRecorder(Parts parts) : parts_(std::move(parts)) {}
  HistoryRecorder(const HistoryRecorder&) = delete;
  HistoryRecorder& operator=(const HistoryRecorder&) = delete;
  ~HistoryRecorder();

  /// Checks and reads the store, a moment later, when the start is over.
  void LoadSoon();
  /// Takes in a working cycle.
  void Note(const WeatherState& weather, const SensorFrame& frame);
  /// Stores what is still to be stored. At the end.
  void Flush();

  /// The history that belongs to what the panel shows: the unit's, or the made-up one.
  [[nodiscard]] const History& Shown() const { return demo_shown_ ? demo_ : real_; }
  [[nodiscard]] bool demo_shown() const { return demo_shown_; }
  [[nodiscard]] std::int64_t Now() const;

  /// Told when another history is shown than before, other than by a sample more.
  void OnReplaced(std::function<void()> replaced) { replaced_ = std::move(replaced); }

 private:
  struct Instant {
    std::int64_t tick;  ///< TickCount
    std::int64_t time;  ///< by the clock
  };

  [[nodiscard]] Instant Moment() const;
  void Load();
  void NoteForStore(const Sample& sample);
  void StartTimer();
  void WriteBatch();
  void ForgetOld();
  /// Runs what the store may fail at; returns whether it did not.
  template <typename Work>
  bool Try(Work work);

  Parts parts_;
  History real_;
  History demo_;
  bool demo_shown_ = false;
  bool load_failed_ = false;  ///< to be tried again when the store works
  std::function<void()> replaced_;

  HistoryStore::Batch pending_;
  std::optional<Span> open_span_;          ///< not complete yet; it is written all the same and replaced later
  std::optional<std::int64_t> last_time_;  ///< of the last sample for the store
  std::optional<Instant> forgotten_at_;    ///< the last clearing, or the first sample
  OnceUntilMended trouble_;
  EventLoop::TimerId batch_timer_ = 0;
  EventLoop::TimerId load_timer_ = 0;
};

}  // namespace orvalis
