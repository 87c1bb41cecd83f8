#include "transmitter.h"

#include <gtest/gtest.h>

namespace orvalis_unit {
namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;

// Ten bits at 9600 bit/s are 1041.67 microseconds; 117 bytes are 121.875 milliseconds.
TEST(Transmitter, NoByteIsEarlyAndErrorsDoNotAddUp) {
  Transmitter line(9600);
  const Time start = milliseconds(5000);
  line.Queue(std::string(117, 'x'), start);
  EXPECT_EQ(line.TakeDue(start + microseconds(1041)), "");
  EXPECT_EQ(line.TakeDue(start + microseconds(1042)), "x");
  EXPECT_EQ(line.TakeDue(start + microseconds(10416)).size(), 8U) << "nine in all: the tenth is not through";
  EXPECT_EQ(line.TakeDue(start + microseconds(121874)).size(), 107U);
  EXPECT_EQ(line.NextDue(), start + microseconds(121875));
  EXPECT_EQ(line.TakeDue(start + microseconds(121875)), "x");
  EXPECT_EQ(line.NextDue(), std::nullopt);
}

TEST(Transmitter, AnswersFollowEachOther) {
  Transmitter line(9600);
  line.Queue("abc", milliseconds(10));
  line.Queue("d", milliseconds(11));  // while "abc" is on the line, up to 13.125 ms
  EXPECT_EQ(line.TakeDue(microseconds(14166)), "abc");
  EXPECT_EQ(line.TakeDue(microseconds(14167)), "d");
  line.Queue("e", milliseconds(100));  // after a rest
  EXPECT_EQ(line.TakeDue(microseconds(101041)), "");
  EXPECT_EQ(line.TakeDue(microseconds(101042)), "e");
}

TEST(Transmitter, SlowAndFast) {
  Transmitter slow(9600);
  slow.Queue("ab", milliseconds(0), 10);
  EXPECT_EQ(slow.TakeDue(microseconds(20833)), "a");
  EXPECT_EQ(slow.TakeDue(microseconds(20834)), "b");

  Transmitter fast(0);
  fast.Queue(std::string(117, 'x'), milliseconds(7));
  EXPECT_EQ(fast.TakeDue(microseconds(6999)), "");
  EXPECT_EQ(fast.TakeDue(milliseconds(7)).size(), 117U);
}

}  // namespace
}  // namespace orvalis_unit
