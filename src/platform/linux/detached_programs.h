#pragma once

#include "app/alerts.h"
#include "platform/qt/running_programs.h"

namespace orvalis {

/// Starts programs in sessions of their own, so that they outlive this one, and learns how they end. They read nothing
/// and keep none of our files open; what they print goes where our own errors go if that lasts, see `Start`.
class DetachedPrograms : public ProgramStarter {
 public:
  /// A terminal, and a pipe to another program, may go before the started program does, which would end at its next
  /// line; then what it prints is dropped. The system's journal and files last.
  void Start(const Call& call) override;

 private:
  RunningPrograms running_;
};

}  // namespace orvalis
