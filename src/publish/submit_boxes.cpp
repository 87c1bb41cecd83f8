#include "publish/submit_boxes.h"

#include <array>

namespace orvalis {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

constexpr std::string_view kErrorTime = "YYYY-MM-DD hh:nn:ss AM/PM";

}  // namespace

void SubmitBoxes::ShowRequest(Message caption, std::string_view text) {
  std::string masked = Masked(text);
  if (caption == request_caption_ && masked == request_) return;
  request_caption_ = std::move(caption);
  request_ = std::move(masked);
  Changed();
}

void SubmitBoxes::BeginExchange(Message caption, std::string_view request) {
  if (sent_password_ != settings_.g_sPWS_password) {
    // Earlier responses may contain the old password.
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
  errors_.Append(FormatTime(clock_.LocalNow(), kErrorTime) + ' ' + Masked(text) + std::string(kLineEnd));
  Changed();
}

std::string SubmitBoxes::Masked(std::string_view text, std::size_t from) const {
  const std::array<std::string_view, 2> passwords{settings_.g_sPWS_password, sent_password_};
  return MaskSecrets(text, passwords, from);
}

void UploadReport::Failed(const std::string& why) {
  ++counts_.failed;
  Note(why);
  boxes_.AddError(why);
}

void UploadReport::Refused(const std::string& why) {
  if (Note("not sent: " + why)) boxes_.AddError("not sent: " + why);
}

void UploadReport::Succeeded() {
  ++counts_.succeeded;
  if (trouble_.Mended()) events_.Record(std::string(name_) + ": works again");
}

bool UploadReport::Note(const std::string& why) {
  if (!trouble_.IsNews(why)) return false;
  events_.Record(std::string(name_) + ": " + boxes_.Masked(why));
  return true;
}

}  // namespace orvalis
