#include "server/traffic.h"

namespace orvalis {
namespace {

constexpr std::string_view kLineBreak = "\r\n";
constexpr std::string_view kBlank = " ";

}  // namespace

void Traffic::TrafficLine(std::string_view piece) { Append(kLineBreak, piece, kLineBreak); }

void Traffic::TrafficStart(std::string_view piece) { Append(kLineBreak, piece, {}); }

void Traffic::TrafficEnd(std::string_view piece) { Append({}, piece, kLineBreak); }

void Traffic::TrafficChar(std::string_view piece) { Append(kBlank, piece, {}); }

void Traffic::Append(std::string_view separator, std::string_view piece, std::string_view ending) {
  if (paused_) return;
  if (!at_line_start_) text_ += separator;
  text_ += piece;
  text_ += ending;
  at_line_start_ = !ending.empty();
  if (text_.size() > kKeptCharacters) text_.erase(0, text_.size() - kKeptCharacters);
  if (changed_) changed_();
}

void Traffic::Clear() {
  at_line_start_ = true;
  text_.clear();
  if (changed_) changed_();
}

}  // namespace orvalis
