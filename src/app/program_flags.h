#pragma once

#include <cstdint>

namespace orvalis {

/// What the whole program knows about its own run.
struct ProgramFlags {
  bool started_by_user = true;    ///< not launched by the automation system for a client; set once
  std::int16_t client_count = 0;  ///< live automation objects
  bool connected = false;         ///< a client asked for the connection, and nobody has given it up
  bool moving = false;            ///< leftover of the focuser template: `Halt` clears it
  bool shutting_down = false;     ///< from here on errors are ignored
};

}  // namespace orvalis
