#pragma once

#include <functional>
#include <string>

#include "app/alerts.h"
#include "app/observer.h"
#include "app/setup_fields.h"
#include "base/event_list.h"
#include "base/message.h"

namespace orvalis {

/// Gives an alert for a person who wants to see what it does, whatever the switches and the sky.
class AlertTrial {
 public:
  /// What happened, for the person: "started", later "ended with code 3".
  using Tell = std::function<void(const Message& what)>;
  struct Parts {
    Observer& observer;
    SoundPlayer& sounds;
    ProgramStarter& programs;
    EventList& events;
  };
  explicit AlertTrial(const Parts& parts) : parts_(parts) {}

  /// Plays or starts `path`, a program with ORVALIS_TEST=1, as the alert of `file`. `tell` is called at once, and again
  /// when a program ends.
  void Try(const SetupFile& file, const std::string& path, const Tell& tell);

  /// What seemed to play turned out to be no sound.
  void SoundFailed(const std::string& failure);

 private:
  void Play(const std::string& path, const Tell& tell);
  void Start(const SetupFile& file, const std::string& path, const Tell& tell);

  Parts parts_;
  std::string sound_;   ///< the last one tried
  Tell tell_of_sound_;  ///< for it
};

}  // namespace orvalis
