#include "base/task.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "base/clock.h"
#include "base/once_until_mended.h"
#include "base/run_time_error.h"
#include "base/tick_counter.h"
#include "tests/support/fake_event_loop.h"
#include "unit/serial_port_entry.h"

namespace orvalis {
namespace {

using std::chrono::milliseconds;

Task<std::string> Fetch(test::FakeEventLoop& loop, bool fail) {
  co_await Pause(loop, milliseconds(20));
  if (fail) throw RunTimeError(RunTimeError::kPortClosed, "closed");
  co_return "frame";
}

Task<> Work(test::FakeEventLoop& loop, std::string& result) {
  result = co_await Fetch(loop, false);
  try {
    result += co_await Fetch(loop, true);
  } catch (const RunTimeError& error) {
    result += error.what();
  }
  co_await Pause(loop, milliseconds(0));
  result += co_await Fetch(loop, true);
}

TEST(Task, ValuesAndErrorsReachTheAwaiter) {
  test::FakeEventLoop loop;
  std::string result;
  std::exception_ptr ended_with;
  Job job;
  job.Start(Work(loop, result), [&](std::exception_ptr error) { ended_with = std::move(error); });
  loop.Advance(milliseconds(19));
  EXPECT_EQ(result, "");
  loop.Advance(milliseconds(1));
  EXPECT_EQ(result, "frame");
  loop.Advance(milliseconds(20));
  EXPECT_EQ(result, "frameclosed");
  EXPECT_TRUE(job.running());
  loop.Advance(milliseconds(20));
  EXPECT_FALSE(job.running());
  EXPECT_THROW(std::rethrow_exception(ended_with), RunTimeError);
}

// The program ends while a task waits: nothing may call into it afterwards.
TEST(Task, DestroyingTheJobTakesItsTimersBack) {
  test::FakeEventLoop loop;
  std::string result;
  {
    Job job;
    job.Start(Work(loop, result), [](const std::exception_ptr&) { FAIL() << "abandoned, not ended"; });
    EXPECT_EQ(loop.waiting(), 1u);
  }
  EXPECT_EQ(loop.waiting(), 0u);
}

TEST(Pause, BeyondTheTickCountIsAnError) {
  test::FakeEventLoop loop;
  EXPECT_THROW(static_cast<void>(Pause(loop, milliseconds(std::numeric_limits<std::int64_t>::max()))), RunTimeError);
}

TEST(TickCounter, StopsAtItsLimitAndNeverWraps) {
  TickCounter counter;
  for (int i = 0; i < 100'000; ++i) counter.RaiseUpTo(600);
  EXPECT_EQ(counter.ticks(), 600);
  for (int i = 600; i < 32767; ++i) counter.Raise();
  EXPECT_THROW(counter.Raise(), RunTimeError);
  EXPECT_EQ(counter.ticks(), 32767);
}

TEST(Clock, WritesDatesAsEachReaderExpects) {
  const CivilTime midnight{2026, 1, 2, 0, 5, 9, 7, -150};
  EXPECT_EQ(FormatEventTime(midnight), "01/02/2026 12:05 AM");
  EXPECT_EQ(FormatIso8601(midnight), "2026-01-02T00:05:09.007-02:30");
  CivilTime noon = midnight;
  noon.hour = 12;
  EXPECT_EQ(FormatEventTime(noon), "01/02/2026 12:05 PM");
  noon.hour = 23;
  noon.utc_offset_minutes = 60;
  EXPECT_EQ(FormatEventTime(noon), "01/02/2026 11:05 PM");
  EXPECT_EQ(FormatIso8601(noon), "2026-01-02T23:05:09.007+01:00");
  EXPECT_EQ(FormatTime(noon, "YYYY-MM-DD+hh:nn.ss.00"), "2026-01-02+23:05.09.00");
}

TEST(OnceUntilMended, SaysEachTroubleOnceAndItsEndOnce) {
  OnceUntilMended trouble;
  EXPECT_FALSE(trouble.Mended());
  EXPECT_TRUE(trouble.IsNews("full"));
  EXPECT_FALSE(trouble.IsNews("full"));
  trouble.Repeat();
  EXPECT_TRUE(trouble.IsNews("full"));
  EXPECT_FALSE(trouble.IsNews("full"));
  EXPECT_TRUE(trouble.IsNews("gone"));
  EXPECT_EQ(trouble.standing(), "gone");
  EXPECT_TRUE(trouble.Mended());
  EXPECT_FALSE(trouble.Mended());
  EXPECT_TRUE(trouble.IsNews("gone"));
}

TEST(SerialPortEntries, TheConnectedOneIsSaidToBeUnderEachOfItsNames) {
  const auto listed = [](const std::string& chosen, const std::string& device) {
    const auto same = [&](const std::string& name) {
      return name == device || (name == "2" && device == "/dev/ttyS1");
    };
    std::string all;
    for (const auto& port : WithConnected({{"/dev/ttyS1", ""}, {"/dev/ttyUSB0", "FTDI"}}, chosen, device, same)) {
      all += port.name + " " + port.description + "; ";
    }
    return all;
  };
  EXPECT_EQ(listed("/dev/ttyUSB0", "/dev/ttyUSB0"), "/dev/ttyS1 ; /dev/ttyUSB0 FTDI, connected; ");
  EXPECT_EQ(listed("2", "/dev/ttyS1"), "/dev/ttyS1 Connected; /dev/ttyUSB0 FTDI; 2 Connected; ");
  EXPECT_EQ(listed("2", "/dev/pts/7"), "/dev/ttyS1 ; /dev/ttyUSB0 FTDI; /dev/pts/7 Connected; ");  // by --port
}

}  // namespace
}  // namespace orvalis
