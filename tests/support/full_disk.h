#pragma once

#ifndef _WIN32  // which has no such limit

#include <sys/resource.h>

#include <csignal>

namespace orvalis::test {

/// While it lives, no file of this process grows beyond `bytes`, as on a full disk.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &usual_);
    const rlimit small{.rlim_cur = bytes, .rlim_max = usual_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;
  ~FullDisk() { setrlimit(RLIMIT_FSIZE, &usual_); }

 private:
  rlimit usual_{};
};

}  // namespace orvalis::test

#endif
