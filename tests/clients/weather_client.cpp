// A client of the automation object that stays on the bus: one command a line on standard input, one answer a line on
// standard output.
//
//   get NAME          "NAME = VALUE" or "error NAME-OF-ERROR: TEXT"
//   set NAME 0|1      "done" or an error, when the call returns
//   call NAME         the same
//   measure NAME N    "MEDIAN P99", each in microseconds, of N reads
//   measure-bus - N   the same of N calls that the bus itself answers, for comparison
//   flood NAME N      sends N reads without waiting for answers, then "done"

#include <systemd/sd-bus.h>

#include <algorithm>
#include <chrono>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr const char* kService = "org.orvalis.Weather";
constexpr const char* kPath = "/org/orvalis/Weather";
constexpr const char* kInterface = "org.orvalis.Weather";
constexpr std::uint64_t kPatienceMicroseconds = 120'000'000;

struct Closer {
  void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
  void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using Bus = std::unique_ptr<sd_bus, Closer>;
using Message = std::unique_ptr<sd_bus_message, Closer>;

struct Error {
  sd_bus_error error = SD_BUS_ERROR_NULL;
  ~Error() { sd_bus_error_free(&error); }
  [[nodiscard]] std::string Text() const { return std::string("error ") + error.name + ": " + error.message; }
};

std::string ValueText(sd_bus_message* reply) {
  const char* contents = nullptr;
  char type = 0;
  if (sd_bus_message_peek_type(reply, &type, &contents) < 0) return "?";
  std::ostringstream text;
  text.precision(17);
  union {
    int number;
    double real;
    const char* string;
  } value = {};
  sd_bus_message_read_basic(reply, type, &value);
  switch (type) {
    case 'b':
      text << (value.number != 0 ? "true" : "false");
      break;
    case 'd':
      text << value.real;
      break;
    case 's':
      text << value.string;
      break;
    default:
      text << value.number;
  }
  return text.str();
}

class Client {
 public:
  explicit Client(sd_bus* bus) : bus_(bus) { sd_bus_set_method_call_timeout(bus_, kPatienceMicroseconds); }

  std::string Run(const std::string& command) {
    std::istringstream words(command);
    std::string verb;
    std::string name;
    int number = 0;
    words >> verb >> name >> number;
    if (verb == "get") return Get(name);
    if (verb == "set") return Set(name, number);
    if (verb == "call") return Call(name);
    if (verb == "measure") return Measure(number, [&] { return Get(name); });
    if (verb == "measure-bus") return Measure(number, [&] { return AskBus(); });
    if (verb == "flood") return Flood(name, number);
    return "unknown command";
  }

 private:
  std::string Get(const std::string& name) {
    Error error;
    sd_bus_message* reply = nullptr;
    const char* type = PropertyType(name);
    if (sd_bus_get_property(bus_, kService, kPath, kInterface, name.c_str(), &error.error, &reply, type) < 0) {
      return error.Text();
    }
    const Message owned(reply);
    return name + " = " + ValueText(reply);
  }

  std::string Set(const std::string& name, int on) {
    Error error;
    if (sd_bus_set_property(bus_, kService, kPath, kInterface, name.c_str(), &error.error, "b", on) < 0) {
      return error.Text();
    }
    return "done";
  }

  std::string Call(const std::string& name) {
    Error error;
    if (sd_bus_call_method(bus_, kService, kPath, kInterface, name.c_str(), &error.error, nullptr, "") < 0) {
      return error.Text();
    }
    return "done";
  }

  std::string AskBus() {
    Error error;
    constexpr const char* kBus = "org.freedesktop.DBus";
    if (sd_bus_call_method(bus_, kBus, "/org/freedesktop/DBus", kBus, "GetId", &error.error, nullptr, "") < 0) {
      return error.Text();
    }
    return "done";
  }

  template <typename Ask>
  std::string Measure(int count, Ask ask) {
    std::vector<double> times;
    for (int i = 0; i < count; ++i) {
      const auto begin = std::chrono::steady_clock::now();
      if (const std::string answer = ask(); answer.starts_with("error")) return answer;
      times.push_back(std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - begin).count());
    }
    std::sort(times.begin(), times.end());
    std::ostringstream text;
    text << times[times.size() / 2] << ' ' << times[times.size() * 99 / 100];
    return text.str();
  }

  std::string Flood(const std::string& name, int count) {
    for (int i = 0; i < count; ++i) {
      sd_bus_message* raw = nullptr;
      sd_bus_message_new_method_call(bus_, &raw, kService, kPath, "org.freedesktop.DBus.Properties", "Get");
      const Message call(raw);
      sd_bus_message_append(raw, "ss", kInterface, name.c_str());
      sd_bus_message_set_expect_reply(raw, 0);
      if (sd_bus_send(bus_, raw, nullptr) < 0) return "error: the bus takes no more";
      constexpr int kFlushEach = 100;
      if (i % kFlushEach == 0) sd_bus_flush(bus_);
    }
    sd_bus_flush(bus_);
    return "done";
  }

  static const char* PropertyType(const std::string& name) {
    for (const char* boolean : {"Safe", "Precipitation", "Connected"}) {
      if (name == boolean) return "b";
    }
    return name == "Name" ? "s" : name == "WindSpeedCloseD" ? "i" : "d";
  }

  sd_bus* bus_;
};

}  // namespace

int main() {
  sd_bus* raw = nullptr;
  if (sd_bus_open_user(&raw) < 0) {
    std::cerr << "weather_client: there is no session bus\n";
    return 1;
  }
  const Bus bus(raw);
  Client client(raw);
  std::string command;
  while (std::getline(std::cin, command)) std::cout << client.Run(command) << std::endl;
}
