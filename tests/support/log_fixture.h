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

  [[nodiscard]] static std::string Content(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  const std::filesystem::path base =
      std::filesystem::temp_directory_path() /
      ("orvalis-log-" + std::to_string(getpid()) + "-" + testing::UnitTest::GetInstance()->current_test_info()->name());
  const std::filesystem::path folder = base / "log folder";
};

}  // namespace orvalis::test
