#include "app/alerts.h"

#include <exception>
#include <limits>

namespace orvalis {
namespace {

/// The inputs of one kind of alert.
struct AlertRow {
  const char* name;  ///< for a person
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

/// A failed alert is recorded in the event list, and the next one is tried again.
template <typename Give>
void Try(const AlertRow& row, const char* what, OnceUntilMended& trouble, EventList& events, Give give) {
  try {
    give();
    trouble.Mended();
  } catch (const std::exception& error) {
    const std::string failure = std::string("the ") + row.name + " " + what + ": " + error.what();
    if (trouble.IsNews(failure)) events.Record(failure);
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
    Try(row, "sound", counters.sound.trouble, events_, [&] { sounds_.Play(settings.*row.sound_file); });
  }
  if (settings.*row.program_switch == 1 && Count(counters.program.times, settings.g_bchkRepeatApp == 1)) {
    Try(row, "program", counters.program.trouble, events_, [&] { programs_.Start(settings.*row.program_file); });
  }
}

}  // namespace orvalis
