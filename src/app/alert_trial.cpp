#include "app/alert_trial.h"

#include <array>
#include <exception>
#include <optional>
#include <string_view>

#include "base/recognized.h"
#include "base/run_time_error.h"

namespace orvalis {
namespace {

/// How a program ended, which comes as text from the process that ran it.
Message Ended(std::string_view failure) {
  if (failure.empty()) return Message::Of("ended with code 0");
  constexpr std::array kFailures{
      Message::Of("ended with code %1"),
      Message::Of("was ended by signal %1"),
      Message::Of("cannot be started: %1"),
      Message::Of("crashed (%1)"),
      Message::Of("lost its runner: how it ended is not known"),
      Message::Of("how it ended is not known"),
  };
  const auto as_it_is = [](std::string_view part) -> std::optional<Message> { return std::string(part); };
  for (const Phrase& phrase : kFailures) {
    if (const auto known = Recognized(failure, phrase, as_it_is)) return *known;
  }
  return std::string(failure);
}

}  // namespace

void AlertTrial::Try(const SetupFile& file, const std::string& path, const Tell& tell) {
  if (path.empty()) return tell(Message::Of("no file chosen"));
  const auto record = [this, title = "test of alert " + std::string(file.alert) + ": "](const std::string& what) {
    parts_.events.Record(title + what);
  };
  try {
    if (file.is_sound) {
      Play(path, tell);
    } else {
      Start(file, path, [tell, record, path](const Message& what) {
        tell(what);
        record(path + " " + what.English());
      });
    }
  } catch (const std::exception& error) {
    tell(MessageOf(error));
    record(error.what());
  }
}

void AlertTrial::SoundFailed(const std::string& failure) {
  if (tell_of_sound_ && failure.find(sound_) != std::string::npos) tell_of_sound_(failure);
}

void AlertTrial::Play(const std::string& path, const Tell& tell) {
  sound_ = path;
  tell_of_sound_ = tell;
  tell(Message::Of("playing"));  // before: it may fail at once
  parts_.sounds.Play(path);
}

void AlertTrial::Start(const SetupFile& file, const std::string& path, const Tell& tell) {
  const AlertFacts facts =
      file.of_verdict ? FactsOfAlert(file.alert, true, parts_.observer.Now()) : FactsOfAlert(file.alert, true);
  parts_.programs.Start(
      {.path = path, .facts = facts, .ended = [tell](const std::string& failure) { tell(Ended(failure)); }});
  tell(Message::Of("started"));
}

}  // namespace orvalis
