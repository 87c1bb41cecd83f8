#include "network/alpaca/alpaca_device.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "base/clock.h"

namespace orvalis::network {
namespace {

/// The first two numbers of the program's version, as "1.0".
std::string DriverVersion() {
  const std::string_view version = ORVALIS_VERSION;
  return std::string(version.substr(0, version.find('.', version.find('.') + 1)));
}

}  // namespace

void AlpacaDevice::SetIdentity(std::string name, std::string unique_id) {
  identity_.name = std::move(name);
  identity_.unique_id = std::move(unique_id);
}

std::vector<AlpacaMember> AlpacaDevice::Members() {
  const auto read = [](std::string name, Json default_value, AlpacaMember::Handler handler, std::string help) {
    return AlpacaMember{std::move(name), Method::kGet, std::move(default_value), std::move(handler), std::move(help)};
  };
  const auto write = [](std::string name, Json default_value, AlpacaMember::Handler handler, std::string help) {
    return AlpacaMember{std::move(name), Method::kPut, std::move(default_value), std::move(handler), std::move(help)};
  };
  using Call = const AlpacaCall&;
  // Commands go to a device as they are: nothing from the network does here.
  const auto refuse_command = [](Call call) -> Json {
    static_cast<void>(call.Text("Command"));
    static_cast<void>(call.Boolean("Raw"));
    throw AlpacaError(AlpacaError::kNotImplemented, "The device takes no commands");
  };
  std::vector<AlpacaMember> members{
      read(
          "interfaceversion", 0, [this](Call) { return identity_.interface_version; }, "number of the interface"),
      read(
          "name", "", [this](Call) { return identity_.name; }, "what it is called"),
      read(
          "description", "", [this](Call) { return identity_.description; }, "what it is"),
      read(
          "driverinfo", "", [](Call) { return "Orvalis " ORVALIS_VERSION; }, "the program"),
      read(
          "driverversion", "", [](Call) { return DriverVersion(); }, "the program's version"),
      read(
          "connected", false, [this](Call call) { return IsConnected(call); }, "whether this client has connected"),
      write(
          "connected", {}, [this](Call call) { return SetConnected(call, call.Boolean("Connected")); },
          "connects this client, or not: Connected"),
      read(
          "connecting", false, [](Call) { return false; }, "false: connecting takes no time"),
      write(
          "connect", {}, [this](Call call) { return SetConnected(call, true); }, "connects this client"),
      write(
          "disconnect", {}, [this](Call call) { return SetConnected(call, false); }, "disconnects this client"),
      read(
          "devicestate", Json::array(), [this](Call call) { return State(call); }, "all values in one answer"),
      read(
          "supportedactions", Json::array(), [this](Call) { return Actions(); }, "names of the actions"),
      write(
          "action", "", [this](Call call) { return CallAction(call); }, "does an action: Action, Parameters"),
      write("commandblind", {}, refuse_command, "not available"),
      write("commandbool", false, refuse_command, "not available"),
      write("commandstring", "", refuse_command, "not available"),
  };
  std::ranges::move(OwnMembers(), std::back_inserter(members));
  return members;
}

Json AlpacaDevice::CallAction(const AlpacaCall& call) {
  const std::string_view wanted = call.Text("Action");
  const std::vector<std::string> actions = Actions();
  if (actions.empty()) throw AlpacaError(AlpacaError::kNotImplemented, "The device has no actions");
  const auto found =
      std::ranges::find_if(actions, [&](const std::string& name) { return SameIgnoringCase(name, wanted); });
  if (found == actions.end()) throw AlpacaError(AlpacaError::kActionNotImplemented, "The device has no such action");
  return Act(*found);
}

Json AlpacaDevice::SetConnected(const AlpacaCall& call, bool connected) {
  clients_.SetConnected(call, connected, Tick());
  return nullptr;
}

Json AlpacaDevice::StateEntry(std::string_view name, Json value) {
  return {{"Name", name}, {"Value", std::move(value)}};
}

Json AlpacaDevice::TimeEntry(std::int64_t utc_milliseconds) {
  return StateEntry("TimeStamp", FormatTime(TimeAt(utc_milliseconds), "YYYY-MM-DDThh:nn:ss.zzzZ"));
}

}  // namespace orvalis::network
