#pragma once

#include <string>

#include "base/run_time_error.h"

namespace orvalis::test {

/// The number of the RunTimeError that `call` ends with, and its text; 0 for none.
int ErrorOf(const auto& call, std::string* text = nullptr) {
  try {
    call();
  } catch (const RunTimeError& error) {
    if (text != nullptr) *text = error.what();
    return error.number();
  }
  return 0;
}

}  // namespace orvalis::test
