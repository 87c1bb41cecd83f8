#include "unit/lost_adapter.h"

#include "tests/support/link_fixture.h"

namespace orvalis {
namespace {

using std::chrono::seconds;
using Ports = std::vector<PresentPort>;

PresentPort Usb(int number, const std::string& serial, const std::string& socket, const std::string& part = "00") {
  return {"/dev/ttyUSB" + std::to_string(number), {"0403", "6001", serial, part, socket}};
}
PresentPort Other(int number, const std::string& serial, const std::string& socket) {
  return {"/dev/ttyUSB" + std::to_string(number), {"1a86", "7523", serial, "00", socket}};
}

class LostAdapterTest : public test::LinkFixture {
 protected:
  LostAdapterTest() { auto_connect = true; }

  /// Connected for a minute with these ports, which then vanish with the one that is open.
  void Lose(const Ports& before) {
    ports.present = before;
    Connect(60);
    ports.present.clear();
    port.PullOut("the adapter was unplugged");
    Tick(3);
  }
  /// The port that is open, or "".
  std::string OpenPort() { return link.Connected() ? port.Port() : ""; }
  std::ptrdiff_t Openings() { return std::ranges::count(port.calls, "open"); }
};

TEST_F(LostAdapterTest, IsFoundAgainAndTakenForNoOther) {
  struct Row {
    const char* what;
    Ports before;
    Ports after;
    std::string opened;
  };
  const std::string usb0 = "/dev/ttyUSB0";
  const std::string usb1 = "/dev/ttyUSB1";
  const PresentPort bare{usb0, {}};
  const Row rows[] = {
      {"of no known adapter: by name", {bare}, {bare}, usb0},
      {"nothing there", {bare}, {}, ""},
      {"the same again", {Usb(0, "A1", "1-1")}, {Usb(0, "A1", "1-1")}, usb0},
      {"under another name, elsewhere", {Usb(0, "A1", "1-1")}, {Usb(1, "A1", "2-4")}, usb1},
      {"names exchanged", {Usb(0, "A1", "1-1"), Usb(1, "B2", "1-2")}, {Usb(0, "B2", "1-2"), Usb(1, "A1", "1-1")}, usb1},
      {"another one took the name", {Usb(0, "A1", "1-1")}, {Usb(0, "B2", "1-1")}, ""},
      {"the mount's took the name", {Usb(0, "A1", "1-1")}, {Other(0, "A1", "1-1")}, ""},
      {"no serial number: the socket", {Usb(0, "", "1-1")}, {Usb(0, "", "1-2"), Usb(1, "", "1-1")}, usb1},
      {"no serial number, in another socket", {Usb(0, "", "1-1")}, {Usb(0, "", "1-2")}, ""},
      {"the other of its two ports", {Usb(0, "A1", "1-1", "00")}, {Usb(0, "A1", "1-1", "01")}, ""},
      {"a copy's number is none", {Usb(0, "A1", "1-1"), Usb(1, "A1", "1-2")}, {Usb(0, "A1", "1-2")}, ""},
      {"two would do: the socket", {Usb(0, "A1", "1-1")}, {Usb(0, "A1", "1-3"), Usb(1, "A1", "1-1")}, usb1},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    Lose(row.before);
    EXPECT_EQ(OpenPort(), "");
    ports.present = row.after;
    Tick(2);
    EXPECT_EQ(OpenPort(), row.opened);
    EXPECT_EQ(profile.At("COM Port"), usb0);
    connector.Disconnect();
  }
}

TEST_F(LostAdapterTest, IsLeftAloneWhereItIsNotWanted) {
  const std::pair<const char*, std::function<void()>> rows[] = {
      {"disconnected by hand", [this] { connector.Disconnect(); }},
      {"another port chosen", [this] { store.WriteText("COM Port", "/dev/ttyUSB7"); }},
      {"does not connect by itself", [this] { auto_connect = false; }},
  };
  for (const auto& [what, act] : rows) {
    SCOPED_TRACE(what);
    auto_connect = true;
    Lose({Usb(0, "A1", "1-1")});
    act();
    ports.present = {Usb(0, "A1", "1-1")};
    Tick(20);
    EXPECT_EQ(OpenPort(), "");
    store.WriteText("COM Port", "/dev/ttyUSB0");
  }
}

// At once, 3, 10 and 30 seconds after the last attempt; then only the countdown's, which finds it under its new name.
TEST_F(LostAdapterTest, ALooseOneIsNotOpenedAllTheTime) {
  Lose({Usb(0, "A1", "1-1")});
  ports.present = {Usb(1, "A1", "1-1")};
  port.calls.clear();
  for (int second = 0; second < 110; ++second) {
    Tick(1);
    if (link.Connected()) port.PullOut("loose");
  }
  EXPECT_EQ(Openings(), 4);
  Tick(20);
  EXPECT_EQ(OpenPort(), "/dev/ttyUSB1");
  Tick(60);
  ports.present.clear();
  port.PullOut("later");
  ports.present = {Usb(2, "A1", "1-1")};
  Tick(2);
  EXPECT_EQ(OpenPort(), "/dev/ttyUSB2") << "it had held";
}

}  // namespace
}  // namespace orvalis
