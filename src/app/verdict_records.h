#pragma once

#include <string>

#include "app/observer.h"
#include "base/clock.h"
#include "base/event_list.h"
#include "config/settings.h"
#include "logs/verdict_log.h"

namespace orvalis {

/// Remembers the changes of the verdict: in the event list and in the verdict log.
class VerdictRecords {
 public:
  struct Parts {
    const Clock& clock;
    const Settings& settings;
    EventList& events;
    VerdictLog& log;
  };
  explicit VerdictRecords(const Parts& parts) : parts_(parts) {}

  /// Call for each update of the observation.
  void Note(const Observation& now, const Observer::News& news);

 private:
  /// Writes to the folder of the full log.
  void Log(const Observation& now);

  Parts parts_;
  std::string folder_;  ///< of the open log
};

}  // namespace orvalis
