#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "unique_fd.h"

namespace orvalis_unit {

// A serial line over a pseudo terminal. The unit holds the master; whatever opens Path() is the other end. Destroying
// the object removes the line: the other end's reads and writes then fail as with a pulled adapter.
class PtyLine {
 public:
  // Throws std::system_error.
  PtyLine();

  // The device that the other end opens: raw, no echo, 9600 bit/s.
  const std::string& Path() const { return path_; }

  // To be polled for reading; then call Read.
  int DataFd() const { return master_.Get(); }

  // To be polled for reading; then call TakeUse. -1 when the system cannot watch the device.
  int UseFd() const { return watch_.Get(); }

  // The bytes received from the other end, if any. Throws std::system_error.
  std::string Read();

  // Never blocks: bytes that do not fit into the other end's buffer are lost, as on a line without flow control.
  void Write(std::string_view bytes);

  enum class Use { kOpened, kClosed };

  // The opens and closes of the device since the last call, in order; repetitions may be reported once. Also releases
  // the exclusive lock that a killed program may have left.
  std::vector<Use> TakeUse();

 private:
  UniqueFd master_;
  UniqueFd slave_;  // kept open: a master without a slave hangs up, and polling it would spin
  std::string path_;
  UniqueFd watch_;
};

}  // namespace orvalis_unit
