#include <utility>

#include "platform/linux/qt_sound_player.h"
#include "platform/native.h"

namespace orvalis::native {

std::unique_ptr<SoundPlayer> MakeSoundPlayer(std::function<void(const std::string&)> fail) {
  return std::make_unique<QtSoundPlayer>(std::move(fail));
}

}  // namespace orvalis::native
