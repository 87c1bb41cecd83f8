#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <utility>

#include "base/once_until_mended.h"

namespace orvalis {

/// Who is told what goes wrong with a log, and that it was mended.
using LogReport = std::function<void(const std::string& text)>;

/// A text file that grows by lines and is bounded: every line is in the file when `Write` returns, a new file is begun
/// at a certain size with some former ones kept, and it comes back by itself when its folder or its disk does. What
/// goes wrong is reported once until it is mended.
class RotatingLog {
 public:
  struct Kind {
    const char* name;       ///< for a person: "full log"
    const char* file_name;  ///< former ones get ".1", the youngest, and so on
    std::uintmax_t max_bytes;
    int former_kept;
  };
  RotatingLog(Kind kind, LogReport report) : kind_(kind), report_(std::move(report)) {}

  /// Opens the log in `folder` for appending, closing another one.
  void Open(const std::filesystem::path& folder);
  void Close();
  /// Writes one line, without its end. A log that was never opened ignores it.
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
  std::uintmax_t rotate_at_ = 0;  ///< the size at which a new file is begun, or tried to
};

/// The file that always holds exactly the latest record: replaced in one step, so that a reader never finds it empty or
/// half written. What goes wrong is listed once until it is mended.
class OneLineLog {
 public:
  static constexpr const char* kFileName = "orvalis_single.txt";

  explicit OneLineLog(LogReport report) : report_(std::move(report)) {}

  void Write(const std::filesystem::path& folder, const std::string& record);

 private:
  /// Records in a row that a reader may keep from their place before that is worth a line: ten seconds.
  static constexpr int kHeldQuietly = 5;

  LogReport report_;
  OnceUntilMended trouble_;
  int held_ = 0;
};

}  // namespace orvalis
