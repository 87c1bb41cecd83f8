#pragma once

#include <optional>

#include "config/profile.h"
#include "config/utility_object.h"
#include "platform/windows/automation_object.h"

namespace orvalis {

// The objects that the driver platform provides to drivers, by their ProgIDs.
inline constexpr const char* kDriverProfile = "DriverHelper.Profile";
inline constexpr const char* kDriverUtility = "DriverHelper.util";
inline constexpr const char* kDriverSerial = "DriverHelper.Serial";

/// The driver platform's profile store. It cannot write several values in one step.
class DriverProfile : public Profile {
 public:
  void SetDeviceType(std::string_view type) override { object_.Put("DeviceType", type); }
  void Register(std::string_view driver_id, std::string_view description) override {
    object_.Call("Register", {driver_id, description});
  }
  [[nodiscard]] std::string GetValue(std::string_view driver_id, std::string_view name,
                                     std::string_view subkey) override {
    return object_.Call("GetValue", {driver_id, name, subkey}).Text();
  }
  void WriteValue(std::string_view driver_id, std::string_view name, std::string_view value,
                  std::string_view subkey) override {
    object_.Call("WriteValue", {driver_id, name, value, subkey});
  }
  [[nodiscard]] std::string Location() const override { return kDriverProfile; }

 private:
  AutomationObject object_{kDriverProfile};
};

/// The driver platform's utility object.
class DriverUtility : public UtilityObject {
 public:
  void Create() override { object_.emplace(kDriverUtility); }
  void Release() noexcept override { object_.reset(); }

 private:
  std::optional<AutomationObject> object_;
};

}  // namespace orvalis
