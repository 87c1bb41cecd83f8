#include "platform/linux/detached_programs.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFileInfo>
#include <algorithm>
#include <csignal>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/run_time_error.h"

namespace orvalis {
namespace {

constexpr const char* kNull = "/dev/null";

/// What the child does before it becomes the program.
class Preparations {
 public:
  Preparations() {
    posix_spawn_file_actions_init(&actions);
    posix_spawnattr_init(&attributes);
  }
  Preparations(const Preparations&) = delete;
  Preparations& operator=(const Preparations&) = delete;
  ~Preparations() {
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
  }

  posix_spawn_file_actions_t actions{};
  posix_spawnattr_t attributes{};
};

bool Lasts(int stream) {
  struct stat about {};
  return fstat(stream, &about) == 0 && (S_ISREG(about.st_mode) || S_ISSOCK(about.st_mode));
}

void Redirect(posix_spawn_file_actions_t& actions) {
  posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, kNull, O_RDONLY, 0);
  if (!Lasts(STDERR_FILENO)) posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, kNull, O_WRONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, STDERR_FILENO, STDOUT_FILENO);
  posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
}

/// A session of its own, and signals as usual, some of which this program ignores.
void Detach(posix_spawnattr_t& attributes) {
  sigset_t none;
  sigemptyset(&none);
  sigset_t all;
  sigfillset(&all);
  posix_spawnattr_setsigmask(&attributes, &none);
  posix_spawnattr_setsigdefault(&attributes, &all);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
}

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

std::string FailureOf(int status) {
  if (WIFSIGNALED(status)) {
    return "was ended by signal " + std::to_string(WTERMSIG(status)) + " (" + strsignal(WTERMSIG(status)) + ")";
  }
  return WEXITSTATUS(status) == 0 ? "" : "ended with code " + std::to_string(WEXITSTATUS(status));
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
  const QFileInfo file(QString::fromStdString(call.path));
  if (call.path.empty() || !file.isFile()) {
    throw RunTimeError(RunTimeError::kFileNotFound,
                       "program \"" + call.path + "\" not found; choose one in the setup dialog");
  }
  if (!file.isExecutable()) {
    throw RunTimeError(RunTimeError::kPermissionDenied,
                       "the program \"" + call.path + "\" is not executable; make it so with chmod +x");
  }
  std::string path = file.absoluteFilePath().toStdString();
  Preparations child;
  Redirect(child.actions);
  posix_spawn_file_actions_addchdir_np(&child.actions, file.absolutePath().toStdString().c_str());
  Detach(child.attributes);
  std::vector<std::string> variables = EnvironmentWith(call.facts);
  std::vector<char*> environment;
  environment.reserve(variables.size() + 1);
  for (std::string& variable : variables) environment.push_back(variable.data());
  environment.push_back(nullptr);
  char* arguments[] = {path.data(), nullptr};
  pid_t process = 0;
  const int error =
      posix_spawn(&process, path.c_str(), &child.actions, &child.attributes, arguments, environment.data());
  if (error != 0) {
    throw RunTimeError(RunTimeError::kPathFileAccess,
                       "the program \"" + call.path + "\" cannot be started: " + std::strerror(error));
  }
  running_.Add([process] { return LookAt(process); }, call.ended);
}

}  // namespace orvalis
