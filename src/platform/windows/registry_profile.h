#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>

#include "config/profile.h"
#include "platform/windows/windows_error.h"

namespace orvalis {

/// The profile store in the user's part of the registry, for machines without the driver platform. Each write is on the
/// disk when it returns. A batch is noted beside the store first, so that after a crash either all of it or nothing is
/// stored. No operation waits longer than half a second for another program. The store's copy is the key with ".good"
/// appended, and a destroyed store is kept with ".damaged-DATE" appended.
class RegistryProfile : public Profile {
 public:
  static constexpr const wchar_t* kKey = L"Software\\Orvalis\\Orvalis.Weather";

  /// `key` is below HKEY_CURRENT_USER and is created when the first value is written.
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
  /// Every text below the key `root`, or nothing if there is no such key.
  [[nodiscard]] std::optional<Values> ReadAll(const std::wstring& root) const;
  /// Records `values` beside the store, for `FinishNotes`. Requires the lock.
  void Note(const Values& values) const;
  /// Replaces a destroyed store by the copy, at least in memory.
  void Restore();
  /// Also keeps a destroyed store under the name `aside`.
  void CopyAside(const std::wstring& aside) const;
  /// An unused name for it.
  [[nodiscard]] std::wstring NameAside() const;
  /// Updates the copy from the store, if its values are worth one.
  void RenewCopy() const;
  /// Before a write: tries again to restore what is restored only in memory.
  void RestoreBeforeWrite();

  /// Applies the notes of a program that ended in the middle of a batch, if they are complete; deletes them otherwise.
  void FinishNotes() const;
  [[noreturn]] void FailToWrite(DWORD error) const;

  std::wstring key_;
  bool in_batch_ = false;
  Values batch_;
  std::optional<StoreRules> rules_;  ///< once the store keeps itself safe
  std::optional<Values> in_memory_;  ///< replaces a destroyed store that could not be written
};

}  // namespace orvalis
