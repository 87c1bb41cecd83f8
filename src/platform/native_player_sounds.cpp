#include <utility>

#include "platform/linux/player_process.h"
#include "platform/native.h"

namespace orvalis::native {

std::unique_ptr<SoundPlayer> MakeSoundPlayer(std::function<void(const std::string&)> fail) {
  return std::make_unique<PlayerProcess>(std::move(fail));
}

}  // namespace orvalis::native
