#include "network/observation/observation_json.h"

#include <chrono>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>

#include "base/clock.h"
#include "base/text.h"
#include "verdict/explanation.h"

namespace orvalis::network {
namespace {

using Json = nlohmann::ordered_json;

Json Number(std::optional<double> value) {
  constexpr int kDecimals = 3;
  return value ? Json(RoundToDecimals(*value, kDecimals)) : Json();
}

Json Seconds(std::chrono::milliseconds time) { return Number(std::chrono::duration<double>(time).count()); }

Json Word(std::string_view word) { return word.empty() ? Json() : Json(word); }

Json Reasons(const Observation& now) {
  Json reasons = Json::array();
  now.verdict.reasons.ForEach([&](Reason reason) {
    reasons.push_back({{"name", Name(reason)}, {"text", Explain(reason, now)}});
  });
  return reasons;
}

Json Values(const ObservedValues& values) {
  Json json = Json::object();
  for (const ObservedValue& row : ObservedValueTable()) {
    // How warm the sky sensor itself is says nothing about the weather.
    if (row.member != &ObservedValues::body_c) json[std::string(row.name)] = Number(values.*row.member);
  }
  return json;
}

/// A name may have been stored as anything, and must not keep the readings from being told.
std::string Text(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

}  // namespace

std::string UtcText(std::int64_t milliseconds) { return FormatTime(TimeAt(milliseconds), "YYYY-MM-DDThh:nn:ss.zzzZ"); }

std::string ObservationJson(const Observation& now, const Station& station) {
  const ObservedWords& words = now.words;
  return Text({{"time", UtcText(now.time)},
               {"station", station.name},
               {"uuid", station.uuid},
               {"source", Name(now.source)},
               {"connected", now.connected},
               {"age_s", now.age ? Seconds(*now.age) : Json()},
               {"safe", now.verdict.safe},
               {"since", UtcText(now.verdict.since)},
               {"hold_s", Seconds(now.verdict.hold_left)},
               {"reasons", Reasons(now)},
               {"values", Values(now.values)},
               {"words",
                {{"sky", Word(words.sky)},
                 {"wind", Word(words.wind)},
                 {"rain", Word(words.rain)},
                 {"light", Word(words.light)}}},
               {"heater", Word(words.heater)},
               {"relay", Word(words.relay)}});
}

std::string RoofStatusJson(const Observation& now) {
  return Text({{"roof_status", {{"open_ok", now.verdict.safe ? 1 : 0}, {"reasons", Explain(now)}}}});
}

}  // namespace orvalis::network
