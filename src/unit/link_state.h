#pragma once

namespace orvalis {

/// What the link to the unit is doing.
enum class LinkState {
  kDisconnected,
  kConnecting,  ///< the unit has not answered yet
  kGreeted,     ///< the unit has answered the greeting; its first frame is still to come
  kConnected,
};

}  // namespace orvalis
