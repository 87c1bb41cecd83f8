#include "logs/log_writer.h"

#include <atomic>
#include <fstream>
#include <thread>

#include "reading/frame_interpreter.h"
#include "tests/support/log_fixture.h"

namespace orvalis {
namespace {

namespace fs = std::filesystem;

class LogWriterTest : public test::LogFixture {
 protected:
  LogEntry Entry(std::string_view line) {
    frame = SensorFrame(line);
    FrameInterpreter interpreter;
    FrameInterpreter::ReadSwitches(frame, weather);
    interpreter.ReadRainLightAndWind(frame, settings, weather);
    interpreter.Interpret(frame, settings, 200, weather);
    return {.time = clock.LocalNow(), .weather = weather, .frame = frame, .safe = line != kWetDemoLine};
  }

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
  weather.ambient_known = false;
  EXPECT_TRUE(OneLineRecord(dry, rain).ends_with(" 046347.87784 0 2 1 1 0"));
}

TEST_F(LogWriterTest, ASilenceClosesTheRoofInRecordsOfUnknownConditions) {
  settings.g_lOneLineLog = 1;
  settings.g_sOneLineLogPath = folder.string();
  observer.Listen([this](const Observation& now, const Observer::News& news) {
    if (!now.verdict.safe) poll.KeepRecord(news.verdict);
  });
  Connect(16);
  const auto record = [this] {
    const std::string content = Content("orvalis_single.txt");
    return content.substr(0, content.find_first_of("\r\n"));
  };
  const std::string fresh = record();
  EXPECT_TRUE(fresh.ends_with(" 0 0     0 046347.87784 1 3 1 1 0")) << fresh;
  Silence(11);
  EXPECT_TRUE(record().ends_with(" 0 0    10 046347.87784 0 0 0 0 1")) << record();
  Silence(3);  // a record every two seconds
  EXPECT_TRUE(record().ends_with(" 0 0    14 046347.87784 0 0 0 0 1")) << record();
}

TEST_F(LogWriterTest, TheFullLineHasEveryLabelInOrder) {
  EXPECT_EQ(FullLogLine(Entry(test::LiveFrame())),
            "2026-11-21 21:04:05 WingAvg = 18.0 Gusts = 18.0 Rain = 120 TpT = 6.0 AmbT = 5.0 DpT = -4.9 RH = 49 "
            "MeasSky = -20.0 CalcSky = -20.2 Diff = 25.0 TPraw = -2000 Hraw = 520 Brght = 1000 HTRaL = 1 HTRoN = 0 "
            "RLYaL = 1 RLYoN = 0 ALght = 0 AWnd = 1");
}

TEST_F(LogWriterTest, TheFullLogAppendsAndMendsAHalfLine) {
  std::ofstream(folder / "Orvalis.txt", std::ios::binary) << "old\nhalf a li";
  RotatingLog log = OpenFullLog();
  log.Write("new");
  EXPECT_EQ(Content("Orvalis.txt"), "old\nhalf a li\nnew\n");
}

TEST_F(LogWriterTest, TheFullLogIsBoundedAndKeepsFiveFormerOnes) {
  RotatingLog log = OpenFullLog(10);
  for (int i = 0; i < 9; ++i) log.Write("line " + std::to_string(i));
  EXPECT_EQ(Content("Orvalis.txt"), "line 8\n");
  EXPECT_EQ(Content("Orvalis.txt.1"), "line 7\n");
  EXPECT_EQ(Content("Orvalis.txt.5"), "line 3\n");
  EXPECT_FALSE(fs::exists(folder / "Orvalis.txt.6"));
  EXPECT_TRUE(events.events().empty());
}

#ifndef _WIN32  // which lets nobody move or remove an open file
TEST_F(LogWriterTest, TheFullLogOutlivesItsFolder) {
  RotatingLog log = OpenFullLog();
  log.Write("one");
  fs::remove_all(folder);
  log.Write("two");
  log.Write("three");
  EXPECT_EQ(events.events().size(), 1u);
  EXPECT_TRUE(LastEvent().starts_with("cannot write the full log " + folder.string()));
  fs::create_directories(folder);
  log.Write("four");
  EXPECT_EQ(Content("Orvalis.txt"), "four\n");
  EXPECT_EQ(LastEvent(), "the full log is being written again");
  fs::rename(folder / "Orvalis.txt", folder / "moved.txt");
  log.Write("five");
  EXPECT_EQ(Content("Orvalis.txt"), "five\n");
}

// /dev/full takes every open and refuses every byte, like a disk without room.
TEST_F(LogWriterTest, AFullDiskIsListedOnceAndMended) {
  fs::create_symlink("/dev/full", folder / "Orvalis.txt");
  RotatingLog log = OpenFullLog();
  for (int i = 0; i < 5; ++i) log.Write("lost");
  ASSERT_EQ(events.events().size(), 1u);
  EXPECT_NE(LastEvent().find("disk full"), std::string::npos);
  fs::remove(folder / "Orvalis.txt");
  log.Write("kept");
  EXPECT_EQ(Content("Orvalis.txt"), "kept\n");
}

TEST_F(LogWriterTest, AReaderNeverFindsAnEmptyOrHalfRecord) {
  OneLineLog log([this](const std::string& text) { events.Record(text); });
  const std::string records[] = {std::string(100, 'a'), std::string(100, 'b')};
  log.Write(folder, records[0]);
  std::atomic<bool> reading = true;
  std::atomic<int> bad = 0;
  std::thread reader([&] {
    while (reading) {
      const std::string content = Content("orvalis_single.txt");
      if (content != records[0] + "\n" && content != records[1] + "\n") ++bad;
    }
  });
  for (int i = 0; i < 3000; ++i) log.Write(folder, records[i % 2]);
  reading = false;
  reader.join();
  EXPECT_EQ(bad, 0);
  for (int i = 0; i < 2; ++i) log.Write(folder / "nowhere", records[0]);
  EXPECT_EQ(events.events().size(), 1u);
  std::filesystem::create_directory(folder / "orvalis_single.txt.new");  // as if there were no room
  log.Write(folder, records[0]);
  EXPECT_FALSE(std::filesystem::exists(folder / "orvalis_single.txt"));
}
#endif

}  // namespace
}  // namespace orvalis
