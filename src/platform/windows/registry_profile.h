#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>

#include "config/profile.h"
#include "platform/windows/windows_error.h"

namespace orvalis {

/// The profile store in the user's part of the registry, for machines without the driver platform. Each write is on the
/// disk when it returns. Writes that belong together are noted beside the store first, so that after a crash all of
/// them are found there or none. No operation waits longer than half a second for another program. The store's copy is
/// the key with ".good" at its end, and what was destroyed is kept under one with ".damaged-DATE".
class RegistryProfile : public Profile {
 public:
  static constexpr const wchar_t* kKey = L"Software\\Orvalis\\Orvalis.Weather";

  /// `key` stands below HKEY_CURRENT_USER and is made when the first value is written.
  explicit RegistryProfile(std::wstring key = kKey) : key_(std::move(key)) {}

  // The key is this one driver's and of this one type, so there is nothing to register it with.
  void SetDeviceType(std::string_view /*type*/) override {}
  void Register(std::string_view /*driver_id*/, std::string_view /*description*/) override {}
  [[nodiscard]] std::string GetValue(std::string_view driver_id, std::string_view name,
                                     std::string_view subkey) override;
  void WriteValue(std::string_view driver_id, std::string_view name, std::string_view value,
                  std::string_view subkey) override;
  [[nodiscard]] std::string Location() const override { return Shown(key_); }
  [[nodiscard]] std::string Fault(const StoreRules& rules) override;
  bool KeepSafe(const StoreRules& rules) override;

 protected:
  void BeginBatch() override { in_batch_ = true; }
  void CommitBatch() override;
  void AbandonBatch() noexcept override;

 private:
  /// Subkey and name; subkey "" is the key itself.
  using Place = std::pair<std::wstring, std::wstring>;
  using Values = std::map<Place, std::wstring>;

  [[nodiscard]] static std::string Shown(const std::wstring& key) { return "HKEY_CURRENT_USER\\" + Narrow(key); }
  [[nodiscard]] static ProfileValues AsTexts(const Values& values);
  [[nodiscard]] std::wstring NotesKey() const { return key_ + L".pending"; }
  [[nodiscard]] std::wstring CopyKey() const { return key_ + L".good"; }
  [[nodiscard]] std::wstring PathOf(const std::wstring& root, const std::wstring& subkey) const {
    return subkey.empty() ? root : root + L"\\" + subkey;
  }
  void Write(const std::wstring& root, const Values& values) const;
  /// Every text below the key `root`; none where that is not there.
  [[nodiscard]] std::optional<Values> ReadAll(const std::wstring& root) const;
  /// Records `values` beside the store, for `FinishNotes`. Requires the lock.
  void Note(const Values& values) const;
  /// Puts the copy in the place of a store that was destroyed, in memory at least.
  void Restore();
  /// Keeps what was destroyed under the name `aside` too.
  void CopyAside(const std::wstring& aside) const;
  /// A name for it that is free.
  [[nodiscard]] std::wstring NameAside() const;
  /// Brings the copy up to the store, if that is worth one.
  void RenewCopy() const;
  /// Before a write: what could be restored in memory alone is tried again.
  void RestoreBeforeWrite();

  /// Carries out what a program that was ended in the middle of a batch had noted, if it had noted all of it.
  void FinishNotes() const;
  [[noreturn]] void FailToWrite(DWORD error) const;

  std::wstring key_;
  bool in_batch_ = false;
  Values batch_;
  std::optional<StoreRules> rules_;  ///< once the store keeps itself safe
  std::optional<Values> in_memory_;  ///< what stands in for a destroyed store that could not be written
};

}  // namespace orvalis
