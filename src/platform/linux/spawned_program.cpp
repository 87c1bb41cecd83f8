#include "platform/linux/spawned_program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFileInfo>
#include <csignal>
#include <cstring>

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

}  // namespace

pid_t SpawnProgram(const std::string& path, std::vector<std::string> variables) {
  const QFileInfo file(QString::fromStdString(path));
  if (path.empty() || !file.isFile()) {
    throw RunTimeError(RunTimeError::kFileNotFound,
                       "program \"" + path + "\" not found; choose one in the setup dialog");
  }
  if (!file.isExecutable()) {
    throw RunTimeError(RunTimeError::kPermissionDenied,
                       "the program \"" + path + "\" is not executable; make it so with chmod +x");
  }
  std::string program = file.absoluteFilePath().toStdString();
  Preparations child;
  Redirect(child.actions);
  posix_spawn_file_actions_addchdir_np(&child.actions, file.absolutePath().toStdString().c_str());
  Detach(child.attributes);
  std::vector<char*> environment;
  environment.reserve(variables.size() + 1);
  for (std::string& variable : variables) environment.push_back(variable.data());
  environment.push_back(nullptr);
  char* arguments[] = {program.data(), nullptr};
  pid_t process = 0;
  const int error =
      posix_spawn(&process, program.c_str(), &child.actions, &child.attributes, arguments, environment.data());
  if (error != 0) {
    throw RunTimeError(RunTimeError::kPathFileAccess,
                       Message::Of("the program \"%1\" cannot be started: %2").With(path, std::strerror(error)));
  }
  return process;
}

std::string FailureOf(int status) {
  if (WIFSIGNALED(status)) {
    return "was ended by signal " + std::to_string(WTERMSIG(status)) + " (" + strsignal(WTERMSIG(status)) + ")";
  }
  return WEXITSTATUS(status) == 0 ? "" : "ended with code " + std::to_string(WEXITSTATUS(status));
}

}  // namespace orvalis
