// What happens to the logs' files behind the program's back, where the system lets it happen: on others an open file
// can neither be moved nor removed.

#include <atomic>
#include <thread>

#include "logs/log_writer.h"
#include "tests/support/log_fixture.h"

namespace orvalis {
namespace {

namespace fs = std::filesystem;

using LogFaultsTest = test::LogFixture;

TEST_F(LogFaultsTest, TheFullLogOutlivesItsFolder) {
  RotatingLog log = OpenFullLog();
  log.Write("one");
  EXPECT_EQ(Content("Orvalis.txt"), "one\n");
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
TEST_F(LogFaultsTest, AFullDiskIsListedOnceAndMended) {
  fs::create_symlink("/dev/full", folder / "Orvalis.txt");
  RotatingLog log = OpenFullLog();
  for (int i = 0; i < 5; ++i) log.Write("lost");
  ASSERT_EQ(events.events().size(), 1u);
  EXPECT_NE(LastEvent().find("disk full"), std::string::npos);
  fs::remove(folder / "Orvalis.txt");
  log.Write("kept");
  EXPECT_EQ(Content("Orvalis.txt"), "kept\n");
}

TEST_F(LogFaultsTest, AReaderNeverFindsAnEmptyOrHalfRecord) {
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
  log.Write(folder / "nowhere", records[0]);
  log.Write(folder / "nowhere", records[0]);
  EXPECT_EQ(events.events().size(), 1u);
}

}  // namespace
}  // namespace orvalis
