#include "network/network_front.h"

#include <utility>

#include "base/run_time_error.h"
#include "network/page/page_files.h"

namespace orvalis::network {
namespace {

constexpr std::chrono::milliseconds kTryAgain{60'000};

bool IsLoopback(const std::string& address) { return address.starts_with("127.") || address == "::1"; }

bool IsAny(const std::string& address) { return address == "0.0.0.0" || address == "::"; }

bool IsIpv6(const std::string& address) { return address.find(':') != std::string::npos; }

/// As it stands in a URL.
std::string PlaceOf(const std::string& address, std::uint16_t port) {
  return (IsIpv6(address) ? "[" + address + "]" : address) + ":" + std::to_string(port);
}

void AppendPrintable(std::string& text, char c) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(c);
  if (byte >= 0x20 && byte < 0x7F) {
    text += c;
  } else {
    text.append({'%', kDigits[byte / 16], kDigits[byte % 16]});
  }
}

/// `text` as a header field takes it: bytes beyond ASCII and control characters as "%C3".
std::string FieldValue(const std::string& text) {
  std::string value;
  for (const char c : text) {
    if (c == '%') {
      value += "%25";
    } else {
      AppendPrintable(value, c);
    }
  }
  return value;
}

/// A part of a request as a line of traffic shows it: in ASCII, and not so long that it pushes the others out.
void AppendShort(std::string& line, std::string_view part) {
  constexpr std::size_t kLongest = 100;
  for (const char c : part.substr(0, kLongest)) AppendPrintable(line, c);
  if (part.size() > kLongest) line += "...";
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
               .report = parts_.record,
               .answered = [this](const HttpRequest& request, int status, std::chrono::microseconds took) {
                 ShowRequest(request, status, took);
               }}) {
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
  parts_.complain({});
  if (settings.NetworkEnabled == 0 || settings.NetworkPort == 0) return;
  Identify(settings);
  wanted_ = WantedBy(settings);
  Open();
}

void NetworkFront::Close() {
  if (minute_timer_ != 0) parts_.loop.Cancel(std::exchange(minute_timer_, 0));
  wanted_.reset();
  trouble_.clear();
  discovery_listener_.reset();
  server_.Close();
}

std::string NetworkFront::Place() const { return PlaceOf(wanted_->address, wanted_->port); }

Served NetworkFront::served() const {
  Served served{.trouble = trouble_};
  if (!server_.open()) return served;
  const bool any = IsAny(wanted_->address);
  for (const std::string& address : any ? parts_.sockets.MachineAddresses() : std::vector{wanted_->address}) {
    if (wanted_->address == "0.0.0.0" && IsIpv6(address)) continue;
    served.pages.push_back("http://" + PlaceOf(address, wanted_->port) + "/");
  }
  return served;
}

void NetworkFront::Open() {
  try {
    server_.Open(wanted_->address, wanted_->port,
                 {.fields = {{"Orvalis-Station", FieldValue(station_.name)}, {"Orvalis-Station-Id", station_.uuid}},
                  .guard = RequestGuard(wanted_->names, wanted_->allowed_origin)});
    trouble_.clear();
    const bool mended = server_trouble_.Mended();
    if (mended) parts_.complain({});
    if (mended || !IsLoopback(wanted_->address)) parts_.record("Serving the network on " + Place());
  } catch (const RunTimeError& error) {
    const Message why =
        error.number() == RunTimeError::kPortInUse
            ? Message(
                  Message::Of("another program has the port. A second Orvalis needs a profile with a port of its own"))
            : error.message();
    trouble_ = Message::Of("Cannot serve the network on %1: %2. It is tried again every minute").With(Place(), why);
    if (const std::string text = trouble_.English(); server_trouble_.IsNews(text)) parts_.record(text);
    parts_.complain(trouble_);
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
    trouble_.clear();
  } catch (const RunTimeError& error) {
    trouble_ = Message::Of("Clients cannot find the program by themselves: %1").With(error.message());
    if (const std::string text = trouble_.English(); discovery_trouble_.IsNews(text)) parts_.record(text);
  }
}

void NetworkFront::ShowRequest(const HttpRequest& request, int status, std::chrono::microseconds took) const {
  if (parts_.traffic == nullptr || !parts_.traffic->Wants(TrafficCategory::kNetwork)) return;
  std::string asked;
  AppendShort(asked, request.method_name);
  asked += " ";
  // Without the query, and only what is a path: the rest may have what is not for everybody's eyes.
  AppendShort(asked, request.path.starts_with('/') ? request.path : "*");
  const std::string answer = std::to_string(status);
  parts_.traffic->Enter(request.peer.address, asked, answer + " " + std::string(ReasonPhrase(status)), took);
  parts_.traffic->TrafficLine(request.peer.address + " " + asked + ": " + answer);
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
