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

// Puts the unit on a line and keeps it there: one loop, asleep whenever nothing is due.
class Runner {
 public:
  // Makes the line and the link, and prints the line's path. Throws std::exception.
  Runner(const Options& options, Scenario scenario);

  // Returns at a signal or at "quit". Throws std::exception when the line fails, or cannot be made again after it was
  // taken away.
  void Run(const StopSignals& signals);

 private:
  Time Now() const { return std::chrono::steady_clock::now() - start_; }

  // Sleeps until something has come, is due, or a signal has arrived; takes what has come.
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
  Time back_at_{};  // while there is no line: when it comes back
  Time next_sample_{};
  bool reads_commands_;
  std::string typed_;  // of standard input, not yet a whole line
  bool quit_ = false;
};

}  // namespace orvalis_unit
