#include "platform/linux/program_runner.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>
#include <system_error>
#include <vector>

#include "base/run_time_error.h"
#include "platform/linux/spawned_program.h"

namespace orvalis {
namespace {

constexpr auto kNotFound = Message::Of("\"%1\" was not found");

// A request is one packet: the program's path and each fact as "NAME=VALUE", each with a NUL behind it. The answer is
// one packet too: this word, and what went wrong.
constexpr std::string_view kAnswer = "ended:";
constexpr std::size_t kLongestPacket = 65536;

/// A socket that is closed with its last copy.
using Connection = std::shared_ptr<const int>;

Connection Connect(const std::string& path) {
  sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
  if (path.size() >= sizeof address.sun_path) return nullptr;
  std::memcpy(address.sun_path, path.data(), path.size());
  const int descriptor = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  if (descriptor < 0) return nullptr;
  Connection connection(new int(descriptor), [](const int* open) {
    close(*open);
    delete open;
  });
  if (connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) return nullptr;
  return connection;
}

std::string RequestOf(const ProgramStarter::Call& call) {
  std::string request = call.path + '\0';
  for (const AlertFact& fact : call.facts) {
    if (fact.value) request += fact.name + "=" + *fact.value + '\0';
  }
  return request;
}

bool Send(int connection, const std::string& packet) {
  return send(connection, packet.data(), packet.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(packet.size());
}

/// Nothing while there is none; "" when the other end is gone.
std::optional<std::string> Receive(int connection, int flags = 0) {
  std::vector<char> packet(kLongestPacket);
  const ssize_t size = recv(connection, packet.data(), packet.size(), flags);
  if (size < 0 && (errno == EAGAIN || errno == EINTR)) return std::nullopt;
  return std::string(packet.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
}

std::optional<std::string> LookAt(int connection) {
  const std::optional<std::string> answer = Receive(connection, MSG_DONTWAIT);
  if (!answer) return std::nullopt;
  if (!answer->starts_with(kAnswer)) return "lost its runner: how it ended is not known";
  return answer->substr(kAnswer.size());
}

std::vector<std::string> Split(const std::string& request) {
  std::vector<std::string> parts;
  for (std::size_t begin = 0, end = 0; (end = request.find('\0', begin)) != std::string::npos; begin = end + 1) {
    parts.push_back(request.substr(begin, end - begin));
  }
  return parts;
}

/// Of the facts alone: any other variable might tell a shell what to do.
bool IsFact(std::string_view variable) {
  constexpr std::string_view kPrefix = "ORVALIS_";
  return variable.starts_with(kPrefix) && variable.find('=') != std::string_view::npos;
}

/// Neither the file nor a folder on its way, so that no one can put another one in its place.
bool OnlyRootCanChange(std::filesystem::path path) {
  while (true) {
    struct stat about {};
    if (stat(path.c_str(), &about) != 0 || about.st_uid != 0 || (about.st_mode & (S_IWGRP | S_IWOTH)) != 0) {
      return false;
    }
    if (path == path.root_path()) return true;
    path = path.parent_path();
  }
}

/// The program's file itself, not a link to it. Throws RunTimeError.
std::string AllowedProgram(const std::string& path) {
  std::error_code missing;
  const std::filesystem::path program = std::filesystem::canonical(path, missing);
  if (missing || !std::filesystem::path(path).is_absolute()) {
    throw RunTimeError(RunTimeError::kFileNotFound, kNotFound.With(path));
  }
  if (!OnlyRootCanChange(program)) {
    throw RunTimeError(RunTimeError::kPermissionDenied,
                       "\"" + path + "\" and its folders have to belong to root and be writable by root alone");
  }
  return program.string();
}

std::string Run(const std::vector<std::string>& request) {
  std::vector<std::string> variables;
  for (char** variable = environ; *variable != nullptr; ++variable) variables.emplace_back(*variable);
  for (const std::string& part : request) {
    if (IsFact(part)) variables.push_back(part);
  }
  const pid_t process = SpawnProgram(AllowedProgram(request.front()), std::move(variables));
  int status = 0;
  while (waitpid(process, &status, 0) < 0) {
    if (errno != EINTR) return "how it ended is not known";
  }
  return FailureOf(status);
}

}  // namespace

void RunnerPrograms::Start(const Call& call) {
  const Connection connection = Connect(socket_);
  if (!connection || !Send(*connection, RequestOf(call))) return without_runner_.Start(call);
  running_.Add([connection] { return LookAt(*connection); }, call.ended);
}

int RunOneProgram(int connection) {
  const std::vector<std::string> request = Split(Receive(connection).value_or(""));
  if (request.empty()) return 1;
  std::string failure;
  try {
    failure = Run(request);
  } catch (const std::exception& error) {
    failure = std::string("cannot be started: ") + error.what();
  }
  // Whoever asked may have been started again meanwhile.
  static_cast<void>(Send(connection, std::string(kAnswer) + failure));
  return 0;
}

}  // namespace orvalis
