#include "app/assistant_choices.h"

#include <array>
#include <string_view>
#include <utility>

namespace orvalis {
namespace {

/// The settings that the assistant asks for.
constexpr std::array<std::string_view, 10> kKeys{"Centigrade",    "WindUnit",       "VerdictRain", "VerdictWind",
                                                 "VerdictClouds", "VerdictLight",   "DemoMode",    "AutoConnect",
                                                 "AlwaysOnTop",   "Network/Enabled"};

}  // namespace

AssistantChoices::AssistantChoices(SettingsStore& store, Settings& settings)
    : chosen(settings),
      store_(store),
      settings_(settings),
      first_start_(settings.Assistant == 1),
      seen_(settings),
      seen_port_(store.Get(*FindSettingKey(kPortKey))) {
  port = seen_port_;
}

void AssistantChoices::Propose(const DisplayUnits& units) {
  chosen.Centigrade = units.centigrade;
  chosen.WindUnit = static_cast<std::int32_t>(units.wind);
  chosen.AutoConnect = 1;
  chosen.AlwaysOnTop = false;
}

bool AssistantChoices::Follow() {
  bool changed = false;
  for (const std::string_view name : kKeys) {
    const SettingKey& key = *FindSettingKey(name);
    const std::string now = ToText(key, settings_, store_.locale());
    if (now == ToText(key, seen_, store_.locale())) continue;
    SetFromText(key, now, store_.locale(), seen_);
    SetFromText(key, now, store_.locale(), chosen);
    changed = true;
  }
  const std::string port_now = store_.Get(*FindSettingKey(kPortKey));
  const std::string before = std::exchange(seen_port_, port_now);
  // The default is written by whoever needs a port where none was chosen, such as a link that was lost.
  if (port_now == before || (before.empty() && port_now == kDefaultPort)) return changed;
  port = port_now;
  return true;
}

void AssistantChoices::Store() {
  Settings changed = settings_;
  // Connecting at every start needs a port that somebody has chosen.
  if (port.empty() || chosen.DemoMode == 1) chosen.AutoConnect = changed.AutoConnect;
  Profile::Batch batch(store_.profile());
  for (const std::string_view name : kKeys) {
    const SettingKey& key = *FindSettingKey(name);
    SetFromText(key, ToText(key, chosen, store_.locale()), store_.locale(), changed);
    store_.Write(name, changed);
  }
  changed.Assistant = 0;
  if (!port.empty()) store_.WriteText(kPortKey, port);
  store_.Write(kAssistantKey, changed);
  batch.Commit();
  settings_ = changed;
  seen_ = changed;
}

void AssistantChoices::Skip() {
  if (settings_.Assistant == 0) return;
  Settings changed = settings_;
  changed.Assistant = 0;
  store_.Write(kAssistantKey, changed);
  settings_ = changed;
}

}  // namespace orvalis
