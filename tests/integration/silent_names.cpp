// Loaded before the system's library: its name servers say nothing. The names that are looked up go into the file that
// the environment names.

#include <dlfcn.h>
#include <netdb.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>

extern "C" int getaddrinfo(const char* node, const char* service, const addrinfo* hints, addrinfo** found) {
  constexpr unsigned kSilentSeconds = 30;
  const bool numeric = hints != nullptr && (hints->ai_flags & AI_NUMERICHOST) != 0;
  if (numeric || node == nullptr || std::string(node).find(".example") == std::string::npos) {
    static const auto real = reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
    return real(node, service, hints, found);
  }
  std::ofstream(std::getenv("SILENT_NAMES"), std::ios::app) << node << std::endl;
  sleep(kSilentSeconds);
  return EAI_AGAIN;
}
