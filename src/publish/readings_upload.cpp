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

UploadTurn ReadingsUpload::Send(AskedBy asked_by) {
  if (parts_.settings.g_bAllow_PWS != 1) return UploadTurn::kTaken;
  if (asked_by == AskedBy::kUser) report_.Repeat();
  auto prepared = Prepare(asked_by);
  if (const auto* refusal = std::get_if<Refusal>(&prepared)) {
    Show(*refusal, asked_by);
    return refusal->lacks_reading ? UploadTurn::kStillDue : UploadTurn::kTaken;
  }
  if (LacksAccount()) {
    Show({.text = "the station's ID or the password is the text that asks for it; enter yours"}, asked_by);
    return UploadTurn::kTaken;
  }
  Begin(std::get<Prepared>(std::move(prepared)));
  return UploadTurn::kTaken;
}

void ReadingsUpload::Begin(const Prepared& request) {
  if (under_way_) GiveUp("the former upload was ended unfinished: the next one is due");
  parts_.boxes.BeginExchange("Request, sent " + FormatTimeOfDay(parts_.clock.LocalNow()), request.shown);
  shows_sent_ = true;
  under_way_ = true;
  answer_.clear();
  received_ = 0;
  AwaitAnswer();
  deadline_ = parts_.loop.CallAfter(kLongestExchange, [this] {
    deadline_ = 0;
    GiveUp("the answer took longer than " + Seconds(kLongestExchange));
  });
  parts_.socket.Begin(request.host, request.port, request.bytes,
                      {.connected = [this] { AwaitAnswer(); },
                       .received = [this](std::string_view bytes) { Receive(bytes); },
                       .closed = [this] { Closed(); },
                       .failed = [this](const std::string& reason) { GiveUp(reason); }});
}

void ReadingsUpload::Show(const Refusal& refusal, AskedBy asked_by) {
  // A box that the schedule opened would hold up nobody but also wait for a person who may be asleep: the error box
  // keeps the text instead.
  if (!refusal.title.empty() && asked_by == AskedBy::kUser && message_boxes_ != nullptr) {
    message_boxes_->ShowMessage(refusal.text, refusal.title);
  } else {
    report_.Refused(refusal.text);
  }
}

std::variant<ReadingsUpload::Prepared, ReadingsUpload::Refusal> ReadingsUpload::Prepare(AskedBy asked_by) const {
  const Settings& settings = parts_.settings;
  try {
    HttpRequest request{
        .method = composition_.method, .url = SplitUrl(settings.g_sPWS_site), .headers = composition_.headers};
    if (const UrlComplaint complaint = Complaint(request.url); !complaint.text.empty()) {
      return Refusal{.text = std::string(complaint.text), .title = complaint.title};
    }
    CheckUrl(settings.g_sPWS_site, request.url);
    if (const std::string_view why = LackOfReading(); !why.empty()) {
      return Refusal{.text = std::string(why), .lacks_reading = true};
    }
    if (parts_.weather.from_demo && asked_by == AskedBy::kSchedule) {
      return Refusal{.text = "the values are made up in demo mode; \"Test Server\" sends them all the same"};
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
    return Refusal{.text = error.what()};
  }
}

std::string_view ReadingsUpload::LackOfReading() const {
  if (parts_.panel.stale) return "there is no reading of now";
  if (!parts_.weather.ambient_known) return "the ambient temperature is not known";
  if (!AllFinite(parts_.weather)) return "a value is no number";
  return "";
}

bool ReadingsUpload::LacksAccount() const {
  return IsPrompt("g_sPWS_name", parts_.settings.g_sPWS_name) ||
         IsPrompt("g_sPWS_password", parts_.settings.g_sPWS_password);
}

void ReadingsUpload::Preview() {
  const bool allowed = parts_.settings.g_bAllow_PWS == 1;
  if (shows_sent_ && allowed) return;
  shows_sent_ = false;
  const auto prepared = Prepare(AskedBy::kUser);
  if (const auto* refusal = std::get_if<Refusal>(&prepared)) {
    parts_.boxes.ShowRequest("Nothing would be sent now: " + refusal->text, "");
    return;
  }
  std::string caption = "Request, as it would be sent now";
  if (!allowed) caption += " if uploads were allowed";
  if (LacksAccount()) caption += ", once the ID and the password are yours";
  if (parts_.weather.from_demo) caption += ", by \"Test Server\" alone: the values are made up";
  parts_.boxes.ShowRequest(std::move(caption), std::get<Prepared>(prepared).shown);
}

void ReadingsUpload::Edited() {
  shows_sent_ = false;
  report_.Repeat();
  Preview();
}

void ReadingsUpload::Receive(std::string_view bytes) {
  AwaitAnswer();
  if (answer_.size() < kLongestJudged) answer_ += bytes.substr(0, kLongestJudged - answer_.size());
  if (received_ <= TailText::kShown && received_ + bytes.size() > TailText::kShown) {
    parts_.boxes.AddError("the answer is longer than " + std::to_string(TailText::kShown / 1024) +
                          " KB; its end alone is kept");
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

void ReadingsUpload::GiveUp(const std::string& why) {
  End();
  if (HasStatusLine(answer_)) {
    Judge();
  } else {
    report_.Failed(why);
  }
}

void ReadingsUpload::AwaitAnswer() {
  parts_.loop.Cancel(patience_);
  patience_ = parts_.loop.CallAfter(kPatience, [this] {
    patience_ = 0;
    GiveUp("no answer within " + Seconds(kPatience));
  });
}

void ReadingsUpload::End() {
  under_way_ = false;
  parts_.loop.Cancel(patience_);
  parts_.loop.Cancel(deadline_);
  patience_ = deadline_ = 0;
  parts_.socket.Close();
}

}  // namespace orvalis
