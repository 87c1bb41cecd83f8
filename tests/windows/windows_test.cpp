// What the program asks of Windows, on a real one or under Wine.

#include <gtest/gtest.h>
#include <windows.h>

// Behind the types of windows.h.

#include <QtCore/qtestsupport_core.h>

#include <QApplication>
#include <QDate>
#include <QPainter>
#include <QTemporaryDir>
#include <QUrl>
#include <QWidget>
#include <fstream>
#include <functional>
#include <future>
#include <iterator>
#include <string>
#include <thread>
#include <tuple>

#include "base/path.h"
#include "base/run_time_error.h"
#include "config/settings_store.h"
#include "platform/system/safe_file.h"
#include "platform/system/stop_signals.h"
#include "platform/windows/com_port.h"
#include "platform/windows/device_port_finder.h"
#include "platform/windows/mci_sound_player.h"
#include "platform/windows/registry_profile.h"
#include "platform/windows/shell_program_starter.h"
#include "tests/support/error_of.h"
#include "ui/desktop.h"
#include "ui/publishing/picture_view.h"

namespace orvalis {
namespace {

using test::ErrorOf;

constexpr int kPatienceMs = 20'000;

std::string Content(const std::string& path) {
  std::ifstream file(PathFromText(path), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// A folder whose name needs more than one code page and has a blank.
class WindowsTest : public testing::Test {
 protected:
  WindowsTest() {
    EXPECT_TRUE(QDir(base_.path()).mkpath(QString::fromUtf8("Ordner äß Ω 雨")));
    folder = QDir::toNativeSeparators(base_.filePath(QString::fromUtf8("Ordner äß Ω 雨"))).toStdString();
  }

  std::string folder;

 private:
  QTemporaryDir base_;
};

using ComPortTest = WindowsTest;

TEST_F(ComPortTest, NamesPortsByNumberBeyondNineToo) {
  // What is given, and the name; "" is a failure.
  const std::pair<const char*, std::string> rows[] = {
      {"2", "COM2"},      {" 12 ", "COM12"}, {"com7", "COM7"}, {R"(\\.\COM10)", "COM10"},
      {"CNCA0", "CNCA0"}, {"256", "COM256"}, {"257", ""},      {"0", ""},
      {"COM0", ""},       {"  ", ""},        {"-1", "-1"},     {"", ""},
      {"99999999999", ""}};
  for (const auto& row : rows) {
    std::string name;
    const int error = ErrorOf([&] { name = ComPortName(row.first); });
    EXPECT_EQ(name, row.second) << row.first;
    EXPECT_EQ(error, row.second.empty() ? RunTimeError::kFileNotFound : 0) << row.first;
  }
}

TEST(DevicePortFinderTest, ReadsTheAdapterFromItsInstancePath) {
  const std::pair<const char*, SerialAdapter> rows[] = {
      {R"(USB\VID_0403&PID_6001\A50285BI)", {"0403", "6001", "A50285BI", "", ""}},
      {R"(FTDIBUS\VID_0403+PID_6001+A50285BIA\0000)", {"0403", "6001", "A50285BIA", "", ""}},
      {R"(USB\VID_10C4&PID_EA70&MI_01\6&1A2B3C&0&0001)", {"10C4", "EA70", "", "01", "6&1A2B3C&0&0001"}},
      {R"(USB\VID_1A86&PID_7523\5&2C0F1C8D&0&3)", {"1A86", "7523", "", "", "5&2C0F1C8D&0&3"}},
      {R"(ACPI\PNP0501\1)", {}}};
  for (const auto& [path, adapter] : rows) EXPECT_EQ(AdapterOfInstance(path), adapter) << path;
}

class RegistryProfileTest : public testing::Test {
 protected:
  static constexpr const wchar_t* kTestKey = L"Software\\OrvalisTests\\Registry";
  RegistryProfileTest() { RemoveAll(); }
  ~RegistryProfileTest() override { RemoveAll(); }
  static void RemoveAll() {
    RegDeleteTreeW(HKEY_CURRENT_USER, kTestKey);
    const std::wstring damaged = L".damaged-" + QDate::currentDate().toString(Qt::ISODate).toStdWString();
    for (const std::wstring& end : {std::wstring(L".pending"), std::wstring(L".good"), damaged}) {
      RegDeleteTreeW(HKEY_CURRENT_USER, (kTestKey + end).c_str());
    }
  }
  /// Writes a text into the registry as another program would.
  static void Put(const std::wstring& below, const wchar_t* name, const wchar_t* text) {
    RegSetKeyValueW(HKEY_CURRENT_USER, (kTestKey + below).c_str(), name, REG_SZ, text,
                    static_cast<DWORD>((std::wcslen(text) + 1) * sizeof(wchar_t)));
  }
  static bool Exists(const std::wstring& below) {
    HKEY key = nullptr;
    const bool exists =
        RegOpenKeyExW(HKEY_CURRENT_USER, (kTestKey + below).c_str(), 0, KEY_READ, &key) == ERROR_SUCCESS;
    if (exists) RegCloseKey(key);
    return exists;
  }

  RegistryProfile profile{kTestKey};
};

TEST_F(RegistryProfileTest, KeepsTextsBySubkeyAndName) {
  EXPECT_EQ(profile.GetValue("Orvalis.Weather", "RainThreshold", ""), "");
  const std::string path = "C:\\Söunds Ω\\雨 %TEMP%;a=b\\x.wav";
  profile.WriteValue("Orvalis.Weather", "g_sRainSounds", path, "");
  profile.WriteValue("Orvalis.Weather", "TempMax", "2.5", "Capabilities");
  EXPECT_EQ(RegistryProfile(kTestKey).GetValue("", "g_sRainSounds", ""), path);
  EXPECT_EQ(RegistryProfile(kTestKey).GetValue("", "TempMax", "Capabilities"), "2.5");
  EXPECT_EQ(RegistryProfile(kTestKey).GetValue("", "TempMax", ""), "");
}

TEST_F(RegistryProfileTest, ABatchIsAllOrNothing) {
  profile.WriteValue("", "RegVer", "2.17", "");
  {
    Profile::Batch batch(profile);
    profile.WriteValue("", "RegVer", "2.18", "");
    EXPECT_EQ(profile.GetValue("", "RegVer", ""), "2.18") << "who writes sees it";
    EXPECT_EQ(RegistryProfile(kTestKey).GetValue("", "RegVer", ""), "2.17");
  }
  EXPECT_EQ(profile.GetValue("", "RegVer", ""), "2.17") << "abandoned";
  {
    Profile::Batch batch(profile);
    profile.WriteValue("", "RegVer", "2.18", "");
    profile.WriteValue("", "TempMax", "5.0", "Capabilities");
    batch.Commit();
  }
  EXPECT_EQ(RegistryProfile(kTestKey).GetValue("", "TempMax", "Capabilities"), "5.0");
  EXPECT_FALSE(Exists(L".pending"));
}

// What a program leaves behind that was killed while it wrote its notes, and one that was killed after them.
TEST_F(RegistryProfileTest, ACrashLeavesAllOfABatchOrNothing) {
  profile.WriteValue("", "RegVer", "2.17", "");
  Put(L".pending\\Notes", L"RegVer", L"2.18");
  EXPECT_EQ(profile.GetValue("", "RegVer", ""), "2.17");
  EXPECT_FALSE(Exists(L".pending"));

  Put(L".pending\\Notes", L"RegVer", L"2.18");
  Put(L".pending\\Notes\\Capabilities", L"TempMax", L"5.0");
  Put(L".pending", L"Complete", L"");
  EXPECT_EQ(profile.GetValue("", "TempMax", "Capabilities"), "5.0");
  EXPECT_EQ(profile.GetValue("", "RegVer", ""), "2.18");
  EXPECT_FALSE(Exists(L".pending"));
}

// Its stamp is gone: the copy takes its place, what was found is kept, and the notice stays until it is acknowledged.
TEST_F(RegistryProfileTest, ADestroyedStoreGetsItsCopyBack) {
  SettingsStore(profile, "C:\\Orvalis", {}).EnsureLayout();
  profile.WriteValue("", "RainThreshold", "200", "");
  RegDeleteKeyValueW(HKEY_CURRENT_USER, kTestKey, L"RegVer");
  RegistryProfile again(kTestKey);
  SettingsStore store(again, "C:\\Orvalis", {});
  EXPECT_EQ(store.LoadSettings().RainThreshold, 200);
  EXPECT_NE(store.LossNotice().find("version stamp"), std::string::npos) << store.LossNotice();
  EXPECT_TRUE(Exists(L".damaged-" + QDate::currentDate().toString(Qt::ISODate).toStdWString()));
  store.AcknowledgeLoss();
  RegDeleteTreeW(HKEY_CURRENT_USER, kTestKey);
  RegistryProfile gone(kTestKey);
  SettingsStore last(gone, "C:\\Orvalis", {});
  EXPECT_EQ(last.LoadSettings().RainThreshold, 200);
  EXPECT_NE(last.LossNotice().find("is gone"), std::string::npos) << last.LossNotice();
}

// The store names itself and the reason; what was stored stays.
TEST_F(RegistryProfileTest, AStoreInUseFailsAfterHalfASecond) {
  profile.WriteValue("", "Left", "1", "");
  // No semaphores: the library's may sleep through their release on this system.
  std::promise<void> held;
  std::promise<void> release;
  std::thread other([&] {
    const Handle mutex(CreateMutexW(nullptr, TRUE, L"Local\\Orvalis.Weather.profile"));
    held.set_value();
    release.get_future().wait();
    ReleaseMutex(mutex.get());
  });
  held.get_future().wait();
  std::string text;
  EXPECT_EQ(ErrorOf([&] { profile.WriteValue("", "Left", "2", ""); }, &text), RunTimeError::kPathFileAccess);
  EXPECT_NE(text.find("HKEY_CURRENT_USER\\Software\\OrvalisTests\\Registry"), std::string::npos) << text;
  EXPECT_EQ(profile.GetValue("", "Left", ""), "1");
  release.set_value();
  other.join();
  profile.WriteValue("", "Left", "2", "");
  EXPECT_EQ(profile.GetValue("", "Left", ""), "2");
}

using SoundTest = WindowsTest;

TEST_F(SoundTest, PlaysWaveFilesAndSaysWhatIsMissing) {
  // A tenth of a second of silence: 8000 bytes a second, one channel of 8 bits. Length fields worked by hand.
  const unsigned char header[] = {'R', 'I', 'F', 'F', 0x44, 3, 0,   0,   'W', 'A',  'V',  'E', 'f', 'm',  't',
                                  ' ', 16,  0,   0,   0,    1, 0,   1,   0,   0x40, 0x1F, 0,   0,   0x40, 0x1F,
                                  0,   0,   1,   0,   8,    0, 'd', 'a', 't', 'a',  0x20, 3,   0,   0};
  const std::string sound = folder + "\\Regen ☔.wav";
  {
    std::ofstream file(PathFromText(sound), std::ios::binary);
    file.write(reinterpret_cast<const char*>(header), sizeof(header));
    file << std::string(800, '\x80');
  }
  MciSoundPlayer player;
  std::string why;
  EXPECT_EQ(ErrorOf([&] { player.Play(sound); }, &why), 0) << why;
  EXPECT_EQ(ErrorOf([&] { player.Play(sound); }), 0) << "the first one is stopped and closed";
  for (const std::string& path : {folder + "\\none.wav", folder, std::string()}) {
    std::string text;
    EXPECT_EQ(ErrorOf([&] { player.Play(path); }, &text), RunTimeError::kFileNotFound) << path;
    EXPECT_NE(text.find("choose one in the setup"), std::string::npos) << text;
  }
  std::ofstream(PathFromText(folder + "\\text.wav")) << "no sound at all";
  EXPECT_EQ(ErrorOf([&] { player.Play(folder + "\\text.wav"); }), RunTimeError::kDeviceUnavailable);
}

using ProgramTest = WindowsTest;

TEST_F(ProgramTest, StartsABatchFileInItsOwnFolder) {
  const std::string batch = folder + "\\close the roof.bat";
  std::ofstream(PathFromText(batch)) << "@echo closed %ORVALIS_ALERT%>done.txt\r\n@exit 3\r\n";
  ShellProgramStarter starter;
  std::string failure;
  const ProgramStarter::Call call{.path = batch,
                                  .facts = {{"ORVALIS_ALERT", "unsafe"}, {"ORVALIS_SKY_C", std::nullopt}},
                                  .ended = [&](const std::string& how) { failure = how; }};
  EXPECT_EQ(ErrorOf([&] { starter.Start(call); }), 0);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !failure.empty(); }, kPatienceMs));
  EXPECT_EQ(failure, "ended with code 3");
  EXPECT_TRUE(Content(folder + "\\done.txt").starts_with("closed unsafe"));

