#include <algorithm>
#include <cstdio>
#include <random>

#include "tests/support/link_fixture.h"

namespace orvalis {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

/// The age of every frame that is used, on lines that keep what the unit sends.
class LateAnswersTest : public test::LinkFixture {
 protected:
  LateAnswersTest() {
    port.measure = [this] {  // each frame tells when it was measured, in milliseconds, in a field that is not read
      char text[32];
      std::snprintf(text, sizeof text, "Trg=%012lld#", static_cast<long long>(loop.TickCount() - start));
      std::string frame = test::LiveFrame();
      return frame.replace(frame.find("Trg="), 17, text);
    };
    poll.Listen([this](const SensorFrame& frame) {
      const auto text = std::string(frame.text());
      oldest = std::max<std::int64_t>(oldest, Now() - std::stoll(text.substr(text.find("Trg=") + 4)));
      last_used = Now();
      ++used;
    });
  }
  [[nodiscard]] std::int64_t Now() const { return loop.TickCount() - start; }
  [[nodiscard]] bool Said(const char* part) const {
    return std::ranges::any_of(EventTexts(), [&](const std::string& text) { return text.find(part) != text.npos; });
  }

  std::int64_t start = loop.TickCount();
  std::int64_t oldest = 0;
  std::int64_t last_used = 0;
  int used = 0;
};

TEST_F(LateAnswersTest, NoFrameIsUsedThatIsOlderThanFiveSeconds) {
  // The delay in milliseconds, between 20 s and 300 s; whether frames are used meanwhile; what is said.
  const std::tuple<const char*, std::int64_t (*)(std::int64_t), bool, const char*> rows[] = {
      {"4.5 s", [](std::int64_t) -> std::int64_t { return 4500; }, true, ""},
      {"6 s", [](std::int64_t) -> std::int64_t { return 6000; }, false, " 6.0 seconds"},
      {"60 s", [](std::int64_t) -> std::int64_t { return 60'000; }, false, " 60.0 seconds"},
      {"stall", [](std::int64_t now) { return std::max<std::int64_t>(0, 80'000 - now); }, true, "came 59."},
      {"bursts each 3 s", [](std::int64_t now) { return 3000 - now % 3000; }, true, ""},
      {"bursts each 45 s", [](std::int64_t now) { return 45'000 - now % 45'000; }, false, "late: "},
  };
  for (const auto& [name, delay, served, event] : rows) {
    SCOPED_TRACE(name);
    start = loop.TickCount();
    oldest = used = 0;
    connector.Disconnect();
    port.line_delay = [&, of = delay] { return milliseconds(Now() < 20'000 || Now() >= 300'000 ? 0 : of(Now())); };
    Connect(20);
    used = 0;
    Tick(279);
    EXPECT_EQ(used >= 4, served) << used;
    EXPECT_TRUE(Said(event));
    const std::int64_t again_at = std::max<std::int64_t>(port.line_empty_at - start, 300'000) + 10'000;
    Tick(static_cast<int>((again_at - Now()) / 1000) + 1);
    EXPECT_GE(last_used, again_at - 5000) << "ten seconds are the price";
    EXPECT_LE(oldest, 5000);
  }
}

// Stalls and delays at random, damaged frames, an impatient user at the connect button: thirty hours in all.
TEST_F(LateAnswersTest, NorOnALineThatDoesWhatItLikes) {
  std::mt19937 random(20261121);
  const auto below = [&](std::uint32_t limit) { return static_cast<std::int64_t>(random() % limit); };
  std::int64_t until = 0;
  std::int64_t delay = 0;
  bool stalls = false;
  port.writes_down = false;
  const auto measure = port.measure;
  port.measure = [&] {
    std::string frame = measure();
    if (below(20) == 0) frame.erase(static_cast<std::size_t>(below(117)), 1);  // may be the "#"
    return frame;
  };
  port.line_delay = [&] {
    if (Now() >= until) {
      until = Now() + 1000 * (1 + below(40));
      stalls = below(2) == 0;
      delay = below(3) == 0 ? 100 * below(700) : 10 * below(20);
    }
    return milliseconds(stalls ? std::min(until - Now(), delay) : delay);
  };
  for (int i = 0; i < 108'000; ++i) {
    if (!link.Connected() && !connector.connecting()) connector.Connect();
    if (below(100) == 0) connector.Disconnect();
    Tick(1);
  }
  EXPECT_GT(used, 5000);
  EXPECT_LE(oldest, 5000);
}

// Another program asked, and was killed: its "W" and its frame come as if they were the answers to the connecting.
TEST_F(LateAnswersTest, NorWhatAnEarlierProgramLeftInTheLine) {
  const std::string old = test::LiveFrame("AL=1");
  // When each of the two comes after the connecting begins, and the delay of what this program asks: milliseconds.
  const std::tuple<int, int, int, const char*> rows[] = {{200, 600, 8000, "late: "},
                                                         {2000, 3500, 30'000, "delays the unit's answers"},
                                                         {2000, 3500, 3000, "connected"},
                                                         {1, 1, 50, "connected"}};
  for (const auto& [greeting, frame, delay, outcome] : rows) {
    SCOPED_TRACE(outcome);
    port.line_delay = [after = greeting] { return milliseconds(after); };
    port.Send("W");
    port.line_delay = [after = frame] { return milliseconds(after); };
    port.Send(old);
    port.line_delay = [after = delay] { return milliseconds(after); };
    connector.Connect();
    Tick(120);
    EXPECT_TRUE(Said(outcome));
    EXPECT_LE(oldest, 5000);
    EXPECT_FALSE(delay < 5000 && options.allow_light) << "as the unit had it long ago";
    connector.Disconnect();
    loop.Advance(seconds(60));
  }
}

}  // namespace
}  // namespace orvalis
