#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

#include "base/event_list.h"

namespace orvalis {

/// The full log: every line is in the file when `Write` returns. It is begun anew at 20 MB, with five former ones kept,
/// and comes back by itself when its folder or its disk does. What goes wrong is listed once until it is mended.
class FullLog {
 public:
  static constexpr const char* kFileName = "Orvalis.txt";
  static constexpr std::uintmax_t kMaxBytes = 20'000'000;
  static constexpr int kFormerKept = 5;

  FullLog(EventList& events, std::uintmax_t max_bytes = kMaxBytes) : events_(events), max_bytes_(max_bytes) {}

  /// Opens the log in `folder` for appending, closing another one.
  void Open(const std::filesystem::path& folder);
  void Close();
  void Write(const std::string& line);

 private:
  [[nodiscard]] bool EnsureOpen();
  void Rotate();
  void Report(const std::string& failure);

  EventList& events_;
  std::uintmax_t max_bytes_;
  std::filesystem::path path_;
  std::ofstream file_;
  std::uintmax_t size_ = 0;
  std::string reported_;
};

/// The file that always holds exactly the latest record: replaced in one step, so that a reader never finds it empty or
/// half written. What goes wrong is listed once until it is mended.
class OneLineLog {
 public:
  static constexpr const char* kFileName = "orvalis_single.txt";

  explicit OneLineLog(EventList& events) : events_(events) {}

  void Write(const std::filesystem::path& folder, const std::string& record);

 private:
  EventList& events_;
  std::string reported_;
};

}  // namespace orvalis
