#pragma once

#include <filesystem>
#include <string>

#include "base/clock.h"
#include "logs/log_files.h"
#include "verdict/observation.h"

namespace orvalis {

/// A line for every change of the verdict or its reasons, for asking later why the roof closed.
class VerdictLog {
 public:
  static constexpr const char* kFileName = "orvalis_verdicts.txt";

  /// `report` is called when the file fails, and when it works again.
  explicit VerdictLog(LogReport report);

  /// Appends to `kFileName` in `folder`, which is created if missing.
  void Open(const std::filesystem::path& folder);
  void Write(const CivilTime& time, const Observation& now) { file_.Write(VerdictLine(time, now)); }

  /// "2026-11-21T21:04:05.123+01:00 unsafe rain, unit_alarm: rain 412 counts, limit 350 | age_s=0.0 ambient_c=5.0 …"
  [[nodiscard]] static std::string VerdictLine(const CivilTime& time, const Observation& now);

 private:
  RotatingLog file_;
};

}  // namespace orvalis
