#include "platform/linux/sysfs_port_finder.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <fstream>

namespace orvalis {
namespace {

namespace fs = std::filesystem;

/// A tree as the kernel has it: one adapter with two ports of its own driver, one of the modem class, a console.
class SysfsPortFinderTest : public testing::Test {
 protected:
  SysfsPortFinderTest() {
    Adapter("usb1/1-1/1-1.2", {{"idVendor", "0403"}, {"idProduct", "6010"}, {"serial", "FT1"}});
    Terminal("ttyUSB0", "usb1/1-1/1-1.2/1-1.2:1.1/ttyUSB0", "usb1/1-1/1-1.2/1-1.2:1.1", "01");
    Write(root / "sys/devices/usb1/1-1/1-1.2/1-1.2:1.1/ttyUSB0/port_number", "0");
    Adapter("usb2/2-3", {{"idVendor", "1a86"}, {"idProduct", "55d4"}});
    Terminal("ttyACM0", "usb2/2-3/2-3:1.0", "usb2/2-3/2-3:1.0", "00");
    fs::create_directories(root / "sys/class/tty/tty0");
    fs::create_directories(root / "dev");
    // Character devices that a test may make: links to one that is there.
    for (const char* name : {"ttyUSB0", "ttyACM0", "tty0"}) fs::create_symlink("/dev/null", root / "dev" / name);
  }

  static void Write(const fs::path& file, const std::string& line) { std::ofstream(file) << line << '\n'; }
  void Adapter(const fs::path& place, const std::vector<std::pair<std::string, std::string>>& files) {
    fs::create_directories(root / "sys/devices" / place);
    for (const auto& [name, line] : files) Write(root / "sys/devices" / place / name, line);
  }
  void Terminal(const char* name, const fs::path& device, const fs::path& interface, const char* number) {
    fs::create_directories(root / "sys/devices" / device);
    Write(root / "sys/devices" / interface / "bInterfaceNumber", number);
    fs::create_directories(root / "sys/class/tty" / name);
    fs::create_directory_symlink(root / "sys/devices" / device, root / "sys/class/tty" / name / "device");
  }

  QTemporaryDir folder;
  fs::path root = fs::canonical(folder.path().toStdString());
  SysfsPortFinder finder{root / "sys", root / "dev"};
};

TEST_F(SysfsPortFinderTest, TellsAdaptersApartAndOpensNothing) {
  std::vector<PresentPort> ports = finder.Adapters();
  std::ranges::sort(ports, {}, &PresentPort::device);
  ASSERT_EQ(ports.size(), 2);
  const std::string devices = (root / "sys/devices/").string();
  EXPECT_EQ(ports[0].device, (root / "dev/ttyACM0").string());
  EXPECT_EQ(ports[0].adapter, (SerialAdapter{"1a86", "55d4", "", "00.", devices + "usb2/2-3"}));
  EXPECT_EQ(ports[1].adapter, (SerialAdapter{"0403", "6010", "FT1", "01.0", devices + "usb1/1-1/1-1.2"}));

  fs::remove(root / "dev/ttyACM0");  // the kernel has it, and nobody has made its device yet
  EXPECT_EQ(finder.Adapters().size(), 1);
  const auto by_link = finder.Find((root / "dev/ttyUSB0").string());
  ASSERT_TRUE(by_link);
  EXPECT_EQ(by_link->device, "/dev/null");
  EXPECT_FALSE(by_link->adapter.known() || finder.Find((root / "dev").string()) || finder.Find("/nowhere"));
}

}  // namespace
}  // namespace orvalis
