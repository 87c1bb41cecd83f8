#include "publish/submit_boxes.h"

#include "publish/url_helper.h"

namespace orvalis {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

void ReplaceAll(std::string& text, std::string_view what, std::string_view by) {
  if (what.empty()) return;
  std::string replaced;
  std::size_t from = 0;
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, from)) {
    replaced.append(text, from, at - from).append(by);
    from = at + what.size();
  }
  if (from == 0) return;
  text = replaced.append(text, from);
}

/// "2026-11-21 09:04:05 PM"
std::string ErrorTime(const CivilTime& time) {
  const std::string iso = FormatIso8601(time);
  const std::string event_time = FormatEventTime(time);  // ends in "09:04 PM"
  return iso.substr(0, 10) + ' ' + event_time.substr(11, 5) + iso.substr(16, 3) + event_time.substr(16);
}

}  // namespace

void SubmitBoxes::ShowRequest(std::string caption, std::string text) {
  if (caption == request_caption_ && text == request_) return;
  request_caption_ = std::move(caption);
  request_ = std::move(text);
  Changed();
}

void SubmitBoxes::ClearResponse() {
  response_.Clear();
  after_return_ = false;
  Changed();
}

void SubmitBoxes::AddResponse(std::string_view bytes) {
  std::string normalised;
  normalised.reserve(bytes.size());
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

std::string SubmitBoxes::Masked(std::string_view text) const {
  std::string masked(text);
  const std::string& password = settings_.g_sPWS_password;
  ReplaceAll(masked, password, kMask);
  ReplaceAll(masked, UrlEncode(password), kMask);
  return masked;
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
