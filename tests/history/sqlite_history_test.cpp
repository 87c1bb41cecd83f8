#include "platform/sqlite/sqlite_history.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <fstream>
#include <string>
#include <vector>

#include "tests/support/error_of.h"
#include "tests/support/fake_event_loop.h"
#include "tests/support/full_disk.h"

namespace orvalis {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t kNoon = 1'795'262'400'000;
constexpr std::int64_t kHour = 3'600'000;
constexpr std::int64_t kStep = 2000;

/// Removed behind what is declared after it: Windows lets nobody take away an open file.
struct FolderOfTest {
  ~FolderOfTest() { fs::remove_all(path); }
  const fs::path path = fs::temp_directory_path() / ("orvalis-history-" + std::to_string(getpid()) + "-" +
                                                     testing::UnitTest::GetInstance()->current_test_info()->name());
};

class SqliteHistoryTest : public testing::Test {
 protected:
  static Sample Reading(std::int64_t time, float sky = -20.07F) {
    Sample sample{.time = time, .values = {}, .held = SmallSet<Quantity>::FromBits(257), .conditions = {}};
    sample.conditions.Put(Condition::kUnsafe);
    sample.values[Quantity::kSky] = sky;
    sample.values[Quantity::kHumidity] = 118.55F;
    sample.values[Quantity::kLight] = 1023;
    return sample;
  }
  static HistoryStore::Batch BatchOf(std::vector<Sample> samples) {
    HistoryStore::Batch batch{.follows = {}, .samples = std::move(samples), .spans = {}};
    for (const Sample& sample : batch.samples) {
      if (batch.spans.empty() || !Absorb(batch.spans.back(), sample)) batch.spans.push_back(SpanOf(sample));
    }
    return batch;
  }
  /// In seconds from noon; safe without reasons.
  static RecordedVerdict Verdict(std::int64_t first, std::int64_t last, const char* reasons = "") {
    return {.first = kNoon + first * 1000,
            .last = kNoon + last * 1000,
            .safe = *reasons == 0,
            .source = ReadingSource::kUnit,
            .reasons = reasons,
            .explanation = "rain, limit 350; \"it's\""};
  }
  void WriteVerdicts(std::vector<RecordedVerdict> verdicts) {
    history.Write({.follows = {}, .samples = {}, .spans = {}, .verdicts = std::move(verdicts)});
  }
  [[nodiscard]] static std::vector<Sample> SamplesOf(SqliteHistory& history) {
    return history.Load(0, kNoon - 24 * kHour, kNoon + 24 * kHour).samples;
  }

