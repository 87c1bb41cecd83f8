#include "app/settings_loss.h"

namespace orvalis {

void SettingsLoss::Watch() {
  std::string notice = parts_.store.LossNotice();
  if (notice == acknowledged_) notice.clear();
  if (notice == notice_) return;
  parts_.events.Record(notice.empty() ? "the loss of the settings was acknowledged" : notice,
                       notice.empty() ? EventLevel::kNotice : EventLevel::kError);
  notice_ = notice;
  parts_.panel.Stand({.cause = StandingMessage::Cause::kSettingsLost, .text = notice, .to_acknowledge = true});
}

void SettingsLoss::Acknowledge() {
  acknowledged_ = notice_;  // at least for this run, should the disk be full
  Watch();
  parts_.store.AcknowledgeLoss();
}

}  // namespace orvalis
