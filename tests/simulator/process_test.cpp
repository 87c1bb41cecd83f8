#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "unique_fd.h"

namespace orvalis_unit {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds kPatience{5000};

// The program itself, run as a user would, with its standard input and output in our hands.
class Program {
 public:
  explicit Program(std::vector<std::string> arguments) {
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) std::abort();
    arguments.insert(arguments.begin(), ORVALIS_UNIT_PROGRAM);
    std::vector<char*> words;
    words.reserve(arguments.size() + 1);
    for (std::string& argument : arguments) words.push_back(argument.data());
    words.push_back(nullptr);
    pid_ = fork();
    if (pid_ == 0) {
      dup2(ends[1], STDIN_FILENO);
      dup2(ends[1], STDOUT_FILENO);
      execv(words[0], words.data());
      _exit(127);
    }
    close(ends[1]);
    console_ = UniqueFd(ends[0]);
  }
  ~Program() {
    if (pid_ > 0) {
      kill(pid_, SIGKILL);
      waitpid(pid_, nullptr, 0);
    }
  }

  int Console() const { return console_.Get(); }
  int Stop() {
    kill(pid_, SIGTERM);
    int status = 0;
    waitpid(std::exchange(pid_, -1), &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  pid_t pid_ = -1;
  UniqueFd console_;
};

// Up to and with `last`; cut short at the end of the stream, at a hang-up, or out of patience.
std::string ReadUntil(int fd, char last) {
  std::string text;
  const auto deadline = steady_clock::now() + kPatience;
  while (!text.ends_with(last)) {
    pollfd wait{fd, POLLIN, 0};
    const auto left = std::chrono::duration_cast<milliseconds>(deadline - steady_clock::now()).count();
    if (left <= 0 || poll(&wait, 1, static_cast<int>(left)) <= 0) break;
    char byte = 0;
    if (read(fd, &byte, 1) != 1) break;
    text += byte;
  }
  return text;
}

UniqueFd OpenLine(const std::string& path) { return UniqueFd(open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC)); }

void Send(int fd, std::string_view bytes) {
  ASSERT_EQ(write(fd, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
}

TEST(Program, AnswersInTimeVanishesComesBackAndTidiesUp) {
  const fs::path folder = fs::temp_directory_path() / ("orvalis-unit-test-" + std::to_string(getpid()));
  fs::create_directory(folder);
  const std::string link = folder / "line";
  const std::string record = folder / "record";
  fs::create_symlink("/nowhere", link);  // left over by another run

  const std::string scenario = ORVALIS_UNIT_SCENARIOS "/clear.scenario";
  Program program({"--link", link, "--record", record, "--commands", "--scenario", scenario});
  const std::string path = ReadUntil(program.Console(), '\n');
  ASSERT_EQ(fs::read_symlink(link).string() + '\n', path);

  UniqueFd line = OpenLine(link);
  ASSERT_GE(line.Get(), 0);
  termios mode{};
  ASSERT_EQ(tcgetattr(line.Get(), &mode), 0);
  EXPECT_EQ(mode.c_lflag & (ECHO | ICANON | ISIG), 0U) << "raw before anybody makes it so";
  Send(line.Get(), "#\x06");
  EXPECT_EQ(ReadUntil(line.Get(), 'W'), "W");

  const auto asked = steady_clock::now();
  Send(line.Get(), ":F");
  const std::string frame = ReadUntil(line.Get(), '#');
  const auto took = steady_clock::now() - asked;
  EXPECT_EQ(frame,
            "HUM=0575 LGT=1000 R=0220 WND=0003 TP=-01500 TTP=+01050 TA=+01000 AH=1 HB=0 AR=1 RB=0 AW=1 AL=0 AC=1 "
            "Trg=+03691 FW=21#");
  EXPECT_GE(took, std::chrono::microseconds(121875));
  EXPECT_LE(took, milliseconds(400)) << "some 122 ms on a quiet machine";

  Send(program.Console(), "drop 0.2\n");
  EXPECT_EQ(ReadUntil(program.Console(), '\n'), "ok drop 0.2\n");
  EXPECT_FALSE(fs::is_symlink(fs::symlink_status(link)));
  pollfd hang_up{line.Get(), POLLIN, 0};
  ASSERT_EQ(poll(&hang_up, 1, 1000), 1);
  EXPECT_NE(hang_up.revents & POLLHUP, 0);
  EXPECT_LT(write(line.Get(), ":", 1), 0);
  const std::string new_path = ReadUntil(program.Console(), '\n');
  EXPECT_EQ(fs::read_symlink(link).string() + '\n', new_path);

  line = OpenLine(link);
  Send(line.Get(), ":SX-012#\x06");
  EXPECT_EQ(ReadUntil(line.Get(), 'W'), "W");
  EXPECT_EQ(program.Stop(), 0);
  EXPECT_FALSE(fs::is_symlink(fs::symlink_status(link)));

  std::ifstream file(record);
  std::string events;
  for (std::string text; std::getline(file, text);) events += text.substr(text.find(' ') + 1) + '\n';
  for (const char* event : {"rx \"#\\x06\"\nhandshake\nanswer \"W\"\n", "gone\n", "command SX -12\nhandshake\n"}) {
    EXPECT_NE(events.find(event), std::string::npos) << event << "is not in\n" << events;
  }
  fs::remove_all(folder);
}

TEST(Program, RefusesToReplaceAFile) {
  const fs::path file = fs::temp_directory_path() / ("orvalis-unit-file-" + std::to_string(getpid()));
  std::ofstream(file) << "kept";
  Program program({"--link", file});
  EXPECT_EQ(ReadUntil(program.Console(), '\n'), "") << "it ends without a line";
  EXPECT_EQ(fs::file_size(file), 4U);
  fs::remove(file);
}

}  // namespace
}  // namespace orvalis_unit
