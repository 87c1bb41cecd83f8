#include "config/store_rules.h"

#include <algorithm>

#include "base/run_time_error.h"
#include "config/settings_table.h"

namespace orvalis {
namespace {

/// The start repairs this one itself.
bool MayBeMissing(const SettingKey& key) { return !key.default_text || key.name == "AutoConnect"; }

std::string Fault(const ProfileValues& values) {
  if (values.empty()) return "is empty";
  // Left by a loss without a good copy; the defaults follow next.
  if (values.size() == 1 && values.contains(std::string(kLossNoticeKey))) return "";
  const auto stamp = values.find(std::string(kLayoutKey));
  if (stamp == values.end() || stamp->second.empty()) return "has no version stamp";
  if (stamp->second != kLayoutVersion) return "";  // another version, which is reset
  for (const SettingKey& key : SettingKeys()) {
    if (!MayBeMissing(key) && !values.contains(PathOf(key))) return "is missing \"" + std::string(key.name) + '"';
  }
  return "";
}

bool IsGood(const ProfileValues& values, NumberLocale locale) {
  const auto stamp = values.find(std::string(kLayoutKey));
  if (stamp == values.end() || stamp->second != kLayoutVersion || !Fault(values).empty()) return false;
  return std::ranges::all_of(SettingKeys(), [&](const SettingKey& key) {
    const auto found = values.find(PathOf(key));
    if (found == values.end() || key.when_unreadable) return true;
    if (!key.default_text && found->second.empty()) return true;
    try {
      CheckText(key, found->second, locale);
      return true;
    } catch (const RunTimeError&) {
      return false;
    }
  });
}

}  // namespace

StoreRules RulesForSettings(NumberLocale locale) {
  return {.fault = Fault,
          .good = [locale](const ProfileValues& values) { return IsGood(values, locale); },
          .notice_key = kLossNoticeKey};
}

std::string LossNotice(const StoreLoss& loss) {
  // What to do comes first: the panel shows only the first lines.
  std::string text =
      loss.copy_of.empty()
          ? std::string("The settings were destroyed, and there was no good copy: all are at their defaults. Set")
          : "The settings were destroyed. The copy of " + loss.copy_of + " was restored. Check";
  text += " them, then acknowledge. " + loss.location + " " + loss.fault;
  if (!loss.kept_as.empty()) text += "; the damaged one is kept beside it as " + loss.kept_as;
  return text + ".";
}

}  // namespace orvalis
