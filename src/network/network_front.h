#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/observer.h"
#include "base/clock.h"
#include "base/event_loop.h"
#include "base/message.h"
#include "base/once_until_mended.h"
#include "config/settings.h"
#include "config/settings_store.h"
#include "config/station.h"
#include "network/alpaca/alpaca_server.h"
#include "network/alpaca/discovery.h"
#include "network/curves.h"
#include "network/http/http_server.h"
#include "network/http/resources.h"
#include "network/http/sockets.h"
#include "network/readings.h"
#include "network/served.h"
#include "server/traffic.h"
#include "verdict/observation.h"

namespace orvalis::network {

/// Serves the readings to other programs over HTTP as the settings say.
class NetworkFront {
 public:
  struct Parts {
    Sockets& sockets;
    EventLoop& loop;
    const Clock& clock;
    SettingsStore& store;
    std::function<const Observation&()> observe;     ///< the account of now
    std::function<HistoryView()> recorded;           ///< what was
    std::function<MetricCounters()> counters;        ///< what happened since the start
    std::function<void(const std::string&)> record;  ///< an event
    std::function<void(const Message&)> complain;    ///< what a person should mend; none when it is mended
    Traffic* const& traffic;                         ///< null while the traffic window is closed
  };

  explicit NetworkFront(Parts parts);
  NetworkFront(const NetworkFront&) = delete;
  NetworkFront& operator=(const NetworkFront&) = delete;
  ~NetworkFront();

  /// Serves as `settings` say, from now on. Where that is not possible it is tried again every minute.
  void Apply(const Settings& settings);
  /// Ends all connections.
  void Close();
  /// Gives the station its name and its identifiers, also where nothing is served.
  void Identify(const Settings& settings);
  /// To be called with every new account.
  void Note(const Observation& now, const Observer::News& news) {
    alpaca_.Note(now);
    readings_.Note(now, news);
  }

  /// The table of what can be asked for; further resources may be added before `Apply`.
  [[nodiscard]] Resources& resources() { return resources_; }
  [[nodiscard]] const Station& station() const { return station_; }
  /// Whether clients can connect.
  [[nodiscard]] bool open() const { return server_.open(); }
  /// Where it can be reached now, and what cannot be served.
  [[nodiscard]] Served served() const;

 private:
  /// What the settings ask for.
  struct Wanted {
    std::string address;
    std::uint16_t port = 0;
    bool discovery = false;
    std::vector<std::string> names;
    std::string allowed_origin;
  };

  [[nodiscard]] Wanted WantedBy(const Settings& settings) const;
  void Open();
  void OpenDiscovery();
  void TryAgainLater();
  /// A line in the traffic window, where that is wanted.
  void ShowRequest(const HttpRequest& request, int status, std::chrono::microseconds took) const;
  [[nodiscard]] std::string Place() const;

  Parts parts_;
  Resources resources_;
  Station station_;
  AlpacaServer alpaca_;
  Readings readings_;
  Curves curves_;
  HttpServer server_;
  std::optional<Wanted> wanted_;  ///< nothing while it is off
  std::optional<AlpacaDiscovery> discovery_;
  std::unique_ptr<DatagramListener> discovery_listener_;
  Message trouble_;  ///< that lasts
  OnceUntilMended server_trouble_;
  OnceUntilMended discovery_trouble_;
  EventLoop::TimerId minute_timer_ = 0;
};

}  // namespace orvalis::network
