#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/alerts.h"
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

/// The program's main loop: on every second tick of the poll timer it takes one frame, turns it into the current values
/// and shows them.
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
    NumberLocale locale;
    bool demo_override = false;                ///< demo mode for this run, whatever the setting says
    std::array<UploadSchedule*, 2> uploads{};  ///< in the order in which they are started; may be none
    std::function<void()> draw{};              ///< draws the panel, before the uploads take its picture; may be none
  };
  /// Told after each working cycle that got a frame, with the frame.
  using Listener = std::function<void(const SensorFrame& frame)>;

  explicit PollCycle(const Parts& parts);

  /// One tick of the poll timer, every 1000 ms. A tick that arrives while a working cycle waits for the unit only
  /// counts.
  void Poll();

  /// Turns the panel's values grey and takes the verdict back when they are older than `kFreshFor`. `Poll` does it;
  /// who serves the verdict at any other time asks for it first, because no tick may have come for hours.
  void WatchStaleness();

  void Listen(Listener listener) { listeners_.push_back(std::move(listener)); }

  [[nodiscard]] bool InDemoMode() const { return parts_.demo_override || parts_.settings.DemoMode == 1; }
  /// How many working cycles there were, with a frame or without.
  [[nodiscard]] std::int64_t sample_count() const { return sample_count_; }
  /// Seconds since the last complete frame, or since the start; at most 32767.
  [[nodiscard]] std::int16_t seconds_since_frame() const { return counters_.since_frame.ticks(); }

 private:
  /// Counted in ticks of one second. Each stops at the limit that it is waited for, see TickCounter.
  struct Counters {
    TickCounter divider;
    TickCounter demo_line;
    TickCounter gust_block;
    TickCounter since_frame;
  };

  enum class Source { kNone, kUnit, kDemo };

  Task<> WorkingCycle();
  /// Fetches the frame of this cycle into `frame_` and tells where it comes from.
  Task<Source> NextFrame();
  /// After demo mode: what is made up says nothing about the sky.
  void TakeBackDemoVerdict();
  /// From now on nobody knows whether it is safe.
  void TakeBackVerdict();
  /// Says so for as long as the setting allows no averages.
  void WatchAveragingCount();
  /// Forgets what earlier frames left in averages and gusts when this one does not continue them.
  void BeginAnewAfterAGap(Source source);
  /// The verdict and the relay's alert, before anything that can fail.
  void ReadSwitches();
  /// Rain, light and wind, with their alerts: no reading of them is without a meaning.
  void ReadRainLightAndWind();
  /// The temperatures and what follows from them.
  void Convert();
  void ShowFresh();
  void StartUploads();
  void WriteLogs();
  void RaiseCounters();

  Parts parts_;
  std::vector<Listener> listeners_;
  Counters counters_;
  std::int64_t sample_count_ = 0;
  std::int64_t last_frame_tick_;             ///< TickCount of the last complete frame, or of the start
  std::uint64_t session_ = 0;                ///< the connection that `ready_since_` belongs to
  std::optional<std::int64_t> ready_since_;  ///< TickCount since when the unit can be asked
  bool stale_reported_ = false;
  bool frame_without_meaning_ = false;             ///< the last frame was complete and could not be converted
  std::optional<std::int64_t> fresh_again_since_;  ///< TickCount of the first frame after a silence that was reported
  bool any_frame_ = false;                         ///< since the start
  SensorFrame frame_;
  Source source_ = Source::kNone;  ///< of the last frame
  DemoFeed demo_;
  FrameInterpreter interpreter_;
  Job cycle_;
};

}  // namespace orvalis
