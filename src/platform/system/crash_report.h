#pragma once

#include <filesystem>

/// What a fault leaves for a person. Implemented once per operating system.
namespace orvalis::crash_report {

/// From now on a dump of the process, if the system makes one, is without its heap, where passwords are, and on Linux
/// without its stack; what the process starts inherits that there. Call it before anything secret is read.
void EmptyDumps();

/// From now on a fault, a bad address or an abort, leaves a line and a backtrace in `folder`: in the error log, and in
/// the crash note for the next start. Then the system does with the process what it does with any. Call it once.
///
/// Does nothing in a build with sanitizers, which report faults themselves.
void Arm(const std::filesystem::path& folder);

}  // namespace orvalis::crash_report
