#pragma once

#include <filesystem>

#include "base/clock.h"
#include "base/event_list.h"
#include "logs/log_files.h"

namespace orvalis {

/// In the program's folder.
inline constexpr const char* kErrorLogFile = "orvalis_errors.txt";

/// Writes every event to a file, for looking back after the night.
class ErrorLog {
 public:
  /// `events` must outlive the log. `report` is called when the file fails; it must not record an event.
  ErrorLog(EventList& events, const TimeStyle& style, LogReport report);
  ErrorLog(const ErrorLog&) = delete;
  ErrorLog& operator=(const ErrorLog&) = delete;

  /// Appends to `kErrorLogFile` in `folder`, which is created if missing.
  void Open(const std::filesystem::path& folder);

 private:
  RotatingLog file_;
};

}  // namespace orvalis
