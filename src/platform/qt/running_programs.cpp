#include "platform/qt/running_programs.h"

#include <chrono>
#include <utility>

namespace orvalis {

RunningPrograms::RunningPrograms() {
  constexpr std::chrono::milliseconds kInterval{250};
  timer_.setInterval(kInterval);
  timer_.callOnTimeout([this] { LookAtAll(); });
}

void RunningPrograms::Add(Look look, ProgramStarter::Ended ended) {
  programs_.push_back({std::move(look), std::move(ended)});
  timer_.start();
}

void RunningPrograms::LookAtAll() {
  struct End {
    ProgramStarter::Ended tell;
    std::string failure;
  };
  std::vector<End> ends;
  std::erase_if(programs_, [&](const Program& program) {
    const std::optional<std::string> failure = program.look();
    if (failure && program.ended) ends.push_back({program.ended, *failure});
    return failure.has_value();
  });
  if (programs_.empty()) timer_.stop();
  // Last: who is told may start another program.
  for (const End& end : ends) end.tell(end.failure);
}

}  // namespace orvalis
