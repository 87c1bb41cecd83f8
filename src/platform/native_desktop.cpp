#include <utility>

#include "platform/linux/qt_sound_player.h"
#include "platform/native.h"
#include "platform/qt/curl_ftp_sender.h"

namespace orvalis::native {

std::unique_ptr<SoundPlayer> MakeSoundPlayer(std::function<void(const std::string&)> fail) {
  return std::make_unique<QtSoundPlayer>(std::move(fail));
}

std::unique_ptr<FtpSender> MakeFtpSender() { return std::make_unique<CurlFtpSender>(); }

}  // namespace orvalis::native
