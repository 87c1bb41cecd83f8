#include "platform/windows/com_port.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <chrono>
#include <system_error>

#include "base/run_time_error.h"
#include "platform/windows/windows_error.h"

namespace orvalis {
namespace {

/// While a receive is pending: longer than a tick of the system's timer, which would otherwise be sped up for it.
constexpr std::chrono::milliseconds kFetchPause{25};
constexpr std::chrono::milliseconds kIdlePause{1000};
/// How long an adapter that does not send may block.
constexpr auto kNoneSelected = Message::Of("no serial port selected");
constexpr auto kNoSuchNumber = Message::Of("there is no serial port number %1");
constexpr DWORD kSendPatienceMs = 500;
constexpr DWORD kBufferSize = 4096;

/// What Windows and drivers report for an unplugged device.
constexpr std::array<DWORD, 9> kGoneErrors{ERROR_ACCESS_DENIED,  ERROR_BAD_COMMAND,    ERROR_DEVICE_NOT_CONNECTED,
                                           ERROR_DEVICE_REMOVED, ERROR_FILE_NOT_FOUND, ERROR_GEN_FAILURE,
                                           ERROR_INVALID_HANDLE, ERROR_NOT_READY,      ERROR_OPERATION_ABORTED};

/// Why the port could not be opened, and what to do about it.
RunTimeError OpenFailure(const std::string& name, DWORD error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
      return {
          RunTimeError::kFileNotFound,
          Message::Of("the port %1 does not exist; is the adapter plugged in, and is it the right port?").With(name)};
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_BUSY:
      return {RunTimeError::kPortInUse, Message::Of("the port %1 is in use by another program").With(name)};
    default:
      return {RunTimeError::kDeviceUnavailable, kPortCannotBeOpened.With(name, SystemText(error))};
  }
}

/// 8 data bits, no parity, 1 stop bit, no flow control, and reads that return at once with what has arrived.
bool Configure(HANDLE port, int speed) {
  DCB line{};
  line.DCBlength = sizeof(line);
  if (GetCommState(port, &line) == 0) return false;
  line = {};
  line.DCBlength = sizeof(line);
  line.BaudRate = static_cast<DWORD>(speed);
  line.fBinary = TRUE;
  line.fDtrControl = DTR_CONTROL_ENABLE;
  line.fRtsControl = RTS_CONTROL_ENABLE;
  line.ByteSize = 8;
  line.Parity = NOPARITY;
  line.StopBits = ONESTOPBIT;
  COMMTIMEOUTS time_outs{};
  time_outs.ReadIntervalTimeout = MAXDWORD;
  time_outs.WriteTotalTimeoutConstant = kSendPatienceMs;
  SetupComm(port, kBufferSize, kBufferSize);
  return SetCommState(port, &line) != 0 && SetCommTimeouts(port, &time_outs) != 0;
}

}  // namespace

std::string ComPortName(const std::string& port) {
  const auto first = port.find_first_not_of(' ');
  if (first == std::string::npos) throw RunTimeError(RunTimeError::kFileNotFound, kNoneSelected);
  std::string name = port.substr(first, port.find_last_not_of(' ') - first + 1);
  if (name.starts_with(R"(\\.\)")) name.erase(0, 4);
  std::string upper = name;
  std::transform(upper.begin(), upper.end(), upper.begin(), [](unsigned char c) { return std::toupper(c); });
  const std::string digits = upper.starts_with("COM") ? upper.substr(3) : upper;
  const bool is_number = !digits.empty() && std::all_of(digits.begin(), digits.end(),
                                                        [](unsigned char c) { return std::isdigit(c) != 0; });
  if (!is_number) return name;
  constexpr int kHighest = 256;
  int number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc{} || number < 1 || number > kHighest) {
    throw RunTimeError(RunTimeError::kFileNotFound, kNoSuchNumber.With(digits));
  }
  return "COM" + std::to_string(number);
}

ComPort::ComPort() { connect(&fetch_, &QTimer::timeout, this, &ComPort::Fetch); }

ComPort::~ComPort() {
  // Answers are no longer expected.
  received_.Cancel();
  Close();
}

void ComPort::SetConnected(bool connected) {
  if (connected == Connected()) return;
  if (connected) {
    Open();
  } else {
    Close();
  }
}

void ComPort::Open() {
  // This form also works beyond COM9.
  const std::wstring path = Wide(R"(\\.\)" + name_);
  Handle port(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  if (!port) throw OpenFailure(name_, GetLastError());
  if (!Configure(port.get(), speed_)) {
    const DWORD error = GetLastError();
    COMMPROP about{};
    if (GetCommProperties(port.get(), &about) == 0) {
      throw RunTimeError(RunTimeError::kDeviceUnavailable, Message::Of("%1 is not a serial port").With(name_));
    }
    throw OpenFailure(name_, error);
  }
  port_ = std::move(port);
  received_.Drop();
  Pace();
}

void ComPort::Close() {
  fetch_.stop();
  if (port_) {
    // Otherwise closing waits until unsent characters are sent.
    PurgeComm(port_.get(), PURGE_TXABORT | PURGE_TXCLEAR | PURGE_RXABORT | PURGE_RXCLEAR);
    port_ = Handle();
  }
  received_.Close();
}

void ComPort::ClearBuffers() {
  if (port_) PurgeComm(port_.get(), PURGE_TXABORT | PURGE_TXCLEAR | PURGE_RXABORT | PURGE_RXCLEAR);
  received_.Drop();
}

void ComPort::Transmit(std::string_view bytes) {
  if (!port_) throw RunTimeError(RunTimeError::kPortClosed, kPortNotOpen.With(name_));
  DWORD written = 0;
  const BOOL done = WriteFile(port_.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  if (done != 0 && written == bytes.size()) return;
  const DWORD error = done != 0 ? ERROR_SEM_TIMEOUT : GetLastError();
  // Reported from the event loop, like every loss, because the caller may not expect it here.
  QTimer::singleShot(0, this, [this, error] { Lose(error); });
}

void ComPort::ReceiveCounted(std::size_t count, ReceiveDone done) {
  received_.ReceiveCounted(count, std::move(done));
  Pace();
}

void ComPort::ReceiveTerminated(char terminator, ReceiveDone done) {
  received_.ReceiveTerminated(terminator, std::move(done));
  Pace();
}

void ComPort::Fetch() {
  // Checked first: reads from a port that is gone may succeed with no bytes.
  DWORD errors = 0;
  COMSTAT state{};
  if (ClearCommError(port_.get(), &errors, &state) == 0) return Lose(GetLastError());
  std::array<char, kBufferSize> bytes;
  DWORD count = 0;
  if (ReadFile(port_.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr) == 0) {
    return Lose(GetLastError());
  }
  // The callback may close the port or start another receive.
  if (count != 0) received_.Take({bytes.data(), count});
  Pace();
}

void ComPort::Pace() {
  if (!port_) return fetch_.stop();
  const std::chrono::milliseconds pause = received_.waiting() ? kFetchPause : kIdlePause;
  if (!fetch_.isActive() || fetch_.intervalAsDuration() != pause) fetch_.start(pause);
}

void ComPort::Lose(DWORD error) {
  if (!port_) return;
  port_ = Handle();
  const bool gone = std::find(kGoneErrors.begin(), kGoneErrors.end(), error) != kGoneErrors.end();
  const Message reason = gone ? kPortVanished.With(name_) : kPortFailed.With(name_, SystemText(error));
  // First, because the pending receive reports this reason.
  if (lost_) lost_(reason);
  Close();
}

}  // namespace orvalis
