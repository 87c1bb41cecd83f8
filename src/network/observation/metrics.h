#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "config/station.h"
#include "verdict/observation.h"

namespace orvalis::network {

/// What happened since the program started.
struct MetricCounters {
  std::uint64_t connections = 0;  ///< openings of the serial port
  std::uint64_t uploads = 0;      ///< that succeeded, of readings and pictures
  std::uint64_t failed_uploads = 0;
};

/// The two notations of metrics.
enum class MetricFormat : std::uint8_t { kText, kOpenMetrics };
/// The one that a client which accepts `accept` gets.
[[nodiscard]] MetricFormat MetricFormatFor(std::string_view accept);
/// Its content type.
[[nodiscard]] std::string_view ContentType(MetricFormat format);

/// The account of now for a collector of metrics. What is unknown is left out.
[[nodiscard]] std::string MetricsText(const Observation& now, const Station& station, const MetricCounters& counters,
                                      MetricFormat format);

}  // namespace orvalis::network
