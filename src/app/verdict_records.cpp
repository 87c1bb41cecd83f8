#include "app/verdict_records.h"

#include "base/path.h"
#include "verdict/explanation.h"

namespace orvalis {

void VerdictRecords::Note(const Observation& now, const Observer::News& news) {
  if (news.reasons && parts_.settings.VerdictLog != 0) Log(now);
  // A reason that comes and goes while it stays unsafe is an event once: a gusty night must not push out the others.
  if (!news.verdict && news.new_reasons.empty()) return;
  parts_.events.Record(now.verdict.safe ? "SAFE" : "UNSAFE (" + ReasonNames(now.verdict) + "): " + Explain(now),
                       now.verdict.safe ? EventLevel::kNotice : EventLevel::kWarning);
}

void VerdictRecords::Log(const Observation& now) {
  if (folder_ != parts_.settings.g_sFullLogPath) {
    folder_ = parts_.settings.g_sFullLogPath;
    parts_.log.Open(PathFromText(folder_));
  }
  parts_.log.Write(parts_.clock.LocalNow(), now);
}

}  // namespace orvalis
