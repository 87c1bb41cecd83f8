#pragma once

#include "app/alerts.h"
#include "platform/qt/running_programs.h"

namespace orvalis {

/// Starts programs in sessions of their own, so that they outlive this one, and learns how they end.
class DetachedPrograms : public ProgramStarter {
 public:
  void Start(const Call& call) override;

 private:
  RunningPrograms running_;
};

}  // namespace orvalis
