// A damaged history file: the input is the file. It is opened, read, shown and written to; what cannot be used is set
// aside whole, with a notice.
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "base/run_time_error.h"
#include "history/history_recorder.h"
#include "history/trend.h"
#include "network/curves.h"
#include "platform/sqlite/sqlite_history.h"
#include "tests/fuzz/fuzz.h"
#include "tests/support/fake_event_loop.h"
#include "tests/support/fake_serial_port.h"

namespace orvalis {
namespace {

namespace fs = std::filesystem;
using fuzz::Require;

/// Memory where there is some, because each input makes several files.
fs::path FolderOfProcess() {
  const fs::path memory = "/dev/shm";
  const fs::path parent = fs::is_directory(memory) ? memory : fs::temp_directory_path();
  return parent / ("orvalis-fuzz-history-" + std::to_string(getpid()));
}

struct Folder {
  Folder() { fs::create_directory(path); }
  ~Folder() { fs::remove_all(path); }
  const fs::path path = FolderOfProcess();
};

std::string ContentOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

/// Everything that draws and serves what was read.
void Show(const HistoryRecorder& recorder, std::int64_t now) {
  static_cast<void>(TrendsOf(recorder.Shown(), now, {}));
  for (const std::int64_t hours : {1, 48}) {
    const TimeRange range{now - hours * History::kHourMs, now};
    const std::string json = network::HistoryJson(recorder.View(), {.range = range, .points = 100}, {});
    Require(json.starts_with('{') && json.ends_with('}'), "the curves are served", json);
    static_cast<void>(VerdictDuring(recorder.View(), range));
  }
}

class Damaged {
 public:
  void Run() {
    recorder_.LoadSoon();
    loop_.Advance(std::chrono::seconds(1));
    Show(recorder_, recorder_.Now());
    ReadPast();
    Record();
    Show(recorder_, recorder_.Now());
    loop_.Advance(std::chrono::minutes(62));  // beyond the first removal of what is old
    recorder_.Flush();
  }

  std::vector<std::string> notices;
  std::vector<std::string> reports;

 private:
  void ReadPast() {
    const std::int64_t now = recorder_.Now();
    for (const std::int64_t column_ms : {std::int64_t{0}, std::int64_t{600'000}}) {
      bool done = false;
      reader_.Read({.range = {now - HistoryRecorder::kSpansStoredMs, now + 1}, .column_ms = column_ms},
                   [&](PastReader::Result&&) { done = true; });
      loop_.Advance(std::chrono::seconds(5));
      Require(done, "reading ends");
    }
    try {
      static_cast<void>(reader_.Begin());
    } catch (const RunTimeError&) {
    }
  }

  /// What is recorded now is in the file, or a report says that it is not.
  void Record() {
    const SensorFrame frame(test::LiveFrame());
    WeatherState weather;
    weather.sky_celsius = -20.25;
    recorder_.Note(weather, frame);
    Observation now;
    now.time = recorder_.Now();
    recorder_.NoteVerdict(now);
    const std::size_t before = reports.size();
    recorder_.Flush();
    if (reports.size() != before || !reports.empty()) return;
    const auto part = store_.Load(now.time - 1000, now.time - 1000, now.time);
    const auto is_ours = [&](const Sample& sample) {
      return sample.time == now.time && sample.values[Quantity::kSky] == -20.25F;
    };
    Require(std::ranges::any_of(part.samples, is_ours), "what was recorded is there");
    Require(!part.verdicts.empty() && part.verdicts.back().first == now.time, "the verdict is there");
  }

  test::FakeEventLoop loop_;
  test::FakeClock clock_;
  SqliteHistory store_{FolderOfProcess() / "history.sqlite", clock_,
                       [this](const std::string& text) { notices.push_back(text); }};
  HistoryRecorder recorder_{
      {.loop = loop_, .clock = clock_, .store = store_, .report = [this](const std::string& text) {
         reports.push_back(text);
       }}};
  PastReader reader_{recorder_.Store()};
};

}  // namespace
}  // namespace orvalis

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orvalis;
  const Folder folder;
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  std::ofstream(folder.path / "history.sqlite", std::ios::binary) << bytes;
  std::size_t notices = 0;
  {
    Damaged damaged;
    damaged.Run();
    notices = damaged.notices.size();
  }
  std::size_t aside = 0;
  for (const auto& entry : fs::directory_iterator(folder.path)) {
    const std::string name = entry.path().filename().string();
    if (!name.starts_with("history-damaged") || !name.ends_with(".sqlite")) continue;
    ++aside;
  }
  Require(aside == notices, "what is set aside is told, and there");
  if (notices == 1)
    Require(ContentOf(folder.path / "history-damaged-2026-11-21.sqlite").size() >= size, "nothing of it is lost");
  return 0;
}
