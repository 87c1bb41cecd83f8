#pragma once

#include "app/alerts.h"

namespace orvalis {

/// Plays wave files through the multimedia control interface.
class MciSoundPlayer : public SoundPlayer {
 public:
  MciSoundPlayer() = default;
  MciSoundPlayer(const MciSoundPlayer&) = delete;
  MciSoundPlayer& operator=(const MciSoundPlayer&) = delete;
  ~MciSoundPlayer() override { Close(); }

  void Play(const std::string& path) override;

 private:
  void Close() noexcept;

  bool open_ = false;
};

}  // namespace orvalis
