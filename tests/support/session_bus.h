#pragma once

#include <systemd/sd-bus.h>

#include <cstdint>
#include <memory>

namespace orvalis::test {

constexpr const char* kBusName = "org.orvalis.Weather";
constexpr const char* kBusPath = "/org/orvalis/Weather";

struct BusCloser {
  void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
  void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using SessionBus = std::unique_ptr<sd_bus, BusCloser>;
using BusMessage = std::unique_ptr<sd_bus_message, BusCloser>;

/// The session bus, whose calls wait two minutes; none where there is no bus.
inline SessionBus OpenSessionBus() {
  constexpr std::uint64_t kPatienceMicroseconds = 120'000'000;
  sd_bus* bus = nullptr;
  if (sd_bus_open_user(&bus) < 0) return nullptr;
  sd_bus_set_method_call_timeout(bus, kPatienceMicroseconds);
  return SessionBus(bus);
}

}  // namespace orvalis::test
