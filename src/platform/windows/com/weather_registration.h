#pragma once

#include <windows.h>

// After windows.h, whose types they use.
#include <oleauto.h>

#include <optional>
#include <string>
#include <vector>

namespace orvalis {

/// The program's name in the event log, and the number of a plain text event.
constexpr const wchar_t* kEventSource = L"Orvalis";
constexpr unsigned kEventNumber = 1;

/// The interface's description in this executable's type library. Throws RunTimeError if there is none.
[[nodiscard]] ITypeInfo* LoadWeatherType();

/// Registers or unregisters this executable as the class's server if the command line says so ("/RegServer",
/// "/UnregServer", also with a minus sign), and returns the exit code; otherwise returns nothing. It is done for all
/// users if allowed, removing an earlier registration for this user, which would hide it; otherwise for this user. A
/// failure is reported on standard error and undone.
[[nodiscard]] std::optional<int> RunRegistration(const std::vector<std::string>& arguments);

}  // namespace orvalis
