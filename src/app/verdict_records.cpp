#include "app/verdict_records.h"

#include "verdict/explanation.h"

namespace orvalis {

void VerdictRecords::Note(const Observation& now, const Observer::News& news) {
  if (news.reasons && parts_.settings.VerdictLog != 0) parts_.log.Write(parts_.clock.LocalNow(), now);
  // A reason that comes and goes while it stays unsafe is an event once: a gusty night must not push out the others.
  if (!news.verdict && news.new_reasons.empty()) return;
  parts_.events.Record(now.verdict.safe ? "SAFE" : "UNSAFE (" + ReasonNames(now.verdict) + "): " + Explain(now));
}

}  // namespace orvalis
