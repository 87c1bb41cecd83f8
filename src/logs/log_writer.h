#pragma once

#include <cstdint>

#include "config/settings.h"
#include "logs/log_files.h"
#include "logs/log_lines.h"

namespace orvalis {

/// Both logs of the working cycle, as the settings say.
class LogWriter {
 public:
  static constexpr RotatingLog::Kind kFullLog{
      .name = "full log", .file_name = "Orvalis.txt", .max_bytes = 75'000'000, .former_kept = 5};

  explicit LogWriter(const LogReport& report) : full_(kFullLog, report), one_line_(report) {}

  /// Opens the full log in the folder of the settings, closing another one: at start and when the folder changes.
  void OpenFullLog(const Settings& settings);
  void CloseFullLog() { full_.Close(); }

  /// Writes what is enabled. `tick_count` in ms tells how long ago it rained.
  void Write(const LogEntry& entry, const Settings& settings, std::int64_t tick_count);
  /// The verdict of the last record does not hold any more: `entry` takes its place where only the latest one is kept.
  void TakeBack(const LogEntry& entry, const Settings& settings);

 private:
  void WriteOneLine(const LogEntry& entry, const Settings& settings);

  RotatingLog full_;
  OneLineLog one_line_;
  RainMemory rain_;
};

}  // namespace orvalis
