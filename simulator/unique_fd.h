#pragma once

#include <unistd.h>

#include <utility>

namespace orvalis_unit {

// Owns a file descriptor; -1 is none.
class UniqueFd {
 public:
  explicit UniqueFd(int fd = -1) : fd_(fd) {}
  UniqueFd(UniqueFd&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  UniqueFd& operator=(UniqueFd&& other) noexcept {
    std::swap(fd_, other.fd_);
    return *this;
  }
  ~UniqueFd() {
    if (fd_ >= 0) close(fd_);
  }

  int Get() const { return fd_; }

 private:
  int fd_;
};

}  // namespace orvalis_unit
