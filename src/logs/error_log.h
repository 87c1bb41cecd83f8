#pragma once

#include <filesystem>

#include "base/event_list.h"
#include "logs/log_files.h"

namespace orvalis {

/// Every event, in a file: what happened, for whoever comes to look after the night.
class ErrorLog {
 public:
  /// `events` must outlive the log. `report` is told what is wrong with the file; it must not record an event.
  ErrorLog(EventList& events, LogReport report);
  ErrorLog(const ErrorLog&) = delete;
  ErrorLog& operator=(const ErrorLog&) = delete;

  /// Appends to `orvalis_errors.txt` in `folder`, which is made where it is missing.
  void Open(const std::filesystem::path& folder);

 private:
  RotatingLog file_;
};

}  // namespace orvalis
