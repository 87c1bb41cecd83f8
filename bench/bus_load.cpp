// Loads and times the automation object over the session bus: one command a line on standard input, one answer a line
// on standard output.
//
//   read N      "MEDIAN P99", each in microseconds, of N reads of Safe
//   bus N       the same of N calls that the bus itself answers, for comparison
//   flood N     sends N reads without waiting for answers, then "done"

#include <algorithm>
#include <chrono>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/session_bus.h"

namespace {

using orvalis::test::kBusName;
using orvalis::test::kBusPath;

bool ReadSafe(sd_bus* bus) {
  int safe = 0;
  return sd_bus_get_property_trivial(bus, kBusName, kBusPath, kBusName, "Safe", nullptr, 'b', &safe) >= 0;
}

bool AskBus(sd_bus* bus) {
  constexpr const char* kBus = "org.freedesktop.DBus";
  return sd_bus_call_method(bus, kBus, "/org/freedesktop/DBus", kBus, "GetId", nullptr, nullptr, "") >= 0;
}

std::string Measure(sd_bus* bus, int count, bool (*ask)(sd_bus*)) {
  std::vector<double> times;
  for (int i = 0; i < count; ++i) {
    const auto begin = std::chrono::steady_clock::now();
    if (!ask(bus)) return "error: no answer";
    times.push_back(std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - begin).count());
  }
  std::sort(times.begin(), times.end());
  std::ostringstream text;
  text << times[times.size() / 2] << ' ' << times[times.size() * 99 / 100];
  return text.str();
}

std::string Flood(sd_bus* bus, int count) {
  for (int i = 0; i < count; ++i) {
    sd_bus_message* raw = nullptr;
    sd_bus_message_new_method_call(bus, &raw, kBusName, kBusPath, "org.freedesktop.DBus.Properties", "Get");
    const orvalis::test::BusMessage call(raw);
    sd_bus_message_append(raw, "ss", kBusName, "Safe");
    sd_bus_message_set_expect_reply(raw, 0);
    if (sd_bus_send(bus, raw, nullptr) < 0) return "error: the bus takes no more";
    constexpr int kFlushEach = 100;
    if (i % kFlushEach == 0) sd_bus_flush(bus);
  }
  sd_bus_flush(bus);
  return "done";
}

std::string Run(sd_bus* bus, const std::string& command) {
  std::istringstream words(command);
  std::string verb;
  int count = 0;
  words >> verb >> count;
  if (count < 1) return "error: how many?";
  if (verb == "read") return Measure(bus, count, ReadSafe);
  if (verb == "bus") return Measure(bus, count, AskBus);
  if (verb == "flood") return Flood(bus, count);
  return "error: unknown command";
}

}  // namespace

int main() {
  const auto bus = orvalis::test::OpenSessionBus();
  if (!bus) {
    std::cerr << "bus_load: there is no session bus\n";
    return 1;
  }
  std::string command;
  while (std::getline(std::cin, command)) std::cout << Run(bus.get(), command) << std::endl;
}
