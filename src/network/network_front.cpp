#include "network/network_front.h"

#include <utility>

#include "base/run_time_error.h"
#include "network/page/page_files.h"

namespace orvalis::network {
namespace {

constexpr std::chrono::milliseconds kTryAgain{60'000};

bool IsLoopback(const std::string& address) { return address.starts_with("127.") || address == "::1"; }

/// `text` as a header field takes it: bytes beyond ASCII and control characters as "%C3".
std::string FieldValue(const std::string& text) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string value;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x20 && byte < 0x7F && byte != '%') {
      value += c;
    } else {
      value.append({'%', kDigits[byte / 16], kDigits[byte % 16]});
    }
  }
  return value;
}

}  // namespace

NetworkFront::NetworkFront(Parts parts)
    : parts_(std::move(parts)),
      alpaca_({.observe = parts_.observe, .tick = [this] { return parts_.loop.TickCount(); }}),
      readings_({.observe = parts_.observe,
                 .tick = [this] { return parts_.loop.TickCount(); },
                 .station = station_,
                 .counters = parts_.counters}),
      curves_({.observe = parts_.observe,
               .tick = [this] { return parts_.loop.TickCount(); },
               .recorded = parts_.recorded,
               .station = station_}),
      server_({.sockets = parts_.sockets,
               .loop = parts_.loop,
               .clock = parts_.clock,
               .resources = resources_,
               .report = parts_.record}) {
  alpaca_.AddTo(resources_);
  readings_.AddTo(resources_);
  curves_.AddTo(resources_);
  AddPage(resources_);
  resources_.Add({.path = "/help",
                  .get = [this](const HttpRequest&) -> HttpResponse { return {.body = resources_.Help()}; },
                  .help = "this list"});
}

NetworkFront::~NetworkFront() { Close(); }

NetworkFront::Wanted NetworkFront::WantedBy(const Settings& settings) const {
  const std::string machine = parts_.sockets.MachineName();
  Wanted wanted{.address = settings.NetworkAddress,
                .port = static_cast<std::uint16_t>(settings.NetworkPort),
                .discovery = settings.NetworkDiscovery != 0 && !IsLoopback(settings.NetworkAddress),
                .names = SplitNames(settings.NetworkNames),
                .allowed_origin = settings.NetworkAllowOrigin};
  if (!machine.empty()) wanted.names.insert(wanted.names.end(), {machine, machine + ".local"});
  return wanted;
}

void NetworkFront::Identify(const Settings& settings) {
  station_.name = settings.NetworkStation.empty() ? parts_.sockets.MachineName() : settings.NetworkStation;
  try {
    LoadIdentifiers(parts_.store, station_);
  } catch (const RunTimeError& error) {
    parts_.record(std::string("The network's new identifiers hold until the program ends: ") + error.what());
  }
  alpaca_.SetStation(station_);
}

void NetworkFront::Apply(const Settings& settings) {
  Close();
  server_trouble_.Repeat();
  discovery_trouble_.Repeat();
  parts_.complain("");
  if (settings.NetworkEnabled == 0 || settings.NetworkPort == 0) return;
  Identify(settings);
  wanted_ = WantedBy(settings);
  Open();
}

void NetworkFront::Close() {
  if (minute_timer_ != 0) parts_.loop.Cancel(std::exchange(minute_timer_, 0));
  wanted_.reset();
  discovery_listener_.reset();
  server_.Close();
}

std::string NetworkFront::Place() const {
  const bool ipv6 = wanted_->address.find(':') != std::string::npos;
  return (ipv6 ? "[" + wanted_->address + "]" : wanted_->address) + ":" + std::to_string(wanted_->port);
}

void NetworkFront::Open() {
  try {
    server_.Open(wanted_->address, wanted_->port,
                 {.fields = {{"Orvalis-Station", FieldValue(station_.name)}, {"Orvalis-Station-Id", station_.uuid}},
                  .guard = RequestGuard(wanted_->names, wanted_->allowed_origin)});
    const bool mended = server_trouble_.Mended();
    if (mended) parts_.complain("");
    if (mended || !IsLoopback(wanted_->address)) parts_.record("Serving the network on " + Place());
  } catch (const RunTimeError& error) {
    std::string text = "Cannot serve the network on " + Place() + ": ";
    if (error.number() == RunTimeError::kPortInUse) {
      text += "another program has the port. A second Orvalis needs a profile with a port of its own. ";
    } else {
      text += std::string(error.what()) + ". ";
    }
    text += "It is tried again every minute";
    if (server_trouble_.IsNews(text)) parts_.record(text);
    parts_.complain(text);
  }
  if (server_.open()) OpenDiscovery();
  TryAgainLater();
}

void NetworkFront::OpenDiscovery() {
  if (!wanted_->discovery) return;
  discovery_.emplace(wanted_->port);
  const auto answer = [this](const Datagram& datagram) {
    return discovery_->Answer(datagram, parts_.loop.TickCount());
  };
  try {
    discovery_listener_ = parts_.sockets.AnswerDatagrams(AlpacaDiscovery::Port(wanted_->address), answer);
    discovery_trouble_.Mended();
  } catch (const RunTimeError& error) {
    const std::string text = std::string("Clients cannot find the program by themselves: ") + error.what();
    if (discovery_trouble_.IsNews(text)) parts_.record(text);
  }
}

void NetworkFront::TryAgainLater() {
  const bool complete = server_.open() && !wanted_->discovery;
  if (complete) return;
  minute_timer_ = parts_.loop.CallAfter(kTryAgain, [this] {
    minute_timer_ = 0;
    if (!server_.open()) {
      Open();
      return;
    }
    // Interfaces come and go.
    if (discovery_listener_) {
      discovery_listener_->JoinGroups();
    } else {
      OpenDiscovery();
    }
    TryAgainLater();
  });
}

}  // namespace orvalis::network
