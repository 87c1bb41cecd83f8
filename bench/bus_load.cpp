// Loads and times the automation object over the session bus: one command a line on standard input, one answer a line
// on standard output.
//
//   read N      "MEDIAN P99", each in microseconds, of N reads of Safe
//   bus N       the same of N calls that the bus itself answers, for comparison
//   flood N     sends N reads without waiting for answers, then "done"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <chrono>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr const char* kName = "org.orvalis.Weather";
constexpr const char* kPath = "/org/orvalis/Weather";
constexpr std::uint64_t kPatienceMicroseconds = 120'000'000;

struct Closer {
  void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
  void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};

bool ReadSafe(sd_bus* bus) {
  int safe = 0;
  return sd_bus_get_property_trivial(bus, kName, kPath, kName, "Safe", nullptr, 'b', &safe) >= 0;
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
    sd_bus_message_new_method_call(bus, &raw, kName, kPath, "org.freedesktop.DBus.Properties", "Get");
    const std::unique_ptr<sd_bus_message, Closer> call(raw);
    sd_bus_message_append(raw, "ss", kName, "Safe");
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
  sd_bus* raw = nullptr;
  if (sd_bus_open_user(&raw) < 0) {
    std::cerr << "bus_load: there is no session bus\n";
    return 1;
  }
  const std::unique_ptr<sd_bus, Closer> bus(raw);
  sd_bus_set_method_call_timeout(raw, kPatienceMicroseconds);
  std::string command;
  while (std::getline(std::cin, command)) std::cout << Run(raw, command) << std::endl;
}
