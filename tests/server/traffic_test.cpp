#include "server/traffic.h"

#include <gtest/gtest.h>

namespace orvalis {
namespace {

TEST(Traffic, PiecesFormLines) {
  Traffic traffic;
  traffic.TrafficStart("A");
  traffic.TrafficEnd(" (done)");
  EXPECT_EQ(traffic.text(), "A (done)\r\n");
  traffic.Clear();
  traffic.TrafficStart("A");
  traffic.TrafficLine("B");
  EXPECT_EQ(traffic.text(), "A\r\nB\r\n");
  traffic.Clear();
  traffic.TrafficChar("x");
  traffic.TrafficChar("x");
  traffic.TrafficStart("C");
  EXPECT_EQ(traffic.text(), "x x\r\nC");
  traffic.Clear();  // closes the open line
  traffic.TrafficLine("D");
  traffic.TrafficEnd("E");  // whatever is open
  EXPECT_EQ(traffic.text(), "D\r\nE\r\n");
}

TEST(Traffic, KeepsTheNewestAndNothingWhilePaused) {
  Traffic traffic;
  for (int i = 0; i < 300; ++i) traffic.TrafficLine("12345678");
  EXPECT_EQ(traffic.text().size(), 2000u);
  traffic.TrafficStart("123");
  EXPECT_TRUE(traffic.text().starts_with("45678\r\n"));
  traffic.Clear();
  traffic.TrafficStart("open");
  traffic.TogglePaused();
  traffic.TrafficLine("lost");
  traffic.TogglePaused();
  traffic.TrafficEnd(" line");
  EXPECT_EQ(traffic.text(), "open line\r\n");
}

}  // namespace
}  // namespace orvalis
