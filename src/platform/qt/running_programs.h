#pragma once

#include <QTimer>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "app/alerts.h"

namespace orvalis {

/// The programs that were started and have not ended, as far as is known. They are looked at a few times a second, and
/// live on when this object goes.
class RunningPrograms {
 public:
  /// Nothing while the program runs; then what went wrong, "" for nothing.
  using Look = std::function<std::optional<std::string>()>;

  RunningPrograms();

  /// `ended` may be none; the program is looked at all the same, so that its system forgets it when it ends.
  void Add(Look look, ProgramStarter::Ended ended);

 private:
  struct Program {
    Look look;
    ProgramStarter::Ended ended;
  };
  void LookAtAll();

  std::vector<Program> programs_;
  QTimer timer_;  ///< while there are any
};

}  // namespace orvalis
