#include "network/http/http_server.h"

#include <algorithm>
#include <array>
#include <exception>

namespace orvalis::network {
namespace {

/// Refused ones included, which are kept a moment for their peers to see why.
constexpr std::size_t kMostKept = std::size_t{2} * kMostConnections;
constexpr std::chrono::milliseconds kCheckInterval{1'000};
/// A connection that waited so long for a request gives way to a new one when there is no room: 64 clients that are
/// only open must not keep out one that asks.
constexpr std::chrono::milliseconds kIdleEnough{1'000};

/// "Sun, 22 Nov 2026 02:05:09 GMT"
std::string HttpDate(const CivilTime& utc) {
  constexpr std::array<const char*, 7> kDays{"Thu", "Fri", "Sat", "Sun", "Mon", "Tue", "Wed"};
  constexpr std::array<const char*, 12> kMonths{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  // 1970 began on a Thursday, and a clock may stand before it.
  const auto day = static_cast<std::size_t>((DayNumber(utc) % 7 + 7) % 7);
  return std::string(kDays.at(day)) + FormatTime(utc, ", DD ") + kMonths.at(static_cast<std::size_t>(utc.month - 1)) +
         FormatTime(utc, " YYYY hh:nn:ss") + " GMT";
}

/// What a browser must not do with a page of ours.
void AddPageFields(HttpResponse& response) {
  response.headers.insert(
      response.headers.end(),
      {{"Content-Security-Policy",
        "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:; connect-src "
        "'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'"},
       {"X-Frame-Options", "DENY"},
       {"Referrer-Policy", "no-referrer"}});
}

}  // namespace

/// How many connections there may be.
struct HttpServer::Limit {
  int most;
  bool (*counts)(const Peer& other, const Peer& peer);  ///< whether `other`, connected, is among those for `peer`
  int status;
  const char* reason;
};

// The narrowest first: room that is made within it is room within the others.
const HttpServer::Limit HttpServer::kLimits[] = {
    {kMostFromOneAddress,
     [](const Peer& other, const Peer& peer) { return !peer.loopback && other.address == peer.address; },
     kTooManyRequests, "there are too many connections from its address"},
    {kMostFromOthers, [](const Peer& other, const Peer& peer) { return !peer.loopback && !other.loopback; },
     kUnavailable, "there are too many connections"},
    {kMostConnections, [](const Peer&, const Peer&) { return true; }, kUnavailable, "there are too many connections"},
};

HttpServer::HttpServer(Parts parts) : parts_(std::move(parts)), refusals_(parts_.report), failures_(parts_.report) {}

HttpServer::~HttpServer() { Close(); }

void HttpServer::Open(const std::string& address, std::uint16_t port, Identity identity) {
  Close();
  guard_ = std::move(identity.guard);
  identity_fields_.clear();
  for (const auto& [name, value] : identity.fields)
    identity_fields_.append(name).append(": ").append(value).append("\r\n");
  common_fields_second_ = -1;
  listener_ =
      parts_.sockets.Listen(address, port, [this](std::unique_ptr<StreamSocket> socket) { Accept(std::move(socket)); });
}

void HttpServer::Close() {
  listener_.reset();
  connections_.clear();
  for (EventLoop::TimerId* const timer : {&check_timer_, &removal_timer_}) {
    if (*timer != 0) parts_.loop.Cancel(std::exchange(*timer, 0));
  }
}

void HttpServer::Accept(std::unique_ptr<StreamSocket> socket) {
  if (connections_.size() >= kMostKept) {
    NoteRefusal(socket->peer(), "there are too many connections");
    return;
  }
  const Limit* const full = Full(socket->peer());
  HttpConnection::Owner& owner = *this;
  HttpConnection& connection = *connections_.emplace_back(std::make_unique<HttpConnection>(std::move(socket), owner));
  if (full) connection.Refuse(full->status, full->reason);
  connection.Start();
  if (check_timer_ == 0) check_timer_ = parts_.loop.CallAfter(kCheckInterval, [this] { CheckTimes(); });
}

const HttpServer::Limit* HttpServer::Full(const Peer& peer) {
  for (const Limit& limit : kLimits) {
    int count = 0;
    HttpConnection* idlest = nullptr;
    for (const auto& connection : connections_) {
      if (!connection->counts() || !limit.counts(connection->peer(), peer)) continue;
      ++count;
      if (idlest == nullptr || connection->Idle() > idlest->Idle()) idlest = connection.get();
    }
    if (idlest == nullptr || count < limit.most) continue;
    if (idlest->Idle() < kIdleEnough) return &limit;
    idlest->MakeRoom();
  }
  return nullptr;
}

void HttpServer::CheckTimes() {
  check_timer_ = 0;
  for (const auto& connection : connections_) {
    if (!connection->over()) connection->CheckTime();
  }
  if (!connections_.empty()) check_timer_ = parts_.loop.CallAfter(kCheckInterval, [this] { CheckTimes(); });
}

HttpResponse HttpServer::Answer(const HttpRequest& request) {
  HttpResponse response = Respond(request);
  if (parts_.answered) parts_.answered(request, response.status);
  return response;
}

HttpResponse HttpServer::Respond(const HttpRequest& request) {
  const Resource* const resource = parts_.resources.Find(request.path);
  const bool shared = resource != nullptr && resource->shared;
  if (auto refusal = guard_->Refuse(request, shared)) {
    NoteRefusal(request.peer, refusal->status == kForbidden
                                  ? "it comes from a page of another site"
                                  : "it calls this machine by a name that is not in \"Names\"");
    return *std::move(refusal);
  }
  HttpResponse response;
  try {
    response = parts_.resources.Answer(request);
  } catch (const std::exception& error) {
    failures_.Note(Now(), request.peer.address, std::string("it failed: ") + error.what());
    return TextAnswer(kInternalError, "This failed; the program's event list has the reason");
  }
  if (response.content_type == kHtmlType) AddPageFields(response);
  if (shared) {
    if (const std::string_view origin = guard_->AllowedOrigin(request); !origin.empty()) {
      response.headers.emplace_back("Access-Control-Allow-Origin", std::string(origin));
      response.headers.emplace_back("Vary", "Origin");
    }
  }
  return response;
}

std::string_view HttpServer::CommonFields() {
  if (const std::int64_t second = Now() / 1'000; second != common_fields_second_) {
    common_fields_second_ = second;
    common_fields_ = "Server: Orvalis/" ORVALIS_VERSION "\r\nDate: " + HttpDate(parts_.clock.UtcNow()) +
                     "\r\nCache-Control: no-store"
                     "\r\nX-Content-Type-Options: nosniff"
                     "\r\nCross-Origin-Resource-Policy: same-origin\r\n" +
                     identity_fields_;
  }
  return common_fields_;
}

void HttpServer::NoteRefusal(const Peer& peer, const std::string& reason) {
  refusals_.Note(Now(), peer.address, reason);
}

void HttpServer::ConnectionOver() {
  if (removal_timer_ != 0) return;
  removal_timer_ = parts_.loop.CallAfter(std::chrono::milliseconds(0), [this] {
    removal_timer_ = 0;
    std::erase_if(connections_, [](const auto& connection) { return connection->over(); });
  });
}

}  // namespace orvalis::network