  const FolderOfTest made{};
  const fs::path& folder = made.path;
  const fs::path file = folder / u8"a folder ö" / "history.sqlite";
  test::FakeClock clock;
  std::vector<std::string> notices;
  SqliteHistory history{file, clock, [this](const std::string& text) { notices.push_back(text); }};
};

TEST_F(SqliteHistoryTest, GivesBackWhatItWasGivenAndForgetsWhatIsOld) {
  EXPECT_TRUE(SamplesOf(history).empty());
  EXPECT_FALSE(fs::exists(file));  // made with the first value
  history.Write(BatchOf({Reading(kNoon - 1000 * kHour), Reading(kNoon - 30 * kHour),
                         Reading(kNoon - 30 * kHour + 2000, 3), Reading(kNoon)}));
#ifndef _WIN32
  for (const char* suffix : {"", "-wal", "-shm"}) {
    EXPECT_EQ(fs::status(fs::path(file) += suffix).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  }
#endif
  SqliteHistory again(file, clock, {});
  const auto part = again.Load(kNoon - 48 * kHour, kNoon - 24 * kHour, kNoon + kHour);
  ASSERT_EQ(part.spans.size(), 1u);
  EXPECT_EQ(part.spans[0].last - part.spans[0].first, 2000);
  EXPECT_FLOAT_EQ(part.spans[0].lowest[Quantity::kSky], -20.07F);
  EXPECT_FLOAT_EQ(part.spans[0].highest[Quantity::kSky], 3);
  EXPECT_FLOAT_EQ(part.samples.at(0).values[Quantity::kHumidity], 118.55F);
  EXPECT_FALSE(part.samples[0].values.Knows(Quantity::kWind));
  EXPECT_FLOAT_EQ(part.samples[0].values[Quantity::kLight], 1023);
  EXPECT_EQ(part.samples[0].held.bits(), 257);
  EXPECT_TRUE(part.samples[0].conditions.Has(Condition::kUnsafe));
  EXPECT_EQ(again.Begin(), kNoon - 1000 * kHour);
  const auto some = again.Spans(kNoon - 999 * kHour, kNoon + 1, 2);
  ASSERT_EQ(some.size(), 2u);
  EXPECT_EQ(some[1].first, kNoon);
  EXPECT_EQ(again.Spans(kNoon - 999 * kHour, kNoon, 2).size(), 1u);
  again.Forget(kNoon - 29 * kHour, kNoon - 400 * kHour);
  EXPECT_EQ(again.Load(0, kNoon - 24 * kHour, kNoon).spans.size(), 1u);
  EXPECT_EQ(again.Load(0, 0, kNoon).samples.size(), 1u);
}

TEST_F(SqliteHistoryTest, WhereTheClockWasSetBackTheLaterOnesStand) {
  history.Write(
      BatchOf({Reading(kNoon, 1), Reading(kNoon + 2000, 1), Reading(kNoon + 4000, 1), Reading(kNoon + 6000, 1)}));
  history.Write(BatchOf({Reading(kNoon + 1000, 2), Reading(kNoon + 3000, 2)}));
  HistoryStore::Batch batch = BatchOf({Reading(kNoon + 5000, 2)});
  batch.follows = kNoon + 3000;
  history.Write(batch);
  std::string skies;
  for (const Sample& sample : SamplesOf(history)) skies += std::to_string(std::lround(sample.values[Quantity::kSky]));
  EXPECT_EQ(skies, "12221");
  // Of the spans, each of which replaces one with the same beginning, the older one ends where the younger begins.
  const auto part = history.Load(0, kNoon + kHour, kNoon + kHour);
  std::string spans;
  for (const Span& span : part.spans) {
    spans += std::to_string(span.first - kNoon) + "-" + std::to_string(span.last - kNoon) + ":" +
             std::to_string(std::lround(span.highest[Quantity::kSky])) + " ";
  }
  EXPECT_EQ(spans, "0-999:1 1000-3000:2 5000-5000:2 ");
}

TEST_F(SqliteHistoryTest, ASpanAcrossTheLimitLeavesNoHole) {
  std::vector<Sample> samples;
  for (int i = 0; i < 90; ++i) samples.push_back(Reading(kNoon + kStep * i));
  history.Write(BatchOf(samples));
  const auto part = history.Load(0, kNoon + 70'000, kNoon + kHour);  // in the middle of the second span
  ASSERT_EQ(part.spans.size(), 1u);
  EXPECT_EQ(part.spans[0].last, kNoon + 58'000);
  EXPECT_EQ(part.samples.at(0).time, kNoon + 60'000);
}

/// "safe", or the reasons, and how many seconds after noon it was so.
std::string Text(const std::vector<RecordedVerdict>& verdicts) {
  std::string text;
  for (const RecordedVerdict& verdict : verdicts) {
    text += (verdict.safe ? "safe" : verdict.reasons) + " " + std::to_string((verdict.first - kNoon) / 1000) + "-" +
            std::to_string((verdict.last - kNoon) / 1000) + ", ";
  }
  return text;
}

TEST_F(SqliteHistoryTest, KeepsVerdictsAndTheLaterOneWhereTwoClaimATime) {
  const RecordedVerdict rain = Verdict(40, 60, "rain unit_alarm");
  WriteVerdicts({Verdict(-180'000, 40), rain});
  WriteVerdicts({Verdict(40, 90, "rain unit_alarm"), Verdict(90, 95)});  // it went on
  const auto all = [&](std::int64_t from = 0) { return history.Load(from, kNoon, kNoon + kHour).verdicts; };
  EXPECT_EQ(Text(all(kNoon - kHour)), "safe -180000-40, rain unit_alarm 40-90, safe 90-95, ");
  EXPECT_EQ(Text(all(kNoon + 91'000)), "safe 90-95, ");
  EXPECT_EQ(Text(history.Verdicts(kNoon + 35'000, kNoon + kHour, 2)), "safe -180000-40, rain unit_alarm 40-90, ");
  RecordedVerdict read = all()[1];
  read.last = rain.last;
  EXPECT_EQ(read, rain);
  WriteVerdicts({Verdict(20, 30, "a_reason_of_a_later_version"), Verdict(30, 92, "wind")});  // the clock was set back
  EXPECT_EQ(Text(all()), "safe -180000-20, a_reason_of_a_later_version 20-30, wind 30-92, ");
}

TEST_F(SqliteHistoryTest, KeepsNoMoreVerdictsThanAHundredThousandOrFourHundredDays) {
  std::vector<RecordedVerdict> many;
  for (int i = 0; i < 100'010; ++i) many.push_back(Verdict(i, i + 1));
  WriteVerdicts(many);
  history.Forget(0, kNoon + 5000);
  EXPECT_EQ(history.Load(0, 0, kNoon + 100 * kHour).verdicts.size(), VerdictHistory::kMostKept);
  EXPECT_EQ(Text(history.Load(0, 0, kNoon + 11'000).verdicts), "safe 10-11, safe 11-12, ");
  history.Forget(0, kNoon + 100'008'500);
  EXPECT_EQ(Text(history.Load(0, 0, kNoon + 100 * kHour).verdicts), "safe 100008-100009, safe 100009-100010, ");
}

TEST_F(SqliteHistoryTest, TakesOverOlderFilesAndLeavesANewerOneAlone) {
  fs::create_directories(file.parent_path());
  for (const int layout : {1, 2}) {
    // As the first layouts were made.
    fs::remove(file);
    Database old(file);
    const std::string values = "sky, clear_sky, ambient, dew_point, wind, gust, humidity";
    old.Execute("CREATE TABLE cycle (time INTEGER PRIMARY KEY, conditions INTEGER NOT NULL, held INTEGER NOT NULL, " +
                values + ")");
    old.Execute(
        "CREATE TABLE span (first INTEGER PRIMARY KEY, last INTEGER NOT NULL, conditions INTEGER NOT NULL, held "
        "INTEGER NOT NULL, sky_low, clear_sky_low, ambient_low, dew_point_low, wind_low, gust_low, humidity_low, "
        "sky_high, clear_sky_high, ambient_high, dew_point_high, wind_high, gust_high, humidity_high)");
    old.Execute("INSERT INTO cycle (time, conditions, held, sky) VALUES (1795262400000, 17, 0, -2007)");
    old.Execute(
        "INSERT INTO span (first, last, conditions, held, wind_high) VALUES (1795161600000, 1795161650000, 1, "
        "0, 990)");
    if (layout == 2) {
      old.Execute("CREATE TABLE verdict (time INTEGER PRIMARY KEY, until, safe, source, reasons, explanation)");
      old.Execute("INSERT INTO verdict VALUES (1795262390000, 1795262391000, 0, 'unit', 'rain', '')");
    }
    old.Execute("PRAGMA user_version = " + std::to_string(layout));
    SqliteHistory taken(file, clock, {});
    taken.Write({.follows = {}, .samples = {Reading(kNoon + kStep)}, .spans = {}, .verdicts = {Verdict(0, 1)}});
    const auto part = taken.Load(0, kNoon - kHour, kNoon + kHour);
    ASSERT_EQ(part.samples.size(), 2u);
    EXPECT_FLOAT_EQ(part.samples[0].values[Quantity::kSky], -20.07F);
    EXPECT_EQ(part.samples[0].conditions.bits(), 17);
    EXPECT_FALSE(part.samples[0].values.Knows(Quantity::kLight));
    EXPECT_FLOAT_EQ(part.samples[1].values[Quantity::kLight], 1023);
    ASSERT_EQ(part.spans.size(), 1u);
    EXPECT_FLOAT_EQ(part.spans[0].highest[Quantity::kWind], 9.9F);
    EXPECT_FALSE(part.spans[0].highest.Knows(Quantity::kRain));
    EXPECT_EQ(Text(part.verdicts), layout == 2 ? "rain -10--9, safe 0-1, " : "safe 0-1, ");
  }

  SqliteHistory later(file, clock, {});
  Database(file).Execute("PRAGMA user_version = 4");
  EXPECT_THROW(later.Write(BatchOf({Reading(kNoon + 4000)})), RunTimeError);
  Database(file).Execute("PRAGMA user_version = 3");
  EXPECT_EQ(SamplesOf(later).size(), 2u);
  EXPECT_TRUE(notices.empty());
}

// Each row spoils the file in another way.
TEST_F(SqliteHistoryTest, ADamagedFileIsSetAsideAndNeverOverwritten) {
  const auto overwrite = [&](std::streamoff from, std::size_t count) {
    std::fstream spoiled(file, std::ios::in | std::ios::out | std::ios::binary);
    spoiled.seekp(from);
    spoiled << std::string(count, 'x');
  };
  std::vector<Sample> many;
  for (int i = 0; i < 2000; ++i) many.push_back(Reading(kNoon - kStep * i));
  const std::function<void()> damages[] = {
      [&] { overwrite(0, 100); },                                     // no database any more
      [&] { overwrite(8192, 8192); },                                 // pages in the middle
      [&] { fs::resize_file(file, fs::file_size(file) / 2 + 100); },  // cut off
      [&] { Database(file).Execute("ALTER TABLE span RENAME COLUMN wind_low TO wynd_low"); },
  };
  for (std::size_t i = 0; i < std::size(damages); ++i) {
    { SqliteHistory(file, clock, {}).Write(BatchOf(many)); }
    damages[i]();
    {
      SqliteHistory damaged(file, clock, [this](const std::string& text) { notices.push_back(text); });
      EXPECT_TRUE(SamplesOf(damaged).empty()) << i;
      ASSERT_EQ(notices.size(), i + 1);
      const std::string name = "history-damaged-2026-11-21" + (i == 0 ? "" : "-" + std::to_string(i + 1)) + ".sqlite";
      EXPECT_TRUE(fs::exists(file.parent_path() / name)) << name;
      EXPECT_NE(notices.back().find(name), std::string::npos) << notices.back();
      damaged.Write(BatchOf({Reading(kNoon)}));
      EXPECT_EQ(SamplesOf(damaged).size(), 1u) << i;
    }
    fs::remove(file);
  }
}

#ifndef _WIN32  // Windows lets nobody take an open file away, and limits no process's files
TEST_F(SqliteHistoryTest, AFileThatIsTakenAwayIsMadeAgain) {
  history.Write(BatchOf({Reading(kNoon)}));
  fs::rename(file, file.parent_path() / "moved.sqlite");
  history.Write(BatchOf({Reading(kNoon + 2000)}));
  EXPECT_EQ(SamplesOf(history).size(), 1u);
  EXPECT_TRUE(fs::exists(file));
}

TEST_F(SqliteHistoryTest, AFullDiskAndAMissingFolderAreSaidAndMended) {
  const auto message = [&](const std::vector<Sample>& samples) {
    std::string text;
    (void)test::ErrorOf([&] { history.Write(BatchOf(samples)); }, &text);
    return text;
  };
  std::ofstream(folder) << "a file where the folder has to be";
  EXPECT_TRUE(message({Reading(kNoon)}).starts_with("cannot store the history " + file.string() + ": "));
  fs::remove(folder);
  EXPECT_EQ(message({Reading(kNoon)}), "");

  std::vector<Sample> many;
  for (int i = 1; i < 5000; ++i) many.push_back(Reading(kNoon + kStep * i));
  const std::string full = [&] {
    const test::FullDisk disk(60'000);
    return message(many);
  }();
  EXPECT_TRUE(full.starts_with("cannot store the history ")) << full;
  EXPECT_EQ(SamplesOf(history).size(), 1u);  // all of it or nothing
  EXPECT_EQ(message(many), "");
  EXPECT_EQ(SamplesOf(history).size(), 5000u);
  EXPECT_TRUE(notices.empty());
}
#endif

}  // namespace
}  // namespace orvalis
