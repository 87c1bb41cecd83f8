#pragma once

#include <string_view>

namespace orvalis_unit {

// The built-in night, played when no scenario file is given.
std::string_view NightScenario();

}  // namespace orvalis_unit
