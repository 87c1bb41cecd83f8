#pragma once

#include <functional>
#include <memory>
#include <string>

#include "app/alerts.h"

class QSoundEffect;

namespace orvalis {

/// Plays wave files with Qt Multimedia, which is loaded with the first sound.
class QtSoundPlayer : public SoundPlayer {
 public:
  /// `fail` is called for a file that proves, while loading, not to be a sound.
  explicit QtSoundPlayer(std::function<void(const std::string&)> fail);
  ~QtSoundPlayer() override;

  void Play(const std::string& path) override;

 private:
  std::function<void(const std::string&)> fail_;
  std::unique_ptr<QSoundEffect> effect_;
};

}  // namespace orvalis
