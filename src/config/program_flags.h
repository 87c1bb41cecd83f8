#pragma once

#include <cstdint>

namespace orvalis {

/// What the whole program knows about its own run.
struct ProgramFlags {
  bool started_by_user = true;    ///< not launched by the automation system for a client; set once
  std::int16_t client_count = 0;  ///< live automation objects
  bool shutting_down = false;     ///< from here on errors are ignored
};

}  // namespace orvalis
