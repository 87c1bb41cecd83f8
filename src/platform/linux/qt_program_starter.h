#pragma once

#include "app/alerts.h"

namespace orvalis {

/// Starts programs as processes of their own, which outlive this one.
class QtProgramStarter : public ProgramStarter {
 public:
  void Start(const std::string& path) override;
};

}  // namespace orvalis
