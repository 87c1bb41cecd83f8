#include "network/observation/observation_service.h"

#include <chrono>
#include <stdexcept>

#include "network/observation/observation_json.h"
#include "network/page/page_files.h"

namespace orvalis::network {
namespace {

using std::chrono::milliseconds;

/// A reader that hears nothing for ten seconds takes the program for lost, so while no readings come it is told that.
constexpr milliseconds kLongestSilence{2'500};
/// Computing the curves of two days takes some ten milliseconds, which everything else waits for.
constexpr int kCurvesPerSecond = 4;

}  // namespace

void ObservationService::AddTo(Resources& resources) {
  resources.Add({.path = "/observation",
                 .get = [this](const HttpRequest&) -> HttpResponse {
                   return {.content_type = kJsonType, .body = ObservationJson(parts_.observe(), parts_.station())};
                 },
                 .help = "the readings and whether it is safe, as JSON",
                 .shared = true});
  resources.Add({.path = "/observation/stream",
                 .get = [this](const HttpRequest&) { return Stream(); },
                 .help = "the same whenever it changes, as server-sent events"});
  resources.Add({.path = "/history",
                 .get = [this](const HttpRequest& request) { return Curves(request); },
                 .help = "curves: ?from=SECONDS&to=SECONDS&points=NUMBER, negative seconds are before now"});
  resources.Add({.path = "/roof-status",
                 .get = [this](const HttpRequest&) -> HttpResponse {
                   return {.content_type = kJsonType, .body = RoofStatusJson(parts_.observe())};
                 },
                 .help = "whether a roof may open, for INDI's weather safety proxy"});
  resources.Add({.path = "/metrics",
                 .get = [this](const HttpRequest& request) -> HttpResponse {
                   const MetricFormat format = MetricFormatFor(request.Header("Accept"));
                   return {.content_type = ContentType(format),
                           .body = MetricsText(parts_.observe(), parts_.station(), parts_.counters(), format)};
                 },
                 .help = "the readings for Prometheus",
                 .shared = true});
  for (const PageFile& file : PageFiles()) {
    resources.Add({.path = std::string(file.path),
                   .get = [file](const HttpRequest&) -> HttpResponse {
                     return {.content_type = file.content_type, .body = std::string(file.content)};
                   },
                   .help = std::string(file.help)});
  }
}

void ObservationService::Note(const Observation& now, bool news) {
  const std::int64_t tick = parts_.loop.TickCount();
  if (!news && tick - published_at_ < kLongestSilence.count()) return;
  published_at_ = tick;
  if (channel_.HasReaders()) channel_.Publish(ObservationJson(now, parts_.station()));
}

HttpResponse ObservationService::Stream() {
  return {.content_type = kEventStreamType,
          .body = EventChannel::Format(ObservationJson(parts_.observe(), parts_.station())),
          .events = &channel_};
}

HttpResponse ObservationService::Curves(const HttpRequest& request) {
  CurveRequest curves;
  try {
    curves = ReadCurveRequest(request.query, parts_.observe().time);
  } catch (const std::invalid_argument& error) {
    return TextAnswer(kBadRequest, error.what());
  }
  if (!TakeTurn()) {
    HttpResponse later = TextAnswer(kUnavailable, "Too many ask for curves at once. Ask again in a second");
    later.headers.emplace_back("Retry-After", "1");
    return later;
  }
  const Recorded recorded = parts_.recorded();
  return {.content_type = kJsonType, .body = HistoryJson(recorded.history, recorded.demo, curves, parts_.station())};
}

bool ObservationService::TakeTurn() {
  constexpr std::int64_t kSecond = 1'000;
  if (const std::int64_t second = parts_.loop.TickCount() / kSecond; second != turns_second_) {
    turns_second_ = second;
    turns_ = 0;
  }
  return ++turns_ <= kCurvesPerSecond;
}

}  // namespace orvalis::network
