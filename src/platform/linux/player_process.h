#pragma once

#include <QProcess>
#include <functional>
#include <string>

#include "app/alerts.h"

namespace orvalis {

/// Plays sounds by the player program of the machine's sound system, for a program that links no multimedia library.
class PlayerProcess : public SoundPlayer {
 public:
  /// `fail` is called for a sound that the player could not play.
  explicit PlayerProcess(std::function<void(const std::string&)> fail);
  PlayerProcess(const PlayerProcess&) = delete;
  PlayerProcess& operator=(const PlayerProcess&) = delete;
  ~PlayerProcess() override;

  void Play(const std::string& path) override;

 private:
  void Stop();

  std::function<void(const std::string&)> fail_;
  QProcess player_;
  std::string path_;  ///< what is playing, or played last
};

}  // namespace orvalis
