#include "platform/linux/detached_programs.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/spawned_program.h"

namespace orvalis {
namespace {

/// Ours, with the facts in place of what they replace.
std::vector<std::string> EnvironmentWith(const AlertFacts& facts) {
  std::vector<std::string> variables;
  for (char** variable = environ; *variable != nullptr; ++variable) {
    const std::string_view text = *variable;
    const std::string_view name = text.substr(0, text.find('='));
    const auto is_it = [&](const AlertFact& fact) { return fact.name == name; };
    if (std::ranges::none_of(facts, is_it)) variables.emplace_back(text);
  }
  for (const AlertFact& fact : facts) {
    if (fact.value) variables.push_back(fact.name + "=" + *fact.value);
  }
  return variables;
}

std::optional<std::string> LookAt(pid_t process) {
  int status = 0;
  const pid_t answer = waitpid(process, &status, WNOHANG);
  if (answer == 0) return std::nullopt;
  // The system forgets programs at once for a parent that ignores their ends, as ours may have been told to.
  return answer == process ? FailureOf(status) : "";
}

}  // namespace

void DetachedPrograms::Start(const Call& call) {
  const pid_t process = SpawnProgram(call.path, EnvironmentWith(call.facts));
  running_.Add([process] { return LookAt(process); }, call.ended);
}

}  // namespace orvalis
