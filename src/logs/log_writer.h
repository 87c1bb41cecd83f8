#pragma once

#include <cstdint>

#include "config/settings.h"
#include "logs/log_files.h"
#include "logs/log_lines.h"

namespace orvalis {

/// Writes both logs of the working cycle, as configured.
class LogWriter {
 public:
  static constexpr RotatingLog::Kind kFullLog{
      .name = "full log", .file_name = "Orvalis.txt", .max_bytes = 75'000'000, .old_files_kept = 5};

  explicit LogWriter(const LogReport& report) : full_(kFullLog, report), one_line_(report) {}

  /// Opens the full log in its configured folder, closing any other: at start and when the folder changes.
  void OpenFullLog(const Settings& settings);
  void CloseFullLog() { full_.Close(); }

  /// Writes the enabled logs. `tick_count` in ms is used for how long ago it rained.
  void Write(const LogEntry& entry, const Settings& settings, std::int64_t tick_count);
  /// Writes the one-line log between frames, every two seconds or, `at_once`, whenever it is called.
  void WriteBetweenFrames(const LogEntry& entry, const Settings& settings, std::int64_t tick_count, bool at_once);

 private:
  void WriteOneLine(const LogEntry& entry, const Settings& settings, std::int64_t tick_count);

  RotatingLog full_;
  OneLineLog one_line_;
  RainMemory rain_;
  std::int64_t recorded_at_ = 0;  ///< tick count of the last one-line record
};

}  // namespace orvalis
