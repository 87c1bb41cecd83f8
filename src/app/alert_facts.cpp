#include "app/alert_facts.h"

#include <algorithm>
#include <cctype>

#include "base/text.h"

namespace orvalis {
namespace {

/// "ambient_c" is ORVALIS_AMBIENT_C.
std::string VariableOf(std::string_view name) {
  std::string variable = "ORVALIS_" + std::string(name);
  std::ranges::transform(variable, variable.begin(), [](unsigned char c) { return std::toupper(c); });
  return variable;
}

std::string JoinedReasons(const SafetyVerdict& verdict) {
  std::string names;
  verdict.reasons.ForEach([&](Reason reason) {
    if (!names.empty()) names += ',';
    names += Name(reason);
  });
  return names;
}

}  // namespace

AlertFacts FactsOfAlert(std::string_view alert, bool test) {
  return {{"ORVALIS_ALERT", std::string(alert)}, {"ORVALIS_TEST", test ? "1" : "0"}};
}

AlertFacts FactsOfAlert(std::string_view alert, bool test, const Observation& now) {
  AlertFacts facts = FactsOfAlert(alert, test);
  const auto add = [&](std::string name, std::optional<std::string> value) {
    facts.push_back({std::move(name), std::move(value)});
  };
  add("ORVALIS_VERDICT", now.verdict.safe ? "safe" : "unsafe");
  add("ORVALIS_REASONS", JoinedReasons(now.verdict));
  add("ORVALIS_SOURCE", std::string(Name(now.source)));
  // Whole seconds, which a shell can compare.
  using std::chrono::seconds;
  add("ORVALIS_AGE_SECONDS",
      now.age ? std::optional(std::to_string(std::chrono::floor<seconds>(*now.age).count())) : std::nullopt);
  constexpr int kDecimals = 3;
  for (const ObservedValue& row : ObservedValueTable()) {
    const ObservedValues::Value& value = now.values.*row.member;
    add(VariableOf(row.name), value ? std::optional(RealToText(RoundToDecimals(*value, kDecimals))) : std::nullopt);
  }
  return facts;
}

}  // namespace orvalis
