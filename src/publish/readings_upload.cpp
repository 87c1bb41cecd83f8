#include "publish/readings_upload.h"

#include <cmath>
#include <utility>

#include "base/run_time_error.h"
#include "publish/pws_upload.h"
#include "publish/service_answer.h"
#include "publish/submit_fields.h"

namespace orvalis {
namespace {

bool AllFinite(const WeatherState& weather) {
  for (const double value : {weather.ambient_celsius, weather.sky_celsius, weather.humidity_percent,
                             weather.wind_average_mph, weather.wind_gust_mph}) {
    if (!std::isfinite(value)) return false;
  }
  return true;
}

std::string Seconds(std::chrono::seconds duration) { return std::to_string(duration.count()) + " seconds"; }

}  // namespace

UploadTurn ReadingsUpload::Send(Trigger trigger, Permission permission) {
  if (parts_.settings.g_bAllow_PWS != 1 && permission == Permission::kBySetting) return UploadTurn::kTaken;
  if (trigger == Trigger::kUser) report_.Repeat();
  auto prepared = Prepare(trigger);
  if (const auto* refusal = std::get_if<Refusal>(&prepared)) {
    Show(*refusal, trigger);
    return refusal->reading_missing ? UploadTurn::kStillDue : UploadTurn::kTaken;
  }
  if (AccountMissing()) {
    Show({.text = Message::Of("the station ID or the password is still the placeholder; enter your own")}, trigger);
    return UploadTurn::kTaken;
  }
  sent_once_ = permission == Permission::kOnce;
  Begin(std::get<Prepared>(std::move(prepared)));
  return UploadTurn::kTaken;
}

void ReadingsUpload::Begin(const Prepared& request) {
  if (under_way_) Abort("previous upload aborted: the next one is due");
  parts_.boxes.BeginExchange(Message::Of("Request sent %1").With(parts_.clock.style().time(parts_.clock.LocalNow())),
                             request.shown);
  shows_sent_ = true;
  under_way_ = true;
  answer_.clear();
  received_ = 0;
  RestartIdleTimer();
  exchange_timer_ = parts_.loop.CallAfter(kExchangeTimeout, [this] {
    exchange_timer_ = 0;
    Abort("the response took longer than " + Seconds(kExchangeTimeout));
  });
  parts_.socket.Begin(request.host, request.port, request.bytes,
                      {.connected = [this] { RestartIdleTimer(); },
                       .received = [this](std::string_view bytes) { Receive(bytes); },
                       .closed = [this] { Closed(); },
                       .failed = [this](const std::string& reason) { Abort(reason); }});
}

void ReadingsUpload::Show(const Refusal& refusal, Trigger trigger) {
  // A scheduled upload opens no message box, because there may be no one to close it: the error box shows the text
  // instead.
  if (!refusal.title.empty() && trigger == Trigger::kUser && message_boxes_ != nullptr) {
    message_boxes_->ShowMessage(refusal.text.English(), refusal.title);
  } else {
    report_.Refused(refusal.text.English());
  }
}

std::variant<ReadingsUpload::Prepared, ReadingsUpload::Refusal> ReadingsUpload::Prepare(Trigger trigger) const {
  const Settings& settings = parts_.settings;
  try {
    HttpRequest request{
        .method = composition_.method, .url = SplitUrl(settings.g_sPWS_site), .headers = composition_.headers};
    if (const UrlComplaint complaint = Complaint(request.url); !complaint.text.empty()) {
      return Refusal{.text = std::string(complaint.text), .title = complaint.title};
    }
    CheckUrl(settings.g_sPWS_site, request.url);
    if (const Message why = MissingReading(); !why.empty()) {
      return Refusal{.text = why, .reading_missing = true};
    }
    if (parts_.weather.from_demo && trigger == Trigger::kSchedule) {
      return Refusal{.text = Message::Of("demo values are not uploaded; \"Test Server\" sends them anyway")};
    }
    const CivilTime now = parts_.clock.UtcNow();
    const auto query = [&](std::string_view password) {
      return UploadQuery(settings.g_sPWS_name, password, now, parts_.weather, settings, composition_.variables,
                         parts_.to_code_page);
    };
    request.query = query(settings.g_sPWS_password);
    return Prepared{.host = request.url.host,
                    .port = PortOf(request.url),
                    .bytes = RequestText(request),
                    .shown = ShownText(request, query(kMask))};
  } catch (const RunTimeError& error) {
    return Refusal{.text = error.message()};
  }
}

Message ReadingsUpload::MissingReading() const {
  if (parts_.panel.stale) return Message::Of("no current reading");
  if (!parts_.weather.ambient_known) return Message::Of("the ambient temperature is not known");
  if (!AllFinite(parts_.weather)) return Message::Of("a value is not a number");
  return {};
}

bool ReadingsUpload::AccountMissing() const {
  return IsPrompt("g_sPWS_name", parts_.settings.g_sPWS_name) ||
         IsPrompt("g_sPWS_password", parts_.settings.g_sPWS_password);
}

void ReadingsUpload::Preview() {
  const bool allowed = parts_.settings.g_bAllow_PWS == 1;
  if (shows_sent_ && (allowed || sent_once_)) return;
  shows_sent_ = false;
  const auto prepared = Prepare(Trigger::kUser);
  if (const auto* refusal = std::get_if<Refusal>(&prepared)) {
    parts_.boxes.ShowRequest(Message::Of("Nothing would be sent now: %1").With(refusal->text), "");
    return;
  }
  Message caption = allowed ? Message::Of("Request as it would be sent now")
                            : Message::Of("Request as it would be sent now if uploads were enabled");
  if (AccountMissing()) {
    caption = Joined(caption, ", ", Message::Of("once you have entered the ID and the password"));
  }
  if (parts_.weather.from_demo) {
    caption = Joined(caption, ", ", Message::Of("by \"Test Server\" only: demo values"));
  }
  parts_.boxes.ShowRequest(std::move(caption), std::get<Prepared>(prepared).shown);
}

void ReadingsUpload::Edited() {
  shows_sent_ = false;
  report_.Repeat();
  Preview();
}

void ReadingsUpload::Receive(std::string_view bytes) {
  RestartIdleTimer();
  if (answer_.size() < kLongestJudged) answer_ += bytes.substr(0, kLongestJudged - answer_.size());
  if (received_ <= TailText::kShown && received_ + bytes.size() > TailText::kShown) {
    parts_.boxes.AddError("the response is longer than " + std::to_string(TailText::kShown / 1024) +
                          " KB; only its end is kept");
  }
  received_ += bytes.size();
  parts_.boxes.AddResponse(bytes);
}

void ReadingsUpload::Closed() {
  End();
  Judge();
}

void ReadingsUpload::Judge() {
  if (const std::string objection = ServiceObjection(answer_); !objection.empty()) {
    report_.Failed(objection);
  } else {
    report_.Succeeded();
  }
}

void ReadingsUpload::Abort(const std::string& why) {
  End();
  if (HasStatusLine(answer_)) {
    Judge();
  } else {
    report_.Failed(why);
  }
}

void ReadingsUpload::RestartIdleTimer() {
  parts_.loop.Cancel(idle_timer_);
  idle_timer_ = parts_.loop.CallAfter(kIdleTimeout, [this] {
    idle_timer_ = 0;
    Abort("no answer within " + Seconds(kIdleTimeout));
  });
}

void ReadingsUpload::End() {
  under_way_ = false;
  parts_.loop.Cancel(idle_timer_);
  parts_.loop.Cancel(exchange_timer_);
  idle_timer_ = exchange_timer_ = 0;
  parts_.socket.Close();
}

}  // namespace orvalis
