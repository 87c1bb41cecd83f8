#pragma once

#include <QTimer>
#include <chrono>
#include <string>

#include "app/service_manager.h"

namespace orvalis {

/// systemd, by its protocol of datagrams to the socket that NOTIFY_SOCKET names. Never waits: what it does not take now
/// is dropped, where libsystemd's call would stop the event loop of a program whose manager hangs.
class SystemdManager : public ServiceManager {
 public:
  /// Takes what systemd said out of the environment, so that no program that is started takes it for its own.
  SystemdManager();

  [[nodiscard]] bool Watches() const override { return !socket_.empty(); }
  void Started() override;
  void Stopping() override { Send("STOPPING=1"); }
  void Tell(const std::string& status) override { Send("STATUS=" + status); }

 private:
  void Send(const std::string& message) const;

  std::string socket_;                           ///< its path, or "@" and its abstract name; "" without a manager
  std::chrono::microseconds watchdog_interval_;  ///< after which a silent program is started again; 0 for never
  QTimer alive_;
};

/// Before a line on standard error: "<4>" and so on for the system's journal, otherwise nothing.
[[nodiscard]] std::string JournalPrefix(int priority);
/// Whether standard error is read by the system's journal.
[[nodiscard]] bool ErrorsGoToJournal();

}  // namespace orvalis
