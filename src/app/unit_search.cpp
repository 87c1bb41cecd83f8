#include "app/unit_search.h"

#include <algorithm>
#include <chrono>
#include <exception>

#include "base/run_time_error.h"
#include "unit/greeting.h"

namespace orvalis {
namespace {

/// Nothing comes from a unit by itself; lines of other devices come at least about once a second.
constexpr std::chrono::seconds kQuiet{1};

const UnitSearch::Result* First(const std::vector<UnitSearch::Result>& results, UnitSearch::Finding finding) {
  const auto found = std::ranges::find(results, finding, &UnitSearch::Result::finding);
  return found == results.end() ? nullptr : &*found;
}

}  // namespace

UnitSearch::UnitSearch(const Parts& parts) : parts_(parts) {
  parts_.port.OnLost([this](const Message& reason) { lost_ = reason; });
}

void UnitSearch::Start(const std::vector<std::string>& ports) {
  Stop();
  results_.clear();
  for (const std::string& port : ports) results_.push_back({.port = port});
  RunFrom(0);
}

void UnitSearch::RunFrom(std::size_t first) {
  job_.Start(TryFrom(first), [this](const std::exception_ptr& /*error*/) { parts_.changed(); });
}

void UnitSearch::Stop() {
  if (!running()) return;
  job_.Abandon();
  parts_.port.SetConnected(false);
  for (Result& result : results_) {
    if (result.finding == Finding::kTrying) result.finding = Finding::kWaiting;
  }
  parts_.changed();
}

void UnitSearch::GiveWay() {
  const Result* now = trying();
  if (now == nullptr) return;
  const auto index = static_cast<std::size_t>(now - results_.data());
  job_.Abandon();
  parts_.port.SetConnected(false);
  results_[index].finding = Finding::kOurs;
  RunFrom(index + 1);
}

const UnitSearch::Result* UnitSearch::trying() const { return First(results_, Finding::kTrying); }
const UnitSearch::Result* UnitSearch::found() const { return First(results_, Finding::kUnit); }

Task<> UnitSearch::TryFrom(std::size_t first) {
  for (std::size_t i = first; i < results_.size() && found() == nullptr; ++i) {
    Result& result = results_[i];
    if (parts_.is_ours(result.port)) {
      result.finding = Finding::kOurs;
      continue;
    }
    result.finding = Finding::kTrying;
    parts_.changed();
    try {
      co_await Try(result);
    } catch (const RunTimeError& error) {
      result.finding = Finding::kNotOpened;
      result.detail = error.message();
    }
    parts_.port.SetConnected(false);
    parts_.changed();
  }
}

Task<> UnitSearch::Try(Result& result) {
  SerialPort& port = parts_.port;
  lost_.clear();
  PrepareForUnit(port, result.port);
  port.SetConnected(true);
  port.ClearBuffers();
  SendGreeting(port);
  const SerialPort::Received answer = co_await ReceiveCounted(port, kGreetingAnswer.size());
  GreetingAnswer judged = JudgeGreeting(answer);
  if (judged == GreetingAnswer::kUnit && !co_await FallsSilent()) judged = GreetingAnswer::kOther;
  if (!port.Connected()) {
    result.finding = Finding::kNotOpened;
    result.detail = lost_;
    co_return;
  }
  switch (judged) {
    case GreetingAnswer::kUnit:
      result.finding = Finding::kUnit;
      break;
    case GreetingAnswer::kNothing:
      result.finding = Finding::kSilent;
      break;
    case GreetingAnswer::kOther:
      result.finding = Finding::kOther;
      break;
  }
}

Task<bool> UnitSearch::FallsSilent() {
  // A line that delays may still have answers to greetings of earlier programs.
  constexpr int kMostAnswers = 16;
  parts_.port.SetReceiveTimeout(kQuiet);
  for (int answers = 0; answers < kMostAnswers; ++answers) {
    const SerialPort::Received more = co_await ReceiveCounted(parts_.port, kGreetingAnswer.size());
    if (more.outcome != SerialPort::Outcome::kComplete) co_return true;
    if (more.text != kGreetingAnswer) co_return false;
  }
  co_return false;
}

}  // namespace orvalis
