#include "platform/linux/player_process.h"

#include <QFileInfo>
#include <QStandardPaths>
#include <array>
#include <utility>

#include "base/run_time_error.h"

namespace orvalis {
namespace {

struct Player {
  const char* program;
  const char* options;  ///< before the file's name; may be none
};
/// Of PipeWire, PulseAudio and ALSA; the first that is installed plays.
constexpr std::array kPlayers{Player{"pw-play", nullptr}, Player{"paplay", nullptr}, Player{"aplay", "--quiet"}};

/// How long a player gets to stop when it is asked to.
constexpr int kStopMilliseconds = 200;

}  // namespace

PlayerProcess::PlayerProcess(std::function<void(const std::string&)> fail) : fail_(std::move(fail)) {
  player_.setStandardOutputFile(QProcess::nullDevice());
  player_.setStandardErrorFile(QProcess::nullDevice());
  QObject::connect(&player_, &QProcess::finished, &player_, [this](int code, QProcess::ExitStatus status) {
    if (status == QProcess::NormalExit && code == 0) return;
    fail_("the sound file \"" + path_ + "\" cannot be played by " + player_.program().toStdString());
  });
}

PlayerProcess::~PlayerProcess() {
  player_.disconnect();
  Stop();
}

void PlayerProcess::Play(const std::string& path) {
  const QFileInfo file(QString::fromStdString(path));
  if (path.empty() || !file.isFile()) {
    throw RunTimeError(RunTimeError::kFileNotFound,
                       "sound file \"" + path + "\" not found; choose one in the setup dialog");
  }
  const QSignalBlocker not_a_failure(player_);
  Stop();
  for (const Player& player : kPlayers) {
    const QString program = QStandardPaths::findExecutable(player.program);
    if (program.isEmpty()) continue;
    QStringList arguments;
    if (player.options != nullptr) arguments << player.options;
    path_ = path;
    player_.start(program, arguments << file.absoluteFilePath());
    return;
  }
  throw RunTimeError(RunTimeError::kDeviceUnavailable,
                     "no sound player is installed; install alsa-utils, pulseaudio-utils or pipewire-bin");
}

void PlayerProcess::Stop() {
  if (player_.state() == QProcess::NotRunning) return;
  player_.kill();
  player_.waitForFinished(kStopMilliseconds);
}

}  // namespace orvalis
