// A client of the automation object that stays on the bus: one command a line on standard input, one answer a line on
// standard output.
//
//   get NAME                  "NAME = true" or "NAME = false", or "error NAME-OF-ERROR: TEXT"
//   get Observation1.NAME     the same of the other interface
//   set NAME 0|1              "done" or an error, when the call returns

#include <iostream>
#include <string>

#include "tests/support/session_bus.h"

namespace {

using orvalis::test::kBusName;
using orvalis::test::kBusPath;

struct Error {
  sd_bus_error error{};
  ~Error() { sd_bus_error_free(&error); }
  [[nodiscard]] std::string Text() const { return std::string("error ") + error.name + ": " + error.message; }
};

std::string Get(sd_bus* bus, const std::string& name) {
  Error error;
  const std::size_t point = name.find('.');
  const bool other = point != std::string::npos;
  const std::string interface = other ? "org.orvalis." + name.substr(0, point) : kBusName;
  int on = 0;
  const int result = sd_bus_get_property_trivial(bus, kBusName, kBusPath, interface.c_str(),
                                                 name.c_str() + (other ? point + 1 : 0), &error.error, 'b', &on);
  return result < 0 ? error.Text() : name + (on != 0 ? " = true" : " = false");
}

std::string Set(sd_bus* bus, const std::string& name, int on) {
  Error error;
  const int result = sd_bus_set_property(bus, kBusName, kBusPath, kBusName, name.c_str(), &error.error, "b", on);
  return result < 0 ? error.Text() : "done";
}

}  // namespace

int main() {
  const auto bus = orvalis::test::OpenSessionBus();
  if (!bus) return 1;
  std::string verb;
  std::string name;
  while (std::cin >> verb >> name) {
    int on = 0;
    if (verb == "set") std::cin >> on;
    std::cout << (verb == "set" ? Set(bus.get(), name, on) : Get(bus.get(), name)) << std::endl;
  }
}
