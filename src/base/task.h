#pragma once

#include <coroutine>
#include <exception>
#include <functional>
#include <optional>
#include <utility>

namespace orvalis {

// Everything that waits (serial pacing, the unit's answers) is a coroutine on the one thread's event loop: it reads
// from top to bottom, does not block, needs no nested event loop, and can be destroyed at any point, which cancels its
// timers and receives.

template <typename T>
class Task;

namespace internal {

class TaskPromiseBase {
 public:
  struct FinalAwaiter {
    [[nodiscard]] bool await_ready() const noexcept { return false; }
    template <typename Promise>
    std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> ended) noexcept {
      const std::coroutine_handle<> next = ended.promise().continuation_;
      return next ? next : std::noop_coroutine();
    }
    void await_resume() const noexcept {}
  };

  [[nodiscard]] std::suspend_always initial_suspend() const noexcept { return {}; }
  [[nodiscard]] FinalAwaiter final_suspend() const noexcept { return {}; }
  void unhandled_exception() noexcept { error_ = std::current_exception(); }
  void set_continuation(std::coroutine_handle<> continuation) noexcept { continuation_ = continuation; }

 protected:
  void RethrowError() const {
    if (error_) std::rethrow_exception(error_);
  }

 private:
  std::coroutine_handle<> continuation_;
  std::exception_ptr error_;
};

template <typename T>
class TaskPromise : public TaskPromiseBase {
 public:
  Task<T> get_return_object();
  void return_value(T value) { value_.emplace(std::move(value)); }
  T Take() {
    RethrowError();
    return std::move(*value_);
  }

 private:
  std::optional<T> value_;
};

template <>
class TaskPromise<void> : public TaskPromiseBase {
 public:
  Task<void> get_return_object();
  void return_void() const noexcept {}
  void Take() const { RethrowError(); }
};

}  // namespace internal

/// A computation that may wait. It starts when it is awaited and passes its result or exception to the awaiting
/// coroutine. Destroying a waiting task abandons the wait.
template <typename T = void>
class [[nodiscard]] Task {
 public:
  using promise_type = internal::TaskPromise<T>;
  using Handle = std::coroutine_handle<promise_type>;

  explicit Task(Handle handle) : handle_(handle) {}
  Task(Task&& other) noexcept : handle_(std::exchange(other.handle_, {})) {}
  Task& operator=(Task&& other) noexcept {
    if (this != &other) {
      if (handle_) handle_.destroy();
      handle_ = std::exchange(other.handle_, {});
    }
    return *this;
  }
  Task(const Task&) = delete;
  Task& operator=(const Task&) = delete;
  ~Task() {
    if (handle_) handle_.destroy();
  }

  [[nodiscard]] bool await_ready() const noexcept { return false; }
  Handle await_suspend(std::coroutine_handle<> awaiting) noexcept {
    handle_.promise().set_continuation(awaiting);
    return handle_;
  }
  T await_resume() { return handle_.promise().Take(); }

  /// Runs until the first wait; only `Job` calls this.
  void Start() { handle_.resume(); }

 private:
  Handle handle_;
};

template <typename T>
Task<T> internal::TaskPromise<T>::get_return_object() {
  return Task<T>(std::coroutine_handle<TaskPromise>::from_promise(*this));
}

inline Task<void> internal::TaskPromise<void>::get_return_object() {
  return Task<void>(std::coroutine_handle<TaskPromise>::from_promise(*this));
}

/// Runs one task from code that is not a coroutine, such as a timer's handler. Destroying the job abandons the task.
/// The job must not be destroyed, abandoned or started again from inside the task or from inside `done`, and `done`
/// must not throw.
class Job {
 public:
  /// Receives the exception that ended the task, or null.
  using Done = std::function<void(std::exception_ptr)>;

  /// Starts `task`, which runs to its first wait before this returns. Must not be called while another one runs.
  void Start(Task<void> task, Done done) {
    running_ = true;
    root_.emplace(Run(std::move(task), std::move(done)));
    root_->Start();
  }
  [[nodiscard]] bool running() const { return running_; }

  /// Destroys the waiting task; `done` is not called.
  void Abandon() {
    root_.reset();
    running_ = false;
  }

 private:
  Task<void> Run(Task<void> task, Done done) {
    std::exception_ptr error;
    try {
      co_await task;
    } catch (...) {
      error = std::current_exception();
    }
    running_ = false;
    done(error);
  }

  bool running_ = false;
  std::optional<Task<void>> root_;
};

}  // namespace orvalis
