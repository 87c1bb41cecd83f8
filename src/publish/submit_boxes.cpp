#include "publish/submit_boxes.h"

#include <array>

namespace orvalis {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

/// "2026-11-21 09:04:05 PM"
std::string ErrorTime(const CivilTime& time) {
  const std::string iso = FormatIso8601(time);
  const std::string event_time = FormatEventTime(time);  // ends in "09:04 PM"
  return iso.substr(0, 10) + ' ' + event_time.substr(11, 5) + iso.substr(16, 3) + event_time.substr(16);
}

}  // namespace

void SubmitBoxes::ShowRequest(std::string caption, std::string_view text) {
  std::string masked = Masked(text);
  if (caption == request_caption_ && masked == request_) return;
  request_caption_ = std::move(caption);
  request_ = std::move(masked);
  Changed();
}

void SubmitBoxes::BeginExchange(std::string caption, std::string_view request) {
  if (sent_password_ != settings_.g_sPWS_password) {
    // The answers so far may hold the one that is forgotten here.
    response_.Replace(Masked(response_.All()));
    sent_password_ = settings_.g_sPWS_password;
  }
  new_answer_ = true;
  after_return_ = false;
  ShowRequest(std::move(caption), request);
  Changed();
}

void SubmitBoxes::AddResponse(std::string_view bytes) {
  std::string normalised;
  normalised.reserve(bytes.size());
  if (std::exchange(new_answer_, false) && !response_.All().empty()) {
    if (!response_.All().ends_with(kLineEnd)) normalised += kLineEnd;
    normalised += kLineEnd;
  }
  for (const char c : bytes) {
    const bool second_half = c == '\n' && after_return_;
    after_return_ = c == '\r';
    if (second_half) continue;
    if (c == '\r' || c == '\n') {
      normalised += kLineEnd;
    } else {
      normalised += c;
    }
  }
  response_.Append(normalised);
  Changed();
}

void SubmitBoxes::AddError(std::string_view text) {
  errors_.Append(ErrorTime(clock_.LocalNow()) + ' ' + Masked(text) + std::string(kLineEnd));
  Changed();
}

std::string SubmitBoxes::Masked(std::string_view text, std::size_t from) const {
  const std::array<std::string_view, 2> passwords{settings_.g_sPWS_password, sent_password_};
  return MaskSecrets(text, passwords, from);
}

void UploadReport::Failed(const std::string& why) {
  Note(why);
  boxes_.AddError(why);
}

void UploadReport::Refused(const std::string& why) {
  if (Note("not sent: " + why)) boxes_.AddError("not sent: " + why);
}

void UploadReport::Succeeded() {
  standing_.clear();
  if (!listed_) return;
  listed_ = false;
  events_.Record(std::string(name_) + ": works again");
}

bool UploadReport::Note(const std::string& why) {
  if (why == standing_) return false;
  standing_ = why;
  listed_ = true;
  events_.Record(std::string(name_) + ": " + boxes_.Masked(why));
  return true;
}

}  // namespace orvalis
