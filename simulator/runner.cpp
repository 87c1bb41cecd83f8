#include "runner.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>
#include <vector>

#include "console.h"

namespace orvalis_unit {
namespace {

constexpr Time kSampleInterval = std::chrono::seconds(1);

void Print(const std::string& text) {
  std::puts(text.c_str());
  std::fflush(stdout);
}

}  // namespace

Runner::Runner(const Options& options, Scenario scenario)
    : link_path_(options.link),
      recorder_(options.record.empty() ? Recorder() : Recorder(options.record)),
      unit_(std::move(scenario), options.unit, recorder_),
      reads_commands_(options.reads_commands) {
  BringUp();
}

void Runner::Run(const StopSignals& signals) {
  while (!quit_ && !StopSignals::Arrived()) {
    Wait(signals);
    if (const auto drop = unit_.TakeDrop()) TakeDown(*drop);
    if (!line_ && Now() >= back_at_) BringUp();
    SendDue();
    if (Now() >= next_sample_) {
      unit_.Sample(Now());
      next_sample_ = Now() + kSampleInterval;
    }
  }
}

Time Runner::WaitingTime() const {
  Time until = next_sample_;
  if (!line_) until = std::min(until, back_at_);
  if (const auto due = unit_.NextDue()) until = std::min(until, *due);
  return std::max(until - Now(), Time::zero());
}

void Runner::Wait(const StopSignals& signals) {
  // poll ignores descriptor -1.
  std::array<pollfd, 3> waits = {{{line_ ? line_->DataFd() : -1, POLLIN, 0},
                                  {line_ ? line_->UseFd() : -1, POLLIN, 0},
                                  {reads_commands_ ? STDIN_FILENO : -1, POLLIN, 0}}};
  const auto& [data, use, input] = waits;
  const Time time = WaitingTime();
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
  const timespec timeout{seconds.count(), (time - seconds).count()};
  if (ppoll(waits.data(), waits.size(), &timeout, &signals.SleepMask()) < 0) {
    if (errno == EINTR) return;
    throw std::system_error(errno, std::generic_category(), "ppoll");
  }
  // Bytes are recorded after the open and before the close between which they arrived.
  std::vector<PtyLine::Use> uses;
  if (use.revents != 0) uses = line_->TakeUse();
  const bool others_left = !uses.empty() && uses.back() == PtyLine::Use::kClosed;
  if (data.revents != 0 && others_left) ReceiveData();
  for (const PtyLine::Use u : uses) recorder_.Write(Now(), u == PtyLine::Use::kOpened ? "opened" : "closed");
  if (data.revents != 0 && !others_left) ReceiveData();
  if (input.revents != 0) ReadCommands();
}

void Runner::BringUp() {
  line_.emplace();
  if (!link_path_.empty()) link_.emplace(link_path_, line_->Path());
  recorder_.Write(Now(), "line " + line_->Path());
  Print(line_->Path());
}

// The link is removed first: a program that sees the hang-up must not find the dead line under the link.
void Runner::TakeDown(double seconds) {
  back_at_ = Now() + FromSeconds(seconds);
  if (!line_) return;
  link_.reset();
  line_.reset();
  unit_.LineLost();
  recorder_.Write(Now(), "gone");
}

void Runner::ReceiveData() {
  const std::string bytes = line_->Read();
  if (!bytes.empty()) unit_.Receive(bytes, Now());
}

void Runner::SendDue() {
  const std::string bytes = unit_.TakeDue(Now());
  if (line_ && !bytes.empty()) line_->Write(bytes);
}

void Runner::ReadCommands() {
  std::array<char, 4096> bytes{};
  const ssize_t count = read(STDIN_FILENO, bytes.data(), bytes.size());
  if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
  if (count <= 0) {
    reads_commands_ = false;
    typed_ += '\n';
  } else {
    typed_.append(bytes.data(), static_cast<std::size_t>(count));
  }
  for (auto end = typed_.find('\n'); end != std::string::npos && !quit_; end = typed_.find('\n')) {
    const std::string line = typed_.substr(0, end);
    typed_.erase(0, end + 1);
    RunCommand(line);
  }
}

void Runner::RunCommand(std::string_view line) {
  const ConsoleReply reply = RunConsoleLine(line, unit_, Now());
  if (reply.text.empty()) return;
  recorder_.Write(Now(), "console " + Quoted(line));
  if (reply.drop) TakeDown(*reply.drop);
  quit_ = reply.quit;
  Print(reply.text);
}

}  // namespace orvalis_unit
