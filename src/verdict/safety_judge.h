#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "config/settings.h"
#include "reading/sensor_frame.h"
#include "reading/weather_state.h"
#include "verdict/observation.h"

namespace orvalis {

/// A moment on both clocks.
struct Instant {
  std::int64_t tick = 0;  ///< ms of a clock that never goes back and counts sleep
  std::int64_t utc = 0;   ///< ms since 1970-01-01 UTC; for showing only, it may jump
};

/// What the verdict depends on besides the readings, at the moment of judging.
struct Situation {
  bool demo_mode = false;
  bool connected = false;         ///< the link to the unit is up
  std::uint64_t session = 0;      ///< tells one connection from another
  bool settings_pending = false;  ///< since the unit was greeted, not all settings have been sent to it
  bool settings_lost = false;     ///< nobody has acknowledged that they were restored or reset
  bool relay_forced = false;
  bool stopping = false;
  std::optional<std::chrono::milliseconds> test_left = {};  ///< of a timed test that it is unsafe
};

/// Judges whether it is safe, from undamaged readings that are of now. Its answers are `Observation`s. In doubt unsafe:
/// what a damaged frame says against safety counts, what it says for it does not.
class SafetyJudge {
 public:
  /// One complete frame.
  struct Reading {
    const SensorFrame& frame;
    const WeatherState& weather;  ///< as interpreted
    ReadingSource source;
    bool usable = true;  ///< it could be converted
  };

  /// Takes a complete frame, which arrived `now`.
  void Take(const Reading& reading, const Settings& settings, const Situation& situation, Instant now);

  /// The account of `now`. Costs no allocation. `now.tick` must not go back.
  [[nodiscard]] const Observation& Judge(const Settings& settings, const Situation& situation, Instant now);

 private:
  /// What is kept of a frame.
  struct Facts {
    WeatherState weather;
    bool relay_allowed = false;
    bool wind_alarm = false;
    bool cloud_alarm = false;
    bool light_alarm = false;
    double wind_count = 0;
    bool cloudy_now = false;  ///< by this frame alone, whatever earlier ones did to the averages
    double difference = 0;    ///< ambient minus sky, averaged or by this frame alone: the cloudier
  };
  struct Case;
  struct Rule;
  static const Rule kRules[];
  /// Two in a row, so that one flipped bit cannot say safe.
  static constexpr int kFramesForSafe = 2;

  [[nodiscard]] static Facts FactsOf(const Reading& reading, const Settings& settings);
  /// Whether the readings come from where they are expected now.
  [[nodiscard]] bool IsOfSource(const Situation& situation) const;
  /// Whether they also come from this connection, which lasts.
  [[nodiscard]] bool IsOfLine(const Situation& situation) const;
  [[nodiscard]] std::chrono::milliseconds Age(Instant now) const;
  /// Whether there is an undamaged reading of now.
  [[nodiscard]] bool IsCurrent(const Situation& situation, Instant now) const;
  [[nodiscard]] ReasonSet ReasonsNow(const Settings& settings, const Situation& situation, Instant now) const;
  /// Starts the hold anew while any reason applies.
  void NoteReasons(ReasonSet reasons, Instant now);
  [[nodiscard]] std::chrono::milliseconds HoldLeft(const Settings& settings, Instant now) const;
  void ShowReadings(const Situation& situation, Instant now);
  void ShowFigures(const Settings& settings, const Situation& situation, Instant now);
  void ShowVerdict(ReasonSet reasons, Instant now);

  std::optional<Facts> good_;     ///< of the last undamaged frame
  std::optional<Facts> damaged_;  ///< of the last damaged one since then
  std::int64_t good_tick_ = 0;
  ReadingSource source_ = ReadingSource::kNone;  ///< of both
  std::uint64_t session_ = 0;                    ///< of both
  std::optional<std::int64_t> last_rain_tick_;
  bool clear_ = false;           ///< no reason applied when last judged
  std::int64_t clear_tick_ = 0;  ///< since when
  int clear_frames_ = 0;         ///< undamaged frames in a row without any reason, up to `kFramesForSafe`
  std::int64_t since_tick_ = 0;  ///< of the verdict
  bool judged_ = false;
  Observation now_;
};

}  // namespace orvalis
