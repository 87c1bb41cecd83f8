#pragma once

#include <map>
#include <string>
#include <utility>

#include "config/profile.h"
#include "platform/windows/windows_error.h"

namespace orvalis {

/// The profile store in the user's part of the registry, for machines without the driver platform. Each write is on the
/// disk when it returns. Writes that belong together are noted beside the store first, so that after a crash all of
/// them are found there or none. No operation waits longer than half a second for another program.
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
  [[nodiscard]] std::string Location() const override { return "HKEY_CURRENT_USER\\" + Narrow(key_); }

 protected:
  void BeginBatch() override { in_batch_ = true; }
  void CommitBatch() override;
  void AbandonBatch() noexcept override;

 private:
  /// Subkey and name; subkey "" is the key itself.
  using Place = std::pair<std::wstring, std::wstring>;
  using Values = std::map<Place, std::wstring>;

  [[nodiscard]] std::wstring NotesKey() const { return key_ + L".pending"; }
  [[nodiscard]] std::wstring PathOf(const std::wstring& root, const std::wstring& subkey) const {
    return subkey.empty() ? root : root + L"\\" + subkey;
  }
  void Write(const std::wstring& root, const Values& values) const;
  /// Carries out what a program that was ended in the middle of a batch had noted, if it had noted all of it.
  void FinishNotes() const;
  [[noreturn]] void FailToWrite(DWORD error) const;

  std::wstring key_;
  bool in_batch_ = false;
  Values batch_;
};

}  // namespace orvalis
