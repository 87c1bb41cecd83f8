#pragma once

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "tests/support/link_fixture.h"

namespace orvalis::test {

/// A folder of the test's own for the logs, with a blank in its name.
class LogFixture : public LinkFixture {
 protected:
  LogFixture() { std::filesystem::create_directories(folder); }
  ~LogFixture() override { std::filesystem::remove_all(base); }

  /// The full log, in files of so many bytes.
  RotatingLog OpenFullLog(std::uintmax_t max_bytes = LogWriter::kFullLog.max_bytes) {
    RotatingLog::Kind kind = LogWriter::kFullLog;
    kind.max_bytes = max_bytes;
    RotatingLog log(kind, [this](const std::string& text) { events.Record(text); });
    log.Open(folder);
    return log;
  }
  /// What is in a file of the folder.
  [[nodiscard]] std::string Content(const std::string& name) const {
    std::ifstream file(folder / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  const std::filesystem::path base =
      std::filesystem::temp_directory_path() /
      ("orvalis-log-" + std::to_string(getpid()) + "-" + testing::UnitTest::GetInstance()->current_test_info()->name());
  const std::filesystem::path folder = base / "log folder";
};

}  // namespace orvalis::test
