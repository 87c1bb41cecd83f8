#include "server/traffic.h"

namespace orvalis {
namespace {

using std::chrono::duration_cast;
using std::chrono::microseconds;

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

void Traffic::Enter(std::string_view caller, std::string_view member, std::string_view answer, microseconds took) {
  if (paused_) return;
  if (calls_.size() == kKeptCalls) calls_.pop_front();
  const auto began = std::chrono::system_clock::now() - took;
  calls_.push_back({.began = duration_cast<std::chrono::milliseconds>(began.time_since_epoch()).count(),
                    .caller = std::string(caller),
                    .member = std::string(member),
                    .answer = std::string(answer),
                    .took = took});
  if (changed_) changed_();
}

void Traffic::Clear() {
  at_line_start_ = true;
  text_.clear();
  calls_.clear();
  if (changed_) changed_();
}

CallTimer::CallTimer(Traffic* const& traffic, TrafficCategory category, std::string_view caller,
                     std::string_view member)
    : traffic_(&traffic), caller_(caller), member_(member) {
  if (traffic == nullptr || !traffic->Wants(category)) return;
  window_ = traffic;
  began_ = Stopwatch::now();
}

void CallTimer::End(std::string_view answer) const {
  if (window_ == nullptr || *traffic_ != window_) return;
  window_->Enter(caller_, member_, answer, duration_cast<microseconds>(Stopwatch::now() - began_));
}

}  // namespace orvalis
