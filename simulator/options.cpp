#include "options.h"

#include <charconv>

namespace orvalis_unit {
namespace {

// A year of weather in five minutes; at higher speeds a frame would miss most of it.
constexpr double kHighestSpeed = 100000.0;

double SpeedOf(std::string_view text) {
  const auto speed = ParseNumber(text);
  if (!speed || *speed <= 0.0 || *speed > kHighestSpeed) {
    throw UsageError("--speed takes a number above 0 and up to " + NumberText(kHighestSpeed) + ", not " + Quoted(text));
  }
  return *speed;
}

std::uint32_t SeedOf(std::string_view text) {
  std::uint32_t seed = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seed);
  if (error != std::errc() || end != text.data() + text.size()) {
    throw UsageError("--seed takes a whole number from 0 to 4294967295, not " + Quoted(text));
  }
  return seed;
}

double SecondsOf(std::string_view option, std::string_view text) {
  const auto seconds = ParseSeconds(text);
  if (!seconds) throw UsageError(std::string(option) + " takes a number of seconds, not " + Quoted(text));
  return *seconds;
}

FaultRule FaultOf(std::string_view text) {
  try {
    return ParseFaultRule(text);
  } catch (const std::invalid_argument& error) {
    throw UsageError(std::string("--fault: ") + error.what());
  }
}

std::string FileOf(std::string_view option, std::string_view text) {
  if (text.empty()) throw UsageError(std::string(option) + " takes a path");
  return std::string(text);
}

}  // namespace

Options ParseOptions(std::span<const std::string_view> arguments) {
  Options options;
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string_view option = arguments[i];
    const auto value = [&]() {
      if (i + 1 == arguments.size()) throw UsageError(std::string(option) + " needs a value");
      return arguments[++i];
    };
    if (option == "--link") {
      options.link = FileOf(option, value());
    } else if (option == "--scenario") {
      options.scenario = FileOf(option, value());
    } else if (option == "--record") {
      options.record = FileOf(option, value());
    } else if (option == "--fault") {
      options.unit.faults.push_back(FaultOf(value()));
    } else if (option == "--delay") {
      options.unit.delay = SecondsOf(option, value());
    } else if (option == "--bursts") {
      options.unit.bursts = SecondsOf(option, value());
    } else if (option == "--speed") {
      options.unit.speed = SpeedOf(value());
    } else if (option == "--seed") {
      options.unit.seed = SeedOf(value());
    } else if (option == "--fast") {
      options.unit.is_fast = true;
    } else if (option == "--commands") {
      options.reads_commands = true;
    } else if (option == "--help") {
      options.shows_help = true;
      return options;
    } else if (option == "--version") {
      options.shows_version = true;
      return options;
    } else {
      throw UsageError("unknown option " + Quoted(option));
    }
  }
  return options;
}

std::string_view HelpText() {
  return R"(orvalis-unit: a weather sensor unit in software, on a pseudo terminal.

It prints the path of its serial line and answers there until it is stopped.

  --link PATH       make PATH a symbolic link to the line while it exists
  --scenario FILE   the weather to play, repeatedly; default: a night
  --speed FACTOR    play the weather and the unit's clock this many times as fast
  --fast            do not pace the bytes at 9600 bit/s
  --fault KIND[=NUMBER][:PROBABILITY[:SECONDS]]
                    make answers go wrong; may be repeated. KIND is one of
                    silent wrong-answer short cut garbage slow late drop names digits noise
  --delay SECONDS   delay every answer by this long
  --bursts SECONDS  deliver gathered answers only once per interval
  --seed N          random seed of the faults; default 1
  --record FILE     record what happens on the line
  --commands        read commands from standard input: set FIELD VALUE, release FIELD,
                    fault KIND[=NUMBER] [SECONDS], fault none, drop SECONDS, time H:MM:SS,
                    delay SECONDS, bursts SECONDS, stall SECONDS (nothing leaves the
                    line, then everything at once), power SECONDS (the unit is off for that
                    long and forgets its settings), quit
  --help            print this
  --version         print the version
)";
}

}  // namespace orvalis_unit
