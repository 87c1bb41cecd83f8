#pragma once

#include <cstdint>

namespace orvalis {

/// Program-wide flags of this run.
struct ProgramFlags {
  bool started_by_user = true;    ///< not launched by the automation system for a client; set once
  std::int16_t client_count = 0;  ///< live automation objects
  bool connected = false;         ///< a client asked for the connection, and it was not released
  bool moving = false;            ///< leftover of the focuser template: `Halt` clears it
  bool shutting_down = false;     ///< errors are ignored during shutdown
};

}  // namespace orvalis
