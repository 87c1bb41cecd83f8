#include "platform/windows/registry_profile.h"

#include <array>
#include <memory>
#include <vector>

#include "platform/windows/handle.h"

namespace orvalis {
namespace {

constexpr DWORD kPatienceMs = 500;
/// The value of the notes' key that tells that they are all there.
constexpr const wchar_t* kNotesComplete = L"Complete";
/// Below the notes' key, the notes themselves: the values of the store's own key stand apart from the mark.
constexpr const wchar_t* kNotes = L"\\Notes";

struct CloseKey {
  using pointer = HKEY;
  void operator()(HKEY key) const { RegCloseKey(key); }
};
using Key = std::unique_ptr<HKEY, CloseKey>;

Key OpenKey(const std::wstring& path, REGSAM access) {
  HKEY key = nullptr;
  SetLastError(static_cast<DWORD>(RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, access, &key)));
  return Key(key);
}

Key MakeKey(const std::wstring& path) {
  HKEY key = nullptr;
  SetLastError(static_cast<DWORD>(RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                                  KEY_READ | KEY_WRITE, nullptr, &key, nullptr)));
  return Key(key);
}

/// ERROR_SUCCESS, or why there is no text: ERROR_FILE_NOT_FOUND where there is nothing.
DWORD ReadText(const std::wstring& path, const std::wstring& name, std::wstring& text) {
  constexpr DWORD kTextOnly = RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ | RRF_NOEXPAND;
  DWORD bytes = 0;
  const auto read = [&](void* into) {
    return static_cast<DWORD>(
        RegGetValueW(HKEY_CURRENT_USER, path.c_str(), name.c_str(), kTextOnly, nullptr, into, &bytes));
  };
  if (const DWORD error = read(nullptr); error != ERROR_SUCCESS) return error;
  // Another program may write a longer text in between.
  DWORD error = ERROR_MORE_DATA;
  while (error == ERROR_MORE_DATA) {
    text.assign(bytes / sizeof(wchar_t) + 1, L'\0');
    bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    error = read(text.data());
  }
  text.resize(text.find(L'\0') == std::wstring::npos ? text.size() : text.find(L'\0'));
  return error;
}

/// The names of the values, or of the keys, in `key`.
std::vector<std::wstring> NamesIn(HKEY key, bool keys) {
  std::vector<std::wstring> names;
  constexpr DWORD kLongestName = 16384;
  std::vector<wchar_t> name(kLongestName);
  for (DWORD i = 0;; ++i) {
    DWORD length = kLongestName;
    const LONG error = keys ? RegEnumKeyExW(key, i, name.data(), &length, nullptr, nullptr, nullptr, nullptr)
                            : RegEnumValueW(key, i, name.data(), &length, nullptr, nullptr, nullptr, nullptr);
    if (error != ERROR_SUCCESS) return names;
    names.emplace_back(name.data(), length);
  }
}

/// Keeps other programs from the store while it lives.
class StoreLock {
 public:
  StoreLock() : mutex_(CreateMutexW(nullptr, FALSE, L"Local\\Orvalis.Weather.profile")) {
    const DWORD outcome = WaitForSingleObject(mutex_.get(), kPatienceMs);
    // Abandoned: its holder was killed, and its notes tell what is left to do.
    held_ = outcome == WAIT_OBJECT_0 || outcome == WAIT_ABANDONED;
  }
  StoreLock(const StoreLock&) = delete;
  StoreLock& operator=(const StoreLock&) = delete;
  ~StoreLock() {
    if (held_) ReleaseMutex(mutex_.get());
  }
  [[nodiscard]] bool held() const { return held_; }

 private:
  Handle mutex_;
  bool held_ = false;
};

}  // namespace

std::string RegistryProfile::GetValue(std::string_view /*driver_id*/, std::string_view name, std::string_view subkey) {
  const Place place{Wide(subkey), Wide(name)};
  if (const auto pending = batch_.find(place); pending != batch_.end()) return Narrow(pending->second);
  if (OpenKey(NotesKey(), KEY_READ)) {
    const StoreLock lock;
    if (lock.held()) FinishNotes();
  }
  std::wstring text;
  const DWORD error = ReadText(PathOf(key_, place.first), place.second, text);
  if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) return {};
  if (error != ERROR_SUCCESS) {
    throw RunTimeError(RunTimeError::kPathFileAccess, "cannot read the setting \"" + std::string(name) + "\" in " +
                                                          Location() + ": " + SystemText(error));
  }
  return Narrow(text);
}

void RegistryProfile::WriteValue(std::string_view /*driver_id*/, std::string_view name, std::string_view value,
                                 std::string_view subkey) {
  const Place place{Wide(subkey), Wide(name)};
  if (in_batch_) {
    batch_[place] = Wide(value);
    return;
  }
  const StoreLock lock;
  if (!lock.held()) FailToWrite(ERROR_BUSY);
  FinishNotes();
  Write(key_, {{place, Wide(value)}});
}

void RegistryProfile::CommitBatch() {
  const StoreLock lock;
  if (!lock.held()) FailToWrite(ERROR_BUSY);
  FinishNotes();
  Write(NotesKey() + kNotes, batch_);
  const Key notes = MakeKey(NotesKey());
  const LSTATUS marked = RegSetValueExW(notes.get(), kNotesComplete, 0, REG_SZ, nullptr, 0);
  if (marked != ERROR_SUCCESS) FailToWrite(static_cast<DWORD>(marked));
  RegFlushKey(notes.get());
  FinishNotes();
  AbandonBatch();
}

void RegistryProfile::AbandonBatch() noexcept {
  batch_.clear();
  in_batch_ = false;
}

void RegistryProfile::Write(const std::wstring& root, const Values& values) const {
  std::wstring open_path;
  Key key;
  for (const auto& [place, text] : values) {
    if (const std::wstring path = PathOf(root, place.first); !key || path != open_path) {
      key = MakeKey(path);
      open_path = path;
    }
    if (!key) FailToWrite(GetLastError());
    const auto* bytes = reinterpret_cast<const BYTE*>(text.c_str());
    const auto size = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    const LSTATUS error = RegSetValueExW(key.get(), place.second.c_str(), 0, REG_SZ, bytes, size);
    if (error != ERROR_SUCCESS) FailToWrite(static_cast<DWORD>(error));
  }
  if (key) RegFlushKey(key.get());
}

void RegistryProfile::FinishNotes() const {
  const Key mark = OpenKey(NotesKey(), KEY_READ);
  if (!mark) return;
  const bool complete =
      RegQueryValueExW(mark.get(), kNotesComplete, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
  const std::wstring root = NotesKey() + kNotes;
  if (const Key notes = OpenKey(root, KEY_READ); complete && notes) {
    Values values;
    std::vector<std::wstring> subkeys = NamesIn(notes.get(), true);
    subkeys.emplace_back();
    for (const std::wstring& subkey : subkeys) {
      const Key key = OpenKey(PathOf(root, subkey), KEY_READ);
      for (const std::wstring& name : NamesIn(key.get(), false)) {
        std::wstring text;
        if (const DWORD error = ReadText(PathOf(root, subkey), name, text); error != ERROR_SUCCESS) FailToWrite(error);
        values[{subkey, name}] = std::move(text);
      }
    }
    Write(key_, values);
  }
  RegDeleteTreeW(HKEY_CURRENT_USER, NotesKey().c_str());
}

void RegistryProfile::FailToWrite(DWORD error) const {
  throw RunTimeError(RunTimeError::kPathFileAccess,
                     "cannot write the settings to " + Location() + ": " + SystemText(error));
}

}  // namespace orvalis
