#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "base/event_loop.h"
#include "base/message.h"
#include "base/task.h"
#include "unit/serial_port.h"

namespace orvalis {

/// Looks on which serial port the unit is. Each port is opened, greeted as a connection begins, and closed again;
/// nothing else is sent. Opening one can reset what is connected to it, so only the ports that a person left ticked are
/// tried, one after the other, and none after the unit was found.
class UnitSearch {
 public:
  enum class Finding {
    kWaiting,    ///< not tried, or not yet
    kTrying,     ///< is open now
    kUnit,       ///< answered as the unit does
    kSilent,     ///< no answer in time
    kOther,      ///< something else answers or talks by itself
    kNotOpened,  ///< in use, no permission, no such port: `detail` says which, and what to do
    kOurs,       ///< the program's own connection uses it
  };
  struct Result {
    std::string port;  ///< as the key "COM Port" takes it
    Finding finding = Finding::kWaiting;
    Message detail = {};
  };
  struct Parts {
    SerialPort& port;  ///< one of its own
    EventLoop& loop;
    /// Whether the program's own connection has this port open now.
    std::function<bool(const std::string& name)> is_ours;
    /// The results, or whether it runs, have changed. Must not start or stop the search.
    std::function<void()> changed;
  };

  explicit UnitSearch(const Parts& parts);
  UnitSearch(const UnitSearch&) = delete;
  UnitSearch& operator=(const UnitSearch&) = delete;
  ~UnitSearch() { Stop(); }

  /// Tries `ports` in this order; one that runs is stopped first.
  void Start(const std::vector<std::string>& ports);
  /// Ends it and closes the port, at once.
  void Stop();
  /// Leaves the port that is open now to the program's own connection, and goes on with the next.
  void GiveWay();

  [[nodiscard]] bool running() const { return job_.running(); }
  /// One for each port of the last search.
  [[nodiscard]] const std::vector<Result>& results() const { return results_; }
  /// The port that is open now; null while none is.
  [[nodiscard]] const Result* trying() const;
  /// Where the unit was found; null when it was not.
  [[nodiscard]] const Result* found() const;

 private:
  void RunFrom(std::size_t first);
  Task<> TryFrom(std::size_t first);
  Task<> Try(Result& result);
  /// Whether nothing but more answers of a unit follows the first: what talks by itself may begin with any letter.
  Task<bool> FallsSilent();

  Parts parts_;
  std::vector<Result> results_;
  Message lost_;  ///< why the port vanished while it was open
  Job job_;
};

}  // namespace orvalis
