#pragma once

#include <cstdint>

namespace orvalis {

/// The indicator colours as whole-number RGB values, red in the lowest byte.
enum class Colour : std::int32_t {
  kRed = 255,
  kYellow = 65535,
  kGreen = 65280,
  kWhite = 16777215,
};

}  // namespace orvalis
