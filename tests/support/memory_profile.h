#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "base/run_time_error.h"
#include "config/profile.h"

namespace orvalis::test {

/// A profile store in memory that writes down what is written to it.
class MemoryProfile : public Profile {
 public:
  void SetDeviceType(std::string_view type) override { log.push_back("type " + std::string(type)); }
  void Register(std::string_view id, std::string_view description) override {
    log.push_back("register " + std::string(id) + " " + std::string(description));
  }
  std::string GetValue(std::string_view /*id*/, std::string_view name, std::string_view subkey) override {
    const auto found = values.find({std::string(subkey), std::string(name)});
    return found == values.end() ? "" : found->second;
  }
  void WriteValue(std::string_view /*id*/, std::string_view name, std::string_view value,
                  std::string_view subkey) override {
    if (fails) throw RunTimeError(RunTimeError::kPathFileAccess, "cannot write the settings to memory: full");
    log.push_back("write " + std::string(subkey) + "/" + std::string(name));
    values[{std::string(subkey), std::string(name)}] = value;
  }
  [[nodiscard]] std::string Location() const override { return "memory"; }

  [[nodiscard]] std::string At(const std::string& name, const std::string& subkey = "") {
    return values[{subkey, name}];
  }

  /// What was written down since it was taken last.
  [[nodiscard]] std::vector<std::string> TakeLog() { return std::exchange(log, {}); }

  std::map<std::pair<std::string, std::string>, std::string> values;
  std::vector<std::string> log;
  bool fails = false;
};

}  // namespace orvalis::test
