#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <utility>

#include "base/once_until_mended.h"

namespace orvalis {

/// Called when a log fails, and when it works again.
using LogReport = std::function<void(const std::string& text)>;

/// A log file that is rotated at a maximum size, with some old files kept. Every line is in the file when `Write`
/// returns, and writing resumes by itself when the folder or disk is back. A failure is reported once until it is
/// fixed.
class RotatingLog {
 public:
  struct Kind {
    const char* name;       ///< for a person: "full log"
    const char* file_name;  ///< old files get ".1" (the newest) and so on
    std::uintmax_t max_bytes;
    int old_files_kept;
  };
  RotatingLog(Kind kind, LogReport report) : kind_(kind), report_(std::move(report)) {}

  /// Opens the log in `folder` for appending, closing any other.
  void Open(const std::filesystem::path& folder);
  void Close();
  /// Writes one line, given without its line end. Ignored if the log was never opened.
  void Write(const std::string& line);

 private:
  [[nodiscard]] bool EnsureOpen();
  void Rotate();
  void Fail(const std::string& failure);

  Kind kind_;
  LogReport report_;
  std::filesystem::path path_;
  std::ofstream file_;
  std::uintmax_t size_ = 0;
  OnceUntilMended trouble_;
  std::uintmax_t rotate_at_ = 0;  ///< the size at which a new file is started or tried
};

/// The file that always holds exactly the latest record, replaced atomically so that a reader never finds it empty or
/// half written. A failure is reported once until it is fixed.
class OneLineLog {
 public:
  static constexpr const char* kFileName = "orvalis_single.txt";

  explicit OneLineLog(LogReport report) : report_(std::move(report)) {}

  /// Replaces the record in `folder`. Where there is no room for both, the older one is removed first.
  void Write(const std::filesystem::path& folder, const std::string& record);

 private:
  /// Records in a row that a reader may block before it is reported: ten seconds.
  static constexpr int kHeldQuietly = 5;

  LogReport report_;
  OnceUntilMended trouble_;
  int held_ = 0;
};

}  // namespace orvalis
