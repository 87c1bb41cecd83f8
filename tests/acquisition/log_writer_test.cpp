#include "acquisition/log_writer.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include "acquisition/frame_interpreter.h"
#include "tests/support/link_fixture.h"

namespace orvalis {
namespace {

namespace fs = std::filesystem;

std::string Content(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

class LogWriterTest : public test::LinkFixture {
 protected:
  LogWriterTest() { fs::create_directories(folder); }
  ~LogWriterTest() override { fs::remove_all(base); }

  LogEntry Entry(std::string_view line) {
    frame = SensorFrame(line);
    FrameInterpreter interpreter;
    FrameInterpreter::ReadSwitches(frame, weather);
    interpreter.Interpret(frame, settings, 200, weather);
    return {.time = clock.LocalNow(), .weather = weather, .frame = frame};
  }

  RotatingLog Log(std::uintmax_t max_bytes) {
    RotatingLog::Kind kind = LogWriter::kFullLog;
    kind.max_bytes = max_bytes;
    return {kind, [this](const std::string& text) { events.Record(text); }};
  }

  const fs::path base = fs::temp_directory_path() / ("orvalis-log-" + std::to_string(getpid()) + "-" +
                                                     testing::UnitTest::GetInstance()->current_test_info()->name());
  const fs::path folder = base / "log folder";
  SensorFrame frame;
};

// Worked by hand: the wet line's figures with bc, the day count with Python's calendar.
TEST_F(LogWriterTest, TheRecordStandsInItsColumns) {
  RainMemory rain;
  const LogEntry wet = Entry(kWetDemoLine);
  rain.Note(weather, 0);
  EXPECT_EQ(OneLineRecord(wet, rain),
            "2026-11-21 21:04.05.00 C M   -5.0   15.0   10.0   90.0  76     11 100 2 2     0 046347.87784 3 3 3 3 1");
  const LogEntry dry = Entry(kDryDemoLine);
  rain.Note(weather, 60'000);
  EXPECT_EQ(OneLineRecord(dry, rain),
            "2026-11-21 21:04.05.00 C M  -15.0    5.0    1.0    9.0 -29      5   0 1 1     0 046347.87784 3 2 2 1 0");
  rain.Note(weather, 60'001);
  EXPECT_TRUE(OneLineRecord(dry, rain).ends_with(" 0 0     0 046347.87784 3 2 1 1 0"));
}

TEST_F(LogWriterTest, TheFullLineHasEveryLabelInOrder) {
  EXPECT_EQ(FullLogLine(Entry(test::LiveFrame())),
            "2026-11-21 21:04:05 WingAvg = 18.0 Gusts = 18.0 Rain = 120 TpT = 6.0 AmbT = 5.0 DpT = -4.9 RH = 49 "
            "MeasSky = -20.0 CalcSky = -20.2 Diff = 25.0 TPraw = -2000 Hraw = 520 Brght = 1000 HTRaL = 1 HTRoN = 0 "
            "RLYaL = 1 RLYoN = 0 ALght = 0 AWnd = 1");
}

TEST_F(LogWriterTest, TheFullLogOutlivesItsFolder) {
  RotatingLog log = Log(LogWriter::kFullLog.max_bytes);
  log.Open(folder);
  log.Write("one");
  EXPECT_EQ(Content(folder / "Orvalis.txt"), "one\n");
  fs::remove_all(folder);
  log.Write("two");
  log.Write("three");
  EXPECT_EQ(events.events().size(), 1u);
  EXPECT_TRUE(events.events().back().text.starts_with("cannot write the full log " + folder.string()));
  fs::create_directories(folder);
  log.Write("four");
  EXPECT_EQ(Content(folder / "Orvalis.txt"), "four\n");
  EXPECT_EQ(events.events().back().text, "the full log is written again");
  fs::rename(folder / "Orvalis.txt", folder / "moved.txt");
  log.Write("five");
  EXPECT_EQ(Content(folder / "Orvalis.txt"), "five\n");
}

TEST_F(LogWriterTest, TheFullLogAppendsAndMendsAHalfLine) {
  std::ofstream(folder / "Orvalis.txt") << "old\nhalf a li";
  RotatingLog log = Log(LogWriter::kFullLog.max_bytes);
  log.Open(folder);
  log.Write("new");
  EXPECT_EQ(Content(folder / "Orvalis.txt"), "old\nhalf a li\nnew\n");
}

TEST_F(LogWriterTest, TheFullLogIsBoundedAndKeepsFiveFormerOnes) {
  RotatingLog log = Log(10);
  log.Open(folder);
  for (int i = 0; i < 9; ++i) log.Write("line " + std::to_string(i));
  EXPECT_EQ(Content(folder / "Orvalis.txt"), "line 8\n");
  EXPECT_EQ(Content(folder / "Orvalis.txt.1"), "line 7\n");
  EXPECT_EQ(Content(folder / "Orvalis.txt.5"), "line 3\n");
  EXPECT_FALSE(fs::exists(folder / "Orvalis.txt.6"));
  EXPECT_TRUE(events.events().empty());
}

// /dev/full takes every open and refuses every byte, like a disk without room.
TEST_F(LogWriterTest, AFullDiskIsListedOnceAndMended) {
  fs::create_symlink("/dev/full", folder / "Orvalis.txt");
  RotatingLog log = Log(LogWriter::kFullLog.max_bytes);
  log.Open(folder);
  for (int i = 0; i < 5; ++i) log.Write("lost");
  ASSERT_EQ(events.events().size(), 1u);
  EXPECT_NE(events.events().back().text.find("disk full"), std::string::npos);
  fs::remove(folder / "Orvalis.txt");
  log.Write("kept");
  EXPECT_EQ(Content(folder / "Orvalis.txt"), "kept\n");
}

TEST_F(LogWriterTest, AReaderNeverFindsAnEmptyOrHalfRecord) {
  OneLineLog log([this](const std::string& text) { events.Record(text); });
  const std::string records[] = {std::string(100, 'a'), std::string(100, 'b')};
  log.Write(folder, records[0]);
  std::atomic<bool> reading = true;
  std::atomic<int> bad = 0;
  std::thread reader([&] {
    while (reading) {
      const std::string content = Content(folder / "orvalis_single.txt");
      if (content != records[0] + "\n" && content != records[1] + "\n") ++bad;
    }
  });
  for (int i = 0; i < 3000; ++i) log.Write(folder, records[i % 2]);
  reading = false;
  reader.join();
  EXPECT_EQ(bad, 0);
  log.Write(folder / "nowhere", records[0]);
  log.Write(folder / "nowhere", records[0]);
  EXPECT_EQ(events.events().size(), 1u);
}

}  // namespace
}  // namespace orvalis
