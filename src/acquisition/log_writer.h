#pragma once

#include <cstdint>

#include "acquisition/log_files.h"
#include "acquisition/log_lines.h"
#include "base/event_list.h"
#include "config/settings.h"

namespace orvalis {

/// Both logs of the working cycle, as the settings say.
class LogWriter {
 public:
  explicit LogWriter(EventList& events) : full_(events), one_line_(events) {}

  /// Opens the full log in the folder of the settings, closing another one: at start and when the folder changes.
  void OpenFullLog(const Settings& settings);
  void CloseFullLog() { full_.Close(); }

  /// Writes what is enabled. `tick_count` in ms tells how long ago it rained.
  void Write(const LogEntry& entry, const Settings& settings, std::int64_t tick_count);

 private:
  FullLog full_;
  OneLineLog one_line_;
  RainMemory rain_;
};

}  // namespace orvalis
