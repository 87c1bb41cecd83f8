#include "platform/linux/qt_sound_player.h"

#include <QAudioDevice>
#include <QFileInfo>
#include <QMediaDevices>
#include <QSoundEffect>
#include <QUrl>
#include <utility>

#include "base/run_time_error.h"

namespace orvalis {

QtSoundPlayer::QtSoundPlayer(std::function<void(const std::string&)> fail) : fail_(std::move(fail)) {}

QtSoundPlayer::~QtSoundPlayer() = default;

void QtSoundPlayer::Play(const std::string& path) {
  const QFileInfo file(QString::fromStdString(path));
  if (path.empty() || !file.isFile()) {
    throw RunTimeError(RunTimeError::kFileNotFound,
                       "sound file \"" + path + "\" not found; choose one in the setup dialog");
  }
  // A sound that still plays is stopped before another one is opened.
  effect_.reset();
  const QAudioDevice device = QMediaDevices::defaultAudioOutput();
  if (device.isNull())
    throw RunTimeError(RunTimeError::kDeviceUnavailable, Message::Of("no sound output on this machine"));
  effect_ = std::make_unique<QSoundEffect>(device);
  QObject::connect(effect_.get(), &QSoundEffect::statusChanged, effect_.get(), [this, path] {
    if (effect_->status() == QSoundEffect::Error) fail_("the sound file \"" + path + "\" cannot be played");
  });
  effect_->setSource(QUrl::fromLocalFile(file.absoluteFilePath()));
  effect_->play();
}

}  // namespace orvalis
