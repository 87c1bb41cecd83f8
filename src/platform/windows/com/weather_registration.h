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

/// What the type library in this executable says of an interface; the caller's. Throws RunTimeError when it has none.
[[nodiscard]] ITypeInfo* LoadType(const IID& interface_id);

/// The exit code when the command line ("/RegServer", "/UnregServer", with a minus sign too) asks to make this
/// executable known as the server of the classes, or to make it forgotten; otherwise nothing. For all users where that
/// is allowed, otherwise for this one; where it is, this user's own registration of before goes, because it would stand
/// in front. A failure is reported on standard error and undone.
[[nodiscard]] std::optional<int> RunRegistration(const std::vector<std::string>& arguments);

}  // namespace orvalis
