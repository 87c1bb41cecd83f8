#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "app/observer.h"
#include "config/station.h"
#include "network/http/event_channel.h"
#include "network/http/resources.h"
#include "verdict/observation.h"

namespace orvalis::network {

/// The account of now as JSON, in one line: what `/observation`, its stream and others who send it say.
[[nodiscard]] std::string ObservationJson(const Observation& now, const Station& station);
/// Whether the roof may open, in the form in which weather proxies read it.
[[nodiscard]] std::string RoofStatusJson(const Observation& now);

/// What happened since the program started, besides the frames.
struct MetricCounters {
  std::uint64_t connections = 0;  ///< openings of the serial port
  std::uint64_t uploads = 0;      ///< of readings and pictures, that succeeded
  std::uint64_t failed_uploads = 0;
};

enum class MetricsFormat : std::uint8_t { kPlain, kOpenMetrics };
/// The account of now for a program that collects figures. What is unknown is left out.
[[nodiscard]] std::string Metrics(const Observation& now, const Station& station, const MetricCounters& counters,
                                  MetricsFormat format);

/// The resources with the readings of now.
class Readings {
 public:
  struct Parts {
    std::function<const Observation&()> observe;  ///< the account of now
    std::function<std::int64_t()> tick;           ///< milliseconds since the system started
    const Station& station;
    std::function<MetricCounters()> counters;
  };

  explicit Readings(Parts parts) : parts_(std::move(parts)) {}
  Readings(const Readings&) = delete;
  Readings& operator=(const Readings&) = delete;

  /// Adds all resources; they use this object.
  void AddTo(Resources& resources);
  /// Sends the account to the readers of the stream when there is news, and now and then when there is none, which
  /// shows them that the program is alive.
  void Note(const Observation& now, const Observer::News& news);

 private:
  Parts parts_;
  EventChannel stream_;
  std::int64_t last_sent_ = 0;
};

}  // namespace orvalis::network
