#include "server/observation_members.h"

#include <array>

#include "base/run_time_error.h"
#include "verdict/explanation.h"

namespace orvalis {
namespace {

// In the order of ObservationProperty.
const std::array kMembers = {
    ObservationMember{.name = "Safe", .read = [](const Observation& o) -> ObservationValue { return o.verdict.safe; }},
    ObservationMember{.name = "Since",
                      .read = [](const Observation& o) -> ObservationValue { return o.verdict.since; }},
    ObservationMember{.name = "Reasons",
                      .read = [](const Observation& o) -> ObservationValue { return NamesOf(o.verdict.reasons); }},
    ObservationMember{.name = "Explanation",
                      .steady = false,
                      .read = [](const Observation& o) -> ObservationValue { return Explain(o); }},
    ObservationMember{.name = "AgeSeconds",
                      .steady = false,
                      .read = [](const Observation& o) -> ObservationValue { return o.AgeSeconds(); }},
    ObservationMember{.name = "Source",
                      .read = [](const Observation& o) -> ObservationValue { return std::string(Name(o.source)); }},
    ObservationMember{.name = "Values",
                      .read = [](const Observation& o) -> ObservationValue { return KnownValues(o); }},
};

}  // namespace

std::span<const ObservationMember> ObservationMembers() { return kMembers; }

const ObservationMember& MemberOf(ObservationProperty property) {
  return kMembers.at(static_cast<std::size_t>(property));
}

std::vector<NamedValue> KnownValues(const Observation& now) {
  std::vector<NamedValue> known;
  for (const ObservedValue& row : ObservedValueTable()) {
    if (const auto& value = now.values.*row.member) known.push_back({row.name, *value});
  }
  return known;
}

double KnownValue(const Observation& now, std::string_view name) {
  for (const ObservedValue& row : ObservedValueTable()) {
    if (row.name != name) continue;
    if (const auto& value = now.values.*row.member) return *value;
    throw RunTimeError(RunTimeError::kTypeMismatch, std::string(name) + " is unknown");
  }
  throw RunTimeError(RunTimeError::kSubscriptOutOfRange, "there is no value " + std::string(name));
}

const Observation& ObservationReader::Look(std::string_view asked, std::string_view caller) const {
  if (traffic_ == nullptr || !traffic_->Wants(TrafficCategory::kOther)) return observer_.Now();
  std::string member = "Observation";
  if (!asked.empty()) member += "." + std::string(asked);
  const CallTimer timer(traffic_, TrafficCategory::kOther, caller, member);
  const Observation& now = observer_.Now();
  const std::string answer = now.verdict.safe ? "safe" : "unsafe (" + ReasonNames(now.verdict) + ")";
  timer.End(answer);
  traffic_->TrafficLine(member + ": " + answer);
  return now;
}

}  // namespace orvalis
