#include "app/alerts.h"

#include <exception>
#include <limits>

namespace orvalis {
namespace {

/// The inputs of one kind of alert.
struct AlertRow {
  const char* name;  ///< for a person, and for the program
  bool (*holds)(const WeatherState& weather);
  std::int32_t Settings::*sound_switch;
  std::string Settings::*sound_file;
  std::int32_t Settings::*program_switch;
  std::string Settings::*program_file;
  /// The relay's sound is not reset when the relay releases: without repeat it plays once per enabling of the alerts.
  bool sound_latches = false;
  /// Whether the condition is known; while it is not, it neither begins nor ends.
  bool WeatherState::*known = nullptr;
};

// In the order of Alerts::Kind.
constexpr std::array<AlertRow, Alerts::kKinds> kRows{{
    {"relay", [](const WeatherState& w) { return w.relay.text == "Y"; }, &Settings::g_bchkRelaySounds,
     &Settings::g_sRelaySounds, &Settings::g_bchkRelayApp, &Settings::g_sRelayApp, true},
    {"rain", [](const WeatherState& w) { return w.raining; }, &Settings::g_bchkRainSounds, &Settings::g_sRainSounds,
     &Settings::g_bchkRainApp, &Settings::g_sRainApp},
    {"wind", [](const WeatherState& w) { return w.wind_word.text == "Windy"; }, &Settings::g_bchkWindSounds,
     &Settings::g_sWindSounds, &Settings::g_bchkWindApp, &Settings::g_sWindApp},
    {"light", [](const WeatherState& w) { return w.light_word.text == "Day"; }, &Settings::g_bchkLightSounds,
     &Settings::g_sLightSounds, &Settings::g_bchkLightApp, &Settings::g_sLightApp},
    {"cloud", [](const WeatherState& w) { return w.cloud.text == "Cloudy"; }, &Settings::g_bchkCloudSounds,
     &Settings::g_sCloudSounds, &Settings::g_bchkCloudApp, &Settings::g_sCloudApp, false, &WeatherState::ambient_known},
}};

/// Counts one occurrence. Returns whether to act on it.
bool Count(std::int32_t& counter, bool repeats) {
  if (counter < std::numeric_limits<std::int32_t>::max()) ++counter;
  return repeats || counter == 1;
}

/// One way to give an alert.
struct Means {
  const char* name;
  const char* done;
};
constexpr Means kSound{"sound", "played"};
constexpr Means kProgram{"program", "started"};

/// A failed alert is recorded in the event list, and the next one is tried again. Of alerts in every cycle, the first
/// is recorded.
template <typename Give>
void Try(const AlertRow& row, const Means& means, bool first, OnceUntilMended& trouble, EventList& events,
         const std::string& file, Give give) {
  try {
    give();
    if (trouble.Mended() || first) events.Record(std::string("alert ") + row.name + ": " + means.done + " " + file);
  } catch (const std::exception& error) {
    const std::string failure = std::string("the ") + row.name + " " + means.name + ": " + error.what();
    if (trouble.IsNews(failure)) events.Record(failure, EventLevel::kError);
  }
}

}  // namespace

void Alerts::Check(Kind kind, const Settings& settings, const WeatherState& weather) {
  const AlertRow& row = kRows[static_cast<std::size_t>(kind)];
  Counters& counters = counters_[static_cast<std::size_t>(kind)];
  if (row.known != nullptr && !(weather.*row.known)) return;
  const bool enabled = settings.g_bchkEnableSounds == 1;
  const bool holds = row.holds(weather);
  if (row.sound_latches ? !enabled : !holds) counters.sound = {};
  if (!holds || (row.sound_latches && !enabled)) counters.program = {};
  if (!enabled || !holds) return;

  if (settings.*row.sound_switch == 1 && Count(counters.sound.times, settings.g_bchkRepeatSounds == 1)) {
    const std::string& file = settings.*row.sound_file;
    Try(row, kSound, counters.sound.times == 1, counters.sound.trouble, events_, file, [&] { sounds_.Play(file); });
  }
  if (settings.*row.program_switch == 1 && Count(counters.program.times, settings.g_bchkRepeatApp == 1)) {
    const std::string& file = settings.*row.program_file;
    Try(row, kProgram, counters.program.times == 1, counters.program.trouble, events_, file,
        [&] { programs_.Start({.path = file, .facts = FactsOfAlert(row.name, false)}); });
  }
}

}  // namespace orvalis
