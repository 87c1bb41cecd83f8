#pragma once

#include <string>
#include <vector>

#include "base/message.h"

namespace orvalis::network {

/// What the network can reach now.
struct Served {
  std::vector<std::string> pages = {};  ///< the address of each page to begin at, such as "http://127.0.0.1:11111/"
  Message trouble = {};                 ///< what does not work, and why; none when everything does
};

}  // namespace orvalis::network
