#include "config/station.h"

#include <array>
#include <cstdint>
#include <random>
#include <string_view>
#include <vector>

namespace orvalis {
namespace {

struct Identifier {
  std::string_view key;
  std::string Station::*member;
};
constexpr std::array<Identifier, 3> kIdentifiers{{
    {"Network/Uuid", &Station::uuid},
    {"Network/ObservingConditionsUuid", &Station::observing_conditions_id},
    {"Network/SafetyMonitorUuid", &Station::safety_monitor_id},
}};

}  // namespace

std::string MakeUuid() {
  // Where each digit comes from: x is random, y has the two bits that say which kind of UUID it is.
  constexpr std::string_view kPattern = "xxxxxxxx-xxxx-4xxx-yxxx-xxxxxxxxxxxx";
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::random_device random;
  std::uniform_int_distribution<unsigned> digit(0, 15);
  std::string uuid(kPattern);
  for (char& c : uuid) {
    if (c == 'x') c = kDigits[digit(random)];
    if (c == 'y') c = kDigits[8 + digit(random) % 4];
  }
  return uuid;
}

void LoadIdentifiers(SettingsStore& store, Station& station) {
  std::vector<Identifier> missing;
  for (const Identifier& identifier : kIdentifiers) {
    std::string& id = station.*identifier.member;
    if (id.empty()) id = store.Get(*FindSettingKey(identifier.key));
    if (!id.empty()) continue;
    id = MakeUuid();
    missing.push_back(identifier);
  }
  if (missing.empty()) return;
  Profile::Batch batch(store.profile());
  for (const Identifier& identifier : missing) store.WriteText(identifier.key, station.*identifier.member);
  batch.Commit();
}

}  // namespace orvalis
