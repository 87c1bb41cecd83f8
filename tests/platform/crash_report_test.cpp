#include "platform/system/crash_report.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "logs/crash_note.h"
#include "logs/error_log.h"

namespace orvalis {
namespace {

TEST(CrashReportDeathTest, AFaultLeavesABacktraceInTheErrorLogAndTellsTheNextStart) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the sanitizer reports faults itself";
#endif
  const std::filesystem::path folder = std::filesystem::temp_directory_path() / "orvalis crash é";
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  EXPECT_EQ(TakeCrashNote(folder), "");
  const auto strike = [&folder] {
    crash_report::Arm(folder);
#ifdef _WIN32
    std::abort();  // a bad address brings up a debugger there, which waits for a person
#else
    volatile int* volatile nowhere = nullptr;
    *nowhere = 1;
#endif
  };
  EXPECT_DEATH(strike(), "");
  const std::string note = TakeCrashNote(folder);
  EXPECT_NE(note.find("Z  a fault ended the program (version " ORVALIS_VERSION "): "), std::string::npos) << note;
  EXPECT_EQ(TakeCrashNote(folder), "") << "it is said once";
#ifndef _WIN32
  EXPECT_DEATH(
      {
        crash_report::Arm(folder);
        std::abort();
      },
      "");
  EXPECT_NE(TakeCrashNote(folder).find("SIGABRT"), std::string::npos);
#endif
  std::ifstream log(folder / kErrorLogFile);
  const std::string text{std::istreambuf_iterator<char>(log), {}};
  EXPECT_EQ(text.find(note), 0u);
  EXPECT_GT(std::ranges::count(text, '\n'), 4) << text;
  log.close();
  std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace orvalis
