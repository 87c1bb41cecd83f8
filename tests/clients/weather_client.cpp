// A client of the automation object that stays on the bus: one command a line on standard input, one answer a line on
// standard output.
//
//   get NAME                  "NAME = VALUE" or "error NAME-OF-ERROR: TEXT"; true, false or a text
//   get Observation1.NAME     the same of the other interface
//   set NAME 0|1              "done" or an error, when the call returns

#include <systemd/sd-bus.h>

#include <iostream>
#include <memory>
#include <sstream>
#include <string>

namespace {

constexpr const char* kName = "org.orvalis.Weather";
constexpr const char* kPath = "/org/orvalis/Weather";
constexpr std::uint64_t kPatienceMicroseconds = 120'000'000;

struct Closer {
  void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
  void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};

struct Error {
  sd_bus_error error = SD_BUS_ERROR_NULL;
  ~Error() { sd_bus_error_free(&error); }
  [[nodiscard]] std::string Text() const { return std::string("error ") + error.name + ": " + error.message; }
};

std::string Get(sd_bus* bus, const std::string& name) {
  Error error;
  sd_bus_message* reply = nullptr;
  const std::string type = name == "Name" ? "s" : "b";
  const std::size_t point = name.find('.');
  const bool other = point != std::string::npos;
  const std::string interface = other ? "org.orvalis." + name.substr(0, point) : kName;
  const std::string member = other ? name.substr(point + 1) : name;
  if (sd_bus_get_property(bus, kName, kPath, interface.c_str(), member.c_str(), &error.error, &reply, type.c_str()) <
      0) {
    return error.Text();
  }
  const std::unique_ptr<sd_bus_message, Closer> owned(reply);
  union {
    int flag;
    const char* text;
  } value = {};
  sd_bus_message_read_basic(reply, type[0], &value);
  return name + " = " + (type == "s" ? value.text : value.flag != 0 ? "true" : "false");
}

std::string Set(sd_bus* bus, const std::string& name, int on) {
  Error error;
  const int result = sd_bus_set_property(bus, kName, kPath, kName, name.c_str(), &error.error, "b", on);
  return result < 0 ? error.Text() : "done";
}

}  // namespace

int main() {
  sd_bus* raw = nullptr;
  if (sd_bus_open_user(&raw) < 0) return 1;
  const std::unique_ptr<sd_bus, Closer> bus(raw);
  sd_bus_set_method_call_timeout(raw, kPatienceMicroseconds);
  std::string verb;
  std::string name;
  while (std::cin >> verb >> name) {
    int on = 0;
    if (verb == "set") std::cin >> on;
    std::cout << (verb == "set" ? Set(raw, name, on) : Get(raw, name)) << std::endl;
  }
}
