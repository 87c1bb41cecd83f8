#pragma once

#include <windows.h>

#include <utility>

namespace orvalis {

/// Owns a Windows handle.
class Handle {
 public:
  Handle() = default;
  explicit Handle(HANDLE handle) : handle_(handle == INVALID_HANDLE_VALUE ? nullptr : handle) {}
  Handle(Handle&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}
  Handle& operator=(Handle&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() {
    if (handle_ != nullptr) CloseHandle(handle_);
  }

  [[nodiscard]] HANDLE get() const { return handle_; }
  explicit operator bool() const { return handle_ != nullptr; }

 private:
  HANDLE handle_ = nullptr;
};

}  // namespace orvalis
