#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "app/alert_facts.h"
#include "base/event_list.h"
#include "base/once_until_mended.h"
#include "config/settings.h"
#include "reading/weather_state.h"

namespace orvalis {

/// Plays the alerts' sounds.
class SoundPlayer {
 public:
  virtual ~SoundPlayer() = default;
  /// Stops the current sound and plays the file at `path`, without waiting. Throws RunTimeError kFileNotFound for a
  /// missing file and kDeviceUnavailable on a machine without sound.
  virtual void Play(const std::string& path) = 0;
};

/// Starts the alerts' programs.
class ProgramStarter {
 public:
  /// `failure` is what went wrong, such as "ended with code 3"; "" when the program ended with code 0.
  using Ended = std::function<void(const std::string& failure)>;
  struct Call {
    std::string path;
    AlertFacts facts = {};  ///< for the program's environment, besides our own
    Ended ended = {};       ///< called from the event loop, never from within `Start`; may be none
  };

  virtual ~ProgramStarter() = default;
  /// Starts the program or script at `call.path`, without a shell and in its own folder. It lives on when this program
  /// ends. Throws RunTimeError kFileNotFound, kPermissionDenied or kPathFileAccess.
  virtual void Start(const Call& call) = 0;
};

/// A sound and a program for each of five conditions: once when the condition begins, or in every working cycle while
/// it holds. Only the relay's sound plays once per enabling of the alerts; its program, which may close a roof, starts
/// each time the relay switches on.
class Alerts {
 public:
  enum class Kind { kRelay, kRain, kWind, kLight, kCloud };
  static constexpr std::size_t kKinds = 5;

  Alerts(SoundPlayer& sounds, ProgramStarter& programs, EventList& events)
      : sounds_(sounds), programs_(programs), events_(events) {}

  /// Call once in each working cycle, when the condition of `kind` has been determined.
  void Check(Kind kind, const Settings& settings, const WeatherState& weather);

 private:
  struct Counter {
    std::int32_t times = 0;
    OnceUntilMended trouble;
  };
  struct Counters {
    Counter sound;
    Counter program;
  };

  SoundPlayer& sounds_;
  ProgramStarter& programs_;
  EventList& events_;
  std::array<Counters, kKinds> counters_{};
};

}  // namespace orvalis
