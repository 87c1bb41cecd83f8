#include "base/error_boundary.h"

#include "base/run_time_error.h"

namespace orvalis {
namespace {

std::string Describe(const std::exception_ptr& error) {
  try {
    std::rethrow_exception(error);
  } catch (const RunTimeError& run_time_error) {
    return std::string(run_time_error.what()) + " (error " + std::to_string(run_time_error.number()) + ")";
  } catch (const std::exception& other) {
    return other.what();
  } catch (...) {
    return "unknown error";
  }
}

}  // namespace

void ErrorBoundary::Report(std::string_view doing, const std::exception_ptr& error) {
  const std::string text = "Error while " + std::string(doing) + ": " + Describe(error);
  status_ = text;
  if (standing_[std::string(doing)].IsNews(text)) events_.Record(text, EventLevel::kError);
}

void ErrorBoundary::Succeeded(std::string_view doing) {
  const auto standing = standing_.find(doing);
  if (standing == standing_.end()) return;
  if (status_ == standing->second.standing()) status_.clear();
  standing_.erase(standing);
}

}  // namespace orvalis
