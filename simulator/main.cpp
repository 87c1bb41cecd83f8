#include <signal.h>

#include <cstdio>
#include <exception>
#include <string_view>
#include <vector>

#include "night_scenario.h"
#include "options.h"
#include "runner.h"
#include "scenario.h"
#include "stop_signals.h"

#ifndef ORVALIS_VERSION
#define ORVALIS_VERSION "0.0.0"
#endif

namespace {

constexpr int kStopped = 0;
constexpr int kFailed = 1;
constexpr int kWrongUse = 2;  // wrong command line or scenario

int Run(const orvalis_unit::Options& options) {
  using orvalis_unit::Scenario;
  if (options.shows_help) {
    std::fputs(std::string(orvalis_unit::HelpText()).c_str(), stdout);
    return kStopped;
  }
  if (options.shows_version) {
    std::puts("orvalis-unit " ORVALIS_VERSION);
    return kStopped;
  }
  Scenario scenario = options.scenario.empty() ? Scenario::Parse(orvalis_unit::NightScenario(), "night.scenario")
                                               : Scenario::Load(options.scenario);
  // The reader of standard output may exit; the line must stay.
  signal(SIGPIPE, SIG_IGN);
  const orvalis_unit::StopSignals signals;
  orvalis_unit::Runner runner(options, std::move(scenario));
  runner.Run(signals);
  return kStopped;
}

int Complain(const std::exception& error, int code) {
  std::fprintf(stderr, "orvalis-unit: %s\n", error.what());
  return code;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const std::vector<std::string_view> arguments(argv + 1, argv + argc);
    return Run(orvalis_unit::ParseOptions(arguments));
  } catch (const orvalis_unit::UsageError& error) {
    return Complain(error, kWrongUse);
  } catch (const orvalis_unit::ScenarioError& error) {
    return Complain(error, kWrongUse);
  } catch (const std::exception& error) {
    return Complain(error, kFailed);
  }
}
