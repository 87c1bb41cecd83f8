#include "platform/windows/registry_profile.h"

#include <array>
#include <memory>
#include <vector>

#include "base/clock.h"
#include "platform/windows/handle.h"

namespace orvalis {
namespace {

constexpr DWORD kPatienceMs = 500;
/// The value of the notes' key that says that they are complete.
constexpr const wchar_t* kNotesComplete = L"Complete";
/// The notes themselves, in a subkey, so that no setting's name can clash with the mark.
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

/// ERROR_SUCCESS, or why there is no text: ERROR_FILE_NOT_FOUND if there is no value.
DWORD ReadText(const std::wstring& path, const std::wstring& name, std::wstring& text) {
  constexpr DWORD kTextOnly = RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ | RRF_NOEXPAND;
  DWORD bytes = 0;
  const auto read = [&](void* into) {
    return static_cast<DWORD>(
        RegGetValueW(HKEY_CURRENT_USER, path.c_str(), name.c_str(), kTextOnly, nullptr, into, &bytes));
  };
  if (const DWORD error = read(nullptr); error != ERROR_SUCCESS) return error;
  // Another program may write a longer text meanwhile.
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

/// When `path` was last written, for a person.
std::string TimeOf(const std::wstring& path) {
  const Key key = OpenKey(path, KEY_READ);
  FILETIME written{};
  if (!key || RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                               nullptr, nullptr, &written) != ERROR_SUCCESS) {
    return "an unknown time";
  }
  SYSTEMTIME universal{};
  SYSTEMTIME local{};
  FileTimeToSystemTime(&written, &universal);
  SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local);
  return FormatTime(
      {.year = local.wYear, .month = local.wMonth, .day = local.wDay, .hour = local.wHour, .minute = local.wMinute},
      "YYYY-MM-DD hh:nn");
}

/// Locks other programs out of the store during its lifetime.
class StoreLock {
 public:
  StoreLock() : mutex_(CreateMutexW(nullptr, FALSE, L"Local\\Orvalis.Weather.profile")) {
    const DWORD outcome = WaitForSingleObject(mutex_.get(), kPatienceMs);
    // Abandoned: its holder was killed, and its notes say what is left to do.
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
  if (in_memory_) {
    const auto found = in_memory_->find(place);
    return found == in_memory_->end() ? std::string() : Narrow(found->second);
  }
  std::wstring text;
  const DWORD error = ReadText(PathOf(key_, place.first), place.second, text);
  if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND) return {};
  if (error != ERROR_SUCCESS) {
    throw RunTimeError(
        RunTimeError::kPathFileAccess,
        Message::Of("cannot read the setting \"%1\" in %2: %3").With(name, Location(), SystemText(error)));
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
  RestoreBeforeWrite();
  const StoreLock lock;
  if (!lock.held()) FailToWrite(ERROR_BUSY);
  FinishNotes();
  Write(key_, {{place, Wide(value)}});
  RenewCopy();
}

void RegistryProfile::CommitBatch() {
  RestoreBeforeWrite();
  const StoreLock lock;
  if (!lock.held()) FailToWrite(ERROR_BUSY);
  FinishNotes();
  Note(batch_);
  FinishNotes();
  RenewCopy();
  AbandonBatch();
}

void RegistryProfile::Note(const Values& values) const {
  Write(NotesKey() + kNotes, values);
  const Key notes = MakeKey(NotesKey());
  const LSTATUS marked = RegSetValueExW(notes.get(), kNotesComplete, 0, REG_SZ, nullptr, 0);
  if (marked != ERROR_SUCCESS) FailToWrite(static_cast<DWORD>(marked));
  RegFlushKey(notes.get());
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
  if (complete) {
    if (const std::optional<Values> values = ReadAll(NotesKey() + kNotes)) Write(key_, *values);
  }
  RegDeleteTreeW(HKEY_CURRENT_USER, NotesKey().c_str());
}

std::optional<RegistryProfile::Values> RegistryProfile::ReadAll(const std::wstring& root) const {
  const Key store = OpenKey(root, KEY_READ);
  if (!store) return std::nullopt;
  Values values;
  std::vector<std::wstring> subkeys = NamesIn(store.get(), true);
  subkeys.emplace_back();
  for (const std::wstring& subkey : subkeys) {
    const Key key = OpenKey(PathOf(root, subkey), KEY_READ);
    if (!key) continue;
    for (const std::wstring& name : NamesIn(key.get(), false)) {
      std::wstring text;
      // A value that is not text counts as missing.
      if (ReadText(PathOf(root, subkey), name, text) == ERROR_SUCCESS) values[{subkey, name}] = std::move(text);
    }
  }
  return values;
}

ProfileValues RegistryProfile::AsTexts(const Values& values) {
  ProfileValues texts;
  for (const auto& [place, text] : values) {
    const std::string subkey = Narrow(place.first);
    texts[subkey.empty() ? Narrow(place.second) : subkey + "/" + Narrow(place.second)] = Narrow(text);
  }
  return texts;
}

std::string RegistryProfile::Fault(const StoreRules& rules) {
  if (OpenKey(NotesKey(), KEY_READ)) return {};  // the next read applies them
  if (const std::optional<Values> values = ReadAll(key_)) return rules.fault(AsTexts(*values));
  if (const DWORD error = GetLastError(); error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND) {
    return "cannot be read: " + SystemText(error);
  }
  return OpenKey(CopyKey(), KEY_READ) ? "is gone" : "";
}

bool RegistryProfile::KeepSafe(const StoreRules& rules) {
  rules_ = rules;
  if (OpenKey(NotesKey(), KEY_READ)) {
    const StoreLock lock;
    if (lock.held()) FinishNotes();
  }
  if (!Fault(rules).empty()) {
    Restore();
  } else if (const StoreLock lock; lock.held()) {
    RenewCopy();
  }
  return true;
}

void RegistryProfile::Restore() {
  const StoreLock lock;
  const std::string fault = Fault(*rules_);
  if (fault.empty()) {  // another program was faster
    in_memory_.reset();
    return;
  }
  const bool exists = static_cast<bool>(OpenKey(key_, KEY_READ)) || GetLastError() == ERROR_ACCESS_DENIED;
  const std::wstring aside = exists ? NameAside() : std::wstring();
  std::optional<Values> copy = ReadAll(CopyKey());
  if (copy && !rules_->good(AsTexts(*copy))) copy.reset();
  const StoreLoss loss{.location = Location(),
                       .fault = fault,
                       .kept_as = Narrow(aside.substr(aside.rfind(L'\\') + 1)),
                       .copy_of = copy ? TimeOf(CopyKey()) : std::string()};
  Values restored = copy.value_or(Values{});
  std::wstring& notice = restored[{L"", Wide(rules_->notice_key)}];
  notice = Wide(LossNotice(loss));
  try {
    if (!lock.held()) FailToWrite(ERROR_BUSY);
    if (exists) CopyAside(aside);
    // Once noted, it is completed even after a crash.
    Note(restored);
    RegDeleteTreeW(HKEY_CURRENT_USER, key_.c_str());
    FinishNotes();
    in_memory_.reset();
  } catch (const RunTimeError& error) {
    notice = Wide(LossNotice(loss) + " This has not been saved to disk yet: " + error.what());
    in_memory_ = std::move(restored);
  }
}

void RegistryProfile::CopyAside(const std::wstring& aside) const {
  const Key kept = MakeKey(aside);
  if (!kept) FailToWrite(GetLastError());
  const LSTATUS copied = RegCopyTreeW(HKEY_CURRENT_USER, key_.c_str(), kept.get());
  if (copied != ERROR_SUCCESS) FailToWrite(static_cast<DWORD>(copied));
  RegFlushKey(kept.get());
}

std::wstring RegistryProfile::NameAside() const {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  const CivilTime date{.year = now.wYear, .month = now.wMonth, .day = now.wDay};
  const std::wstring begin = key_ + L".damaged-" + Wide(FormatIsoDate(date));
  std::wstring name = begin;
  for (int i = 2; OpenKey(name, KEY_READ); ++i) name = begin + L"-" + std::to_wstring(i);
  return name;
}

void RegistryProfile::RenewCopy() const {
  if (!rules_) return;
  const std::optional<Values> values = ReadAll(key_);
  if (!values || !rules_->good(AsTexts(*values)) || ReadAll(CopyKey()) == values) return;
  try {
    Write(CopyKey(), *values);
  } catch (const RunTimeError&) {
    // The settings are intact; the next write tries again.
  }
}

void RegistryProfile::RestoreBeforeWrite() {
  if (rules_ && !Fault(*rules_).empty()) Restore();
  if (in_memory_) FailToWrite(ERROR_WRITE_FAULT);
}

void RegistryProfile::FailToWrite(DWORD error) const {
  throw RunTimeError(RunTimeError::kPathFileAccess,
                     "cannot write the settings to " + Location() + ": " + SystemText(error));
}

}  // namespace orvalis
