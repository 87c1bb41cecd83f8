#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/alerts.h"
#include "app/observer.h"
#include "base/clock.h"
#include "base/error_boundary.h"
#include "base/event_list.h"
#include "base/event_loop.h"
#include "base/task.h"
#include "base/tick_counter.h"
#include "config/settings.h"
#include "logs/log_writer.h"
#include "panel/panel_model.h"
#include "publish/upload_schedule.h"
#include "reading/frame_interpreter.h"
#include "reading/sensor_frame.h"
#include "reading/weather_state.h"
#include "unit/demo_feed.h"
#include "unit/sensor_link.h"

namespace orvalis {

/// The program's main loop: on every second tick of the poll timer it fetches one frame, turns it into the current
/// values and shows them.
class PollCycle {
 public:
  struct Parts {
    EventLoop& loop;
    const Clock& clock;
    SensorLink& link;
    const Settings& settings;
    WeatherState& weather;
    PanelModel& panel;
    EventList& events;
    ErrorBoundary& boundary;
    Alerts& alerts;
    LogWriter& logs;
    Observer& observer;
    NumberLocale locale;
    bool demo_override = false;                ///< demo mode for this run, regardless of the setting
    std::array<UploadSchedule*, 2> uploads{};  ///< in starting order; may be null
    std::function<void()> draw{};              ///< draws the panel before the uploads capture it; may be empty
  };
  /// Called after each working cycle that got a frame.
  using Listener = std::function<void(const SensorFrame& frame)>;

  explicit PollCycle(const Parts& parts);

  /// One tick of the poll timer, every 1000 ms. A tick during a working cycle that waits for the unit only raises the
  /// counters.
  void Poll();

  /// Turns the panel's values grey and withdraws the verdict when they are older than `kFreshFor`. `Poll` calls it;
  /// call it also before serving the verdict at any other time, because there may have been no tick for hours.
  void CheckStaleness();

  /// Keeps the one-line log going while no frames come; `at_once` also right after a record.
  void KeepRecord(bool at_once);

  void Listen(Listener listener) { listeners_.push_back(std::move(listener)); }

  [[nodiscard]] bool InDemoMode() const { return parts_.demo_override || parts_.settings.DemoMode == 1; }
  /// The number of working cycles, with or without a frame.
  [[nodiscard]] std::int64_t sample_count() const { return sample_count_; }
  /// Seconds since the last complete frame, or since the start; at most 32767.
  [[nodiscard]] std::int16_t seconds_since_frame() const { return counters_.since_frame.ticks(); }

 private:
  /// Ticks of one second. Each counter stops at its limit, see TickCounter.
  struct Counters {
    TickCounter divider;
    TickCounter demo_line;
    TickCounter gust_block;
    TickCounter since_frame;
  };

  Task<> WorkingCycle();
  /// Fetches the frame of this cycle into `frame_` and returns its source.
  Task<ReadingSource> NextFrame();
  /// After demo mode: demo values say nothing about the sky.
  void WithdrawDemoVerdict();
  /// Makes the verdict unknown, and so unsafe.
  void WithdrawVerdict();
  /// Shows a notice while the averaging count is invalid.
  void CheckAveragingCount();
  /// Resets averages and gusts when this frame does not continue the earlier ones.
  void ResetAfterGap(ReadingSource source);
  /// The verdict and the relay's alert, before anything that can fail.
  void ReadSwitches();
  /// Rain, light and wind, with their alerts: every reading of these is valid.
  void ReadRainLightAndWind();
  /// The temperatures and the values derived from them.
  void Convert();
  void ShowFresh();
  /// Gives the frame to whoever judges whether it is safe.
  void Observe(bool usable);
  void StartUploads();
  void WriteLogs();
  void RaiseCounters();

  Parts parts_;
  std::vector<Listener> listeners_;
  Counters counters_;
  std::int64_t sample_count_ = 0;
  std::int64_t last_frame_tick_;             ///< TickCount of the last complete frame, or of the start
  std::uint64_t session_ = 0;                ///< the connection of `ready_since_`
  std::optional<std::int64_t> ready_since_;  ///< TickCount when the unit became ready
  bool stale_reported_ = false;
  bool last_frame_unusable_ = false;               ///< the last frame was complete but could not be converted
  std::optional<std::int64_t> fresh_again_since_;  ///< TickCount of the first frame after a reported silence
  bool any_frame_ = false;                         ///< since the start
  SensorFrame frame_;
  ReadingSource source_ = ReadingSource::kNone;  ///< of the last frame
  DemoFeed demo_;
  FrameInterpreter interpreter_;
  Job cycle_;
};

}  // namespace orvalis
