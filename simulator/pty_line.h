#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "unique_fd.h"

namespace orvalis_unit {

// A serial line made of a pseudo terminal. The unit holds the master; whatever opens Path() is the other end. With
// the object goes the line: the other end's reads and writes then fail as with a pulled adapter.
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

  // What has come from the other end; empty when nothing has. Throws std::system_error.
  std::string Read();

  // Never waits: bytes for which the other end has no room are lost, as on a line without flow control.
  void Write(std::string_view bytes);

  enum class Use { kOpened, kClosed };

  // How the device was opened and closed since the last call, in order; the same thing many times in a row may be told
  // once. A program that was killed may leave the device locked for its own use; that is undone here.
  std::vector<Use> TakeUse();

 private:
  UniqueFd master_;
  UniqueFd slave_;  // held open: a master without a slave hangs up, and polling it would spin
  std::string path_;
  UniqueFd watch_;
};

}  // namespace orvalis_unit
