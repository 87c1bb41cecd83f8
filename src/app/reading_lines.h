#pragma once

#include <string>

#include "base/clock.h"
#include "base/event_list.h"
#include "reading/sensor_frame.h"
#include "reading/weather_state.h"
#include "verdict/observation.h"

namespace orvalis {

/// The headless program's output after one working cycle.
struct Reading {
  CivilTime time;
  const WeatherState& weather;
  const SensorFrame& frame;
  const Observation& now;
};

// One line each, without a line end. Numbers always have a decimal point; an unknown temperature is "-" in the text and
// null in JSON. docs/guide.md lists the JSON fields.

[[nodiscard]] std::string ReadingText(const Reading& reading, const TimeStyle& style);
[[nodiscard]] std::string ReadingJson(const Reading& reading);
/// A change of the verdict.
[[nodiscard]] std::string VerdictJson(const CivilTime& time, const Observation& now);
[[nodiscard]] std::string EventText(const Event& event, const TimeStyle& style);
[[nodiscard]] std::string EventJson(const Event& event);

}  // namespace orvalis