  std::ofstream(PathFromText(folder + "\\text.exe")) << "no program at all";
  const std::pair<std::string, int> rows[] = {{folder + "\\none.exe", RunTimeError::kFileNotFound},
                                              {"", RunTimeError::kFileNotFound},
                                              {folder, RunTimeError::kFileNotFound},
                                              {folder + "\\text.exe", RunTimeError::kPathFileAccess}};
  for (const auto& [path, error] : rows)
    EXPECT_EQ(ErrorOf([&, to = path] { starter.Start({.path = to}); }), error) << path;
}

using SafeFileTest = WindowsTest;

TEST_F(SafeFileTest, ReplacesInOneStepAndTellsStatesApart) {
  const QString here = QString::fromStdString(folder);
  EXPECT_TRUE(safe_file::CanWrite(here) && !safe_file::CanWrite(here + "/nowhere"));
  std::ofstream(PathFromText(folder + "\\a")) << "old";
  const safe_file::Stamp old = safe_file::StampOf(here + "/a");
  EXPECT_EQ(old.size, 3);
  std::ofstream(PathFromText(folder + "\\b")) << "new";
  EXPECT_TRUE(safe_file::Flush(here + "/b") && safe_file::RestrictToOwner(here + "/b"));
  EXPECT_TRUE(safe_file::Replace(here + "/b", here + "/a"));
  EXPECT_EQ(Content(folder + "\\a"), "new");
  EXPECT_NE(safe_file::StampOf(here + "/a"), old);
  safe_file::ClearLastError();
  EXPECT_FALSE(safe_file::Replace(here + "/gone", here + "/a"));
  EXPECT_EQ(safe_file::LastError(), ERROR_FILE_NOT_FOUND);
}

/// A window of one's own, painted in four colours, without a frame.
class Painted : public QWidget {
 public:
  Painted() : QWidget(nullptr, Qt::FramelessWindowHint) {
    setFixedSize(101, 50);  // a row of 303 bytes, which a bitmap file fills up to 304
    move(0, 0);
    show();
    QCoreApplication::processEvents(QEventLoop::AllEvents, 500);
    repaint();
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.fillRect(0, 0, 50, 25, QColor(255, 0, 0));
    painter.fillRect(50, 0, 51, 25, QColor(0, 255, 0));
    painter.fillRect(0, 25, 50, 25, QColor(0, 0, 255));
    painter.fillRect(50, 25, 51, 25, QColor(17, 34, 51));
  }
};

using CaptureTest = WindowsTest;

TEST_F(CaptureTest, TheFileIsABitmapOf24BitsWithTheWindowsPixels) {
  Painted form;
  const std::string path = folder + "\\\\screenshot.bmp";
  PictureView view;
  view.SetPicture(desktop::PictureOf(form));
  view.Save(path, "BMP");
  EXPECT_EQ(Content(path).at(28), 24);  // bits for each pixel
  const QImage image(QString::fromStdString(path));
  ASSERT_EQ(image.size(), form.size());
  const std::tuple<int, int, QRgb> pixels[] = {{0, 0, 0xFFFF0000},   {100, 0, 0xFF00FF00}, {49, 24, 0xFFFF0000},
                                               {50, 24, 0xFF00FF00}, {0, 49, 0xFF0000FF},  {49, 25, 0xFF0000FF},
                                               {100, 49, 0xFF112233}};
  for (const auto& [x, y, colour] : pixels) EXPECT_EQ(image.pixel(x, y), colour) << x << "," << y;
}

// There is nothing on the screen to copy then.
TEST_F(CaptureTest, AWindowThatIsNotSeenIsPicturedToo) {
  QWidget hidden;
  hidden.setFixedSize(20, 10);
  hidden.setStyleSheet("background: #102030");
  const QPixmap picture = desktop::PictureOf(hidden);
  ASSERT_EQ(picture.size(), QSize(20, 10));
  EXPECT_EQ(picture.toImage().pixel(10, 5), 0xFF102030u);
}

TEST(Desktop, AnAddressThatNothingOpensIsReported) {
  EXPECT_FALSE(desktop::Open(QUrl("orvalis-no-such-scheme:x")));
  EXPECT_FALSE(desktop::Open(QUrl::fromLocalFile("C:/no such folder/guide.md")));
}

// The session's end and another program's wish reach the program through a window that nobody sees.
TEST(StopSignals, AreToldByTheirMessages) {
  int stopped = 0;
  int ended = 0;
  const StopSignals stop_signals({.stop = [&] { ++stopped; }, .session_ended = [&] { ++ended; }});
  HWND const window = FindWindowW(L"OrvalisStop", nullptr);
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(SendMessageW(window, WM_QUERYENDSESSION, 0, 0), TRUE);
  SendMessageW(window, WM_ENDSESSION, FALSE, 0);
  EXPECT_EQ(stopped + ended, 0) << "the session goes on";
  SendMessageW(window, WM_ENDSESSION, TRUE, 0);
  EXPECT_EQ(ended, 1) << "before the message is answered: the system does not wait any longer";
  PostMessageW(window, WM_CLOSE, 0, 0);
  EXPECT_TRUE(QTest::qWaitFor([&] { return stopped == 1; }, kPatienceMs));
}

}  // namespace
}  // namespace orvalis
