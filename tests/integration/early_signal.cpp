// Loaded into the program: asks it to end while the system still prepares it, before its `main`.

#include <csignal>

namespace {

[[gnu::constructor]] void AskToEnd() { std::raise(SIGTERM); }

}  // namespace
