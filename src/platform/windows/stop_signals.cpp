#include "platform/system/stop_signals.h"

#include <windows.h>

#include <QCoreApplication>
#include <QMetaObject>
#include <utility>

#include "platform/windows/handle.h"

namespace orvalis {
namespace {

constexpr const wchar_t* kWindowClass = L"OrvalisStop";
/// Slightly less than Windows gives a console program to end.
constexpr DWORD kEndPatienceMs = 4500;

// The console's handler runs on its own thread and can use only globals.
StopSignals::Calls* g_calls = nullptr;
HANDLE g_ended = nullptr;

BOOL WINAPI HandleConsole(DWORD event) {
  // The event loop makes the call, on the program's one thread.
  QMetaObject::invokeMethod(
      QCoreApplication::instance(),
      [] {
        if (g_calls != nullptr) g_calls->stop();
      },
      Qt::QueuedConnection);
  // When the console is closed the process ends as soon as this returns.
  if (event == CTRL_CLOSE_EVENT || event == CTRL_LOGOFF_EVENT || event == CTRL_SHUTDOWN_EVENT) {
    WaitForSingleObject(g_ended, kEndPatienceMs);
  }
  return TRUE;
}

int g_exit_code = 0;

BOOL WINAPI EndProcess(DWORD /*event*/) {
  TerminateProcess(GetCurrentProcess(), static_cast<UINT>(g_exit_code));
  return TRUE;
}

LRESULT CALLBACK HandleMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case WM_CLOSE:  // a request to end, from a program that does not see the other windows
      g_calls->stop();
      return 0;
    case WM_QUERYENDSESSION:
      return TRUE;
    case WM_ENDSESSION:
      if (first != FALSE) g_calls->session_ended();
      return 0;
    default:
      return DefWindowProcW(window, message, first, second);
  }
}

}  // namespace

/// An invisible window, because only windows are notified of the end of the session.
class StopSignals::Watch {
 public:
  explicit Watch(Calls calls) : calls_(std::move(calls)), ended_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
    g_calls = &calls_;
    g_ended = ended_.get();
    WNDCLASSEXW about{};
    about.cbSize = sizeof(about);
    about.lpfnWndProc = HandleMessage;
    about.hInstance = GetModuleHandleW(nullptr);
    about.lpszClassName = kWindowClass;
    RegisterClassExW(&about);
    window_ =
        CreateWindowExW(0, kWindowClass, L"", WS_OVERLAPPED, 0, 0, 0, 0, nullptr, nullptr, about.hInstance, nullptr);
    SetConsoleCtrlHandler(HandleConsole, TRUE);
  }
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;
  ~Watch() {
    SetConsoleCtrlHandler(HandleConsole, FALSE);
    if (window_ != nullptr) DestroyWindow(window_);
    UnregisterClassW(kWindowClass, GetModuleHandleW(nullptr));
    g_calls = nullptr;
    SetEvent(ended_.get());
    ended_ = {};
    g_ended = nullptr;
  }

 private:
  Calls calls_;
  Handle ended_;
  HWND window_ = nullptr;
};

StopSignals::StopSignals(Calls calls) : watch_(std::make_unique<Watch>(std::move(calls))) {}

StopSignals::~StopSignals() = default;

void StopSignals::ExitImmediately(int exit_code) {
  g_exit_code = exit_code;
  SetConsoleCtrlHandler(EndProcess, TRUE);  // the handler added last is called first
}

void StopSignals::RestoreDefault() { SetConsoleCtrlHandler(EndProcess, FALSE); }

}  // namespace orvalis
