#include "base/error_boundary.h"

#include <string_view>

#include "base/run_time_error.h"

namespace orvalis {
namespace {

Message Describe(const std::exception_ptr& error) {
  try {
    std::rethrow_exception(error);
  } catch (const RunTimeError& run_time_error) {
    return Message::Of("%1 (error %2)").With(run_time_error.message(), static_cast<int>(run_time_error.number()));
  } catch (const std::exception& other) {
    return std::string(other.what());
  } catch (...) {
    return Message::Of("unknown error");
  }
}

}  // namespace

void ErrorBoundary::Report(Phrase doing, const std::exception_ptr& error) {
  status_ = Message::Of("Error while %1: %2").With(doing, Describe(error));
  const std::string text = status_.English();
  if (standing_[doing.english()].IsNews(text)) events_.Record(text);
}

void ErrorBoundary::Succeeded(Phrase doing) {
  const auto standing = standing_.find(std::string_view(doing.english()));
  if (standing == standing_.end()) return;
  if (status_.English() == standing->second.standing()) status_.clear();
  standing_.erase(standing);
}

}  // namespace orvalis
