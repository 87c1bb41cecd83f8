#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "options.h"
#include "path_link.h"
#include "pty_line.h"
#include "recorder.h"
#include "scenario.h"
#include "sensor_unit.h"
#include "stop_signals.h"

namespace orvalis_unit {

// Runs the unit on a line: one loop, asleep whenever nothing is due.
class Runner {
 public:
  // Creates the line and the link, and prints the line's path. Throws std::exception.
  Runner(const Options& options, Scenario scenario);

  // Returns after a signal or "quit". Throws std::exception when the line fails, or cannot be created again after a
  // drop.
  void Run(const StopSignals& signals);

 private:
  Time Now() const { return std::chrono::steady_clock::now() - start_; }

  // Sleeps until there is input, something is due, or a signal arrives; reads the input.
  void Wait(const StopSignals& signals);
  Time WaitingTime() const;

  void BringUp();
  void TakeDown(double seconds);
  void ReceiveData();
  void SendDue();
  void ReadCommands();
  void RunCommand(std::string_view line);

  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
  std::string link_path_;
  Recorder recorder_;
  SensorUnit unit_;
  std::optional<PtyLine> line_;
  std::optional<PathLink> link_;
  Time back_at_{};  // when a dropped line comes back
  Time next_sample_{};
  bool reads_commands_;
  std::string typed_;  // incomplete line of standard input
  bool quit_ = false;
};

}  // namespace orvalis_unit
