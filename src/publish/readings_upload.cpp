#include "publish/readings_upload.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/run_time_error.h"
#include "publish/pws_upload.h"

namespace orvalis {
namespace {

/// As much of an answer's first line as is looked at.
constexpr std::size_t kLongestFirstLine = 120;

bool AllFinite(const WeatherState& weather) {
  for (const double value : {weather.ambient_celsius, weather.sky_celsius, weather.humidity_percent,
                             weather.wind_average_mph, weather.wind_gust_mph}) {
    if (!std::isfinite(value)) return false;
  }
  return true;
}

/// The three digits of an answer's status, or "" when its first line has none.
std::string_view Status(std::string_view first_line) {
  constexpr std::size_t kDigits = 3;
  const auto blank = first_line.find(' ');
  if (!first_line.starts_with("HTTP/") || blank == std::string_view::npos) return "";
  std::string_view status = first_line.substr(blank + 1);
  const auto end = std::min(status.find_first_not_of("0123456789"), status.size());
  if (end != kDigits || (end < status.size() && status[end] != ' ')) return "";
  return status.substr(0, end);
}

std::string Seconds(std::chrono::seconds duration) { return std::to_string(duration.count()) + " seconds"; }

}  // namespace

void ReadingsUpload::Send(AskedBy asked_by) {
  if (parts_.settings.g_bAllow_PWS != 1) return;
  if (asked_by == AskedBy::kUser) report_.Forget();
  const auto prepared = Prepare(asked_by);
  if (const auto* refusal = std::get_if<Refusal>(&prepared)) {
    Show(*refusal, asked_by);
    return;
  }
  if (under_way_) GiveUp("the former upload was ended unfinished: the next one is due");
  const auto& request = std::get<Prepared>(prepared);
  parts_.boxes.BeginExchange("Request, sent " + FormatTimeOfDay(parts_.clock.LocalNow()), request.shown);
  shows_sent_ = true;
  under_way_ = true;
  first_line_.clear();
  first_line_complete_ = false;
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
    if (const std::string_view why = Unfit(asked_by); !why.empty()) return Refusal{.text = std::string(why)};
    const CivilTime now = parts_.clock.UtcNow();
    const auto with_password = [&](std::string_view password) {
      request.query =
          UploadQuery(settings.g_sPWS_name, password, now, parts_.weather, settings, composition_.variables);
      return RequestText(request);
    };
    Prepared prepared{.host = request.url.host, .port = PortOf(request.url)};
    prepared.bytes = with_password(settings.g_sPWS_password);
    prepared.shown = with_password(kMask);
    return prepared;
  } catch (const RunTimeError& error) {
    return Refusal{.text = error.what()};
  }
}

std::string_view ReadingsUpload::Unfit(AskedBy asked_by) const {
  if (parts_.panel.stale) return "there is no reading of now";
  if (!parts_.weather.ambient_known) return "the ambient temperature is not known";
  if (!AllFinite(parts_.weather)) return "a value is no number";
  if (parts_.weather.from_demo && asked_by == AskedBy::kSchedule) {
    return "the values are made up in demo mode; \"Test Server\" sends them all the same";
  }
  return "";
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
  if (parts_.weather.from_demo) caption += ", by \"Test Server\" alone: the values are made up";
  parts_.boxes.ShowRequest(std::move(caption), std::get<Prepared>(prepared).shown);
}

void ReadingsUpload::Edited() {
  shows_sent_ = false;
  report_.Forget();
  Preview();
}

void ReadingsUpload::Receive(std::string_view bytes) {
  AwaitAnswer();
  if (!first_line_complete_) {
    const auto end = bytes.find_first_of("\r\n");
    first_line_complete_ = end != std::string_view::npos;
    first_line_ += bytes.substr(0, end);
    if (first_line_.size() > kLongestFirstLine) {
      first_line_.resize(kLongestFirstLine);
      first_line_complete_ = true;
    }
  }
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
  if (received_ == 0) {
    report_.Failed("the server closed the connection without an answer");
    return;
  }
  // Of the server's own words none but the status is repeated: it may send back what it was sent, in any writing.
  const std::string status(Status(first_line_));
  if (status.empty()) {
    report_.Failed("what answers is not a web server");
  } else if (status.front() == '2') {
    report_.Succeeded();
  } else if (status.front() == '3') {
    report_.Failed("the server sends elsewhere (status " + status + "), where nothing is sent");
  } else {
    report_.Failed("the server refuses (status " + status + ")");
  }
}

void ReadingsUpload::GiveUp(const std::string& why) {
  End();
  if (first_line_complete_) {
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
