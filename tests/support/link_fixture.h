#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/link_world.h"

namespace orvalis::test {

using Strings = std::vector<std::string>;

class LinkFixture : public testing::Test, public LinkWorld {
 protected:
  /// Connects, throws away what was written down and lets so many ticks pass.
  void Connect(int ticks = 0) {
    connector.Connect();
    loop.Advance(std::chrono::seconds(1));
    ASSERT_TRUE(link.Connected());
    port.calls.clear();
    port.sent.clear();
    Tick(ticks);
  }

  virtual void Tick(int count) {
    for (int i = 0; i < count; ++i) LinkWorld::Tick(auto_connect);
  }

  /// From now on the unit answers with `LiveFrame(measured)`, or not at all; so many ticks pass.
  void Measure(const std::string& measured, int ticks) {
    port.silent = false;
    port.frame = LiveFrame(measured);
    Tick(ticks);
  }
  void Silence(int ticks) {
    port.silent = true;
    Tick(ticks);
  }

  [[nodiscard]] Strings EventTexts() const {
    Strings texts;
    for (const Event& event : events.events()) texts.push_back(event.text);
    return texts;
  }
  [[nodiscard]] std::string LastEvent() const { return events.events().empty() ? "" : events.events().back().text; }

  bool auto_connect = false;
};

}  // namespace orvalis::test
