#include <utility>

#include "base/run_time_error.h"
#include "platform/linux/player_process.h"
#include "platform/native.h"

namespace orvalis::native {
namespace {

class NoFtpSender : public FtpSender {
 public:
  void Send(const FtpUpload& /*upload*/, Done /*done*/) override {
    throw RunTimeError(RunTimeError::kDeviceUnavailable, "no picture to send: the program is running without windows");
  }
  void Abandon() override {}
};

}  // namespace

std::unique_ptr<SoundPlayer> MakeSoundPlayer(std::function<void(const std::string&)> fail) {
  return std::make_unique<PlayerProcess>(std::move(fail));
}

std::unique_ptr<FtpSender> MakeFtpSender() { return std::make_unique<NoFtpSender>(); }

}  // namespace orvalis::native
