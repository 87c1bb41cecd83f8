#include "platform/windows/mci_sound_player.h"

#include "platform/windows/windows_error.h"

// After windows.h, whose types they use.
#include <mmsystem.h>

#include <array>

namespace orvalis {
namespace {

/// The open sound's name in commands.
const std::wstring kAlias = L"orvalis_alert";

MCIERROR Send(const std::wstring& command) { return mciSendStringW(command.c_str(), nullptr, 0, nullptr); }

std::string Words(MCIERROR error) {
  std::array<wchar_t, 256> words{};
  if (mciGetErrorStringW(error, words.data(), words.size()) == FALSE) return "error " + std::to_string(error);
  return Narrow(words.data());
}

/// The file's short name if it has one: the drivers support neither all characters nor long paths.
std::wstring DriverPath(const std::string& path) {
  const std::wstring full = Wide(path);
  std::array<wchar_t, MAX_PATH> name{};
  const DWORD length = GetShortPathNameW(full.c_str(), name.data(), static_cast<DWORD>(name.size()));
  return length == 0 || length >= name.size() ? full : std::wstring(name.data(), length);
}

RunTimeError PlayFailure(MCIERROR error, const std::string& path) {
  switch (error) {
    case MCIERR_WAVE_OUTPUTSINUSE:
    case MCIERR_WAVE_SETOUTPUTINUSE:
    case MCIERR_WAVE_OUTPUTSUNSUITABLE:
    case MCIERR_WAVE_SETOUTPUTUNSUITABLE:
    case MCIERR_DEVICE_NOT_INSTALLED:
      return {RunTimeError::kDeviceUnavailable, "no sound output on this machine"};
    default:
      return {RunTimeError::kDeviceUnavailable, "the sound file \"" + path + "\" cannot be played: " + Words(error)};
  }
}

}  // namespace

void MciSoundPlayer::Play(const std::string& path) {
  Close();
  const DWORD attributes = GetFileAttributesW(Wide(path).c_str());
  if (path.empty() || attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    throw RunTimeError(RunTimeError::kFileNotFound,
                       "sound file \"" + path + "\" not found; choose one in the setup dialog");
  }
  if (const MCIERROR error = Send(L"open \"" + DriverPath(path) + L"\" type waveaudio alias " + kAlias); error != 0) {
    throw PlayFailure(error, path);
  }
  open_ = true;
  if (const MCIERROR error = Send(L"play " + kAlias); error != 0) throw PlayFailure(error, path);
}

void MciSoundPlayer::Close() noexcept {
  if (!open_) return;
  Send(L"stop " + kAlias);
  Send(L"close " + kAlias);
  open_ = false;
}

}  // namespace orvalis
