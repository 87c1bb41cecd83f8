#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace orvalis {

/// Starts the program or script at `path` in its own folder and in a session of its own, with `variables`
/// ("NAME=VALUE") for its environment. It reads nothing and keeps none of our files open; what it prints goes where our
/// own errors go if that lasts: a terminal, and a pipe to another program, may go before the started program does,
/// which would end at its next line. The system's journal and files last. Throws RunTimeError kFileNotFound,
/// kPermissionDenied or kPathFileAccess.
[[nodiscard]] pid_t SpawnProgram(const std::string& path, std::vector<std::string> variables);

/// What went wrong in a program that ended with `status`, as `waitpid` gives it; "" for nothing.
[[nodiscard]] std::string FailureOf(int status);

}  // namespace orvalis
