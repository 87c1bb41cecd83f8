#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/link_world.h"

namespace orvalis::test {

class LinkFixture : public testing::Test, public LinkWorld {
 protected:
  /// Connects and throws away what was written down.
  void Connect() {
    connector.Connect();
    loop.Advance(std::chrono::seconds(1));
    ASSERT_TRUE(link.Connected());
    port.calls.clear();
    port.sent.clear();
  }

  void Tick(int count, bool auto_connect = false) {
    for (int i = 0; i < count; ++i) LinkWorld::Tick(auto_connect);
  }

  [[nodiscard]] std::vector<std::string> EventTexts() const {
    std::vector<std::string> texts;
    for (const Event& event : events.events()) texts.push_back(event.text);
    return texts;
  }
};

}  // namespace orvalis::test
