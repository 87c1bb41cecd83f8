#include "logs/verdict_log.h"

#include <system_error>
#include <utility>

#include "base/text.h"
#include "verdict/explanation.h"

namespace orvalis {

VerdictLog::VerdictLog(LogReport report)
    : file_({.name = "verdict log", .file_name = kFileName, .max_bytes = 5'000'000, .old_files_kept = 5},
            std::move(report)) {}

void VerdictLog::Open(const std::filesystem::path& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);  // a failure shows up when the log is opened
  file_.Open(folder);
}

std::string VerdictLog::VerdictLine(const CivilTime& time, const Observation& now) {
  std::string line = FormatIso8601(time) + (now.verdict.safe ? " safe" : " unsafe");
  if (!now.verdict.safe) line += " " + ReasonNames(now.verdict) + ": " + Explain(now);
  line += " |";
  const auto add = [&](std::string_view name, double value) {
    line += " " + std::string(name) + "=" + FormatFixed(value, 1);
  };
  if (now.age) add("age_s", now.AgeSeconds());
  for (const ObservedValue& value : ObservedValueTable()) {
    if (const ObservedValues::Value& known = now.values.*value.member) add(value.name, *known);
  }
  return line;
}

}  // namespace orvalis
