#include "logs/error_log.h"

#include <system_error>
#include <utility>

namespace orvalis {
ErrorLog::ErrorLog(EventList& events, const TimeStyle& style, LogReport report)
    : file_({.name = "error log", .file_name = kErrorLogFile, .max_bytes = 1'000'000, .old_files_kept = 2},
            std::move(report)) {
  events.Listen([this, style](const Event& event) {
    file_.Write(style.date(event.time) + " " + style.time(event.time) + "  " + event.text);
  });
}

void ErrorLog::Open(const std::filesystem::path& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);  // a failure shows up when the log is opened
  file_.Open(folder);
}

}  // namespace orvalis
