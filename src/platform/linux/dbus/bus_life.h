#pragma once

#include <QString>
#include <chrono>

namespace orvalis {

/// Where the bus library finds the session bus; empty when there is none, where the library would start a new one.
[[nodiscard]] QString SessionBusAddress();

/// False when the bus at `address` takes connections but says nothing for as long as `patience`: the bus library would
/// wait for it for ever, and the program with it. True when nothing can be said: the library tells then why it cannot
/// connect.
[[nodiscard]] bool BusAnswers(const QString& address, std::chrono::milliseconds patience);

}  // namespace orvalis
