#pragma once

#include <QString>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "config/profile.h"
#include "platform/system/safe_file.h"

class QLockFile;

namespace orvalis {

/// A profile store in one INI file, `Orvalis.Weather.ini`. Every write is on the disk when it returns,
/// replaces the file in one step, and keeps what other programs wrote in the meantime. Only the owner may read the
/// file: it holds a password. A write that fails leaves nothing behind, neither in the file nor in memory, and no
/// operation waits longer than half a second for another program. Its copy is `Orvalis.Weather.good.ini`, and what was
/// destroyed is kept as `Orvalis.Weather.damaged-DATE.ini`. docs/profile.md describes the files.
class IniProfile : public Profile {
 public:
  /// `folder` is made when the first value is written.
  explicit IniProfile(const QString& folder);

  void SetDeviceType(std::string_view type) override;
  void Register(std::string_view driver_id, std::string_view description) override;
  [[nodiscard]] std::string GetValue(std::string_view driver_id, std::string_view name,
                                     std::string_view subkey) override;
  void WriteValue(std::string_view driver_id, std::string_view name, std::string_view value,
                  std::string_view subkey) override;
  [[nodiscard]] std::string Location() const override { return path_.toStdString(); }
  [[nodiscard]] std::string Fault(const StoreRules& rules) override;
  bool KeepSafe(const StoreRules& rules) override;

 protected:
  void BeginBatch() override { in_batch_ = true; }
  void CommitBatch() override;
  void AbandonBatch() noexcept override;

 private:
  using Values = std::map<QString, QString>;

  /// Brings `values_` up to the file.
  void Reload();
  void Write(const Values& changes);
  void PrepareFolder() const;
  /// Keeps other programs from writing while the result lives. Throws when another one does so for too long.
  [[nodiscard]] std::unique_ptr<QLockFile> Lock() const;
  /// Writes a whole new file, in a folder that is the owner's alone, and puts it in the place of the old one; then the
  /// copy, if the values are worth one.
  void Replace(const Values& values);
  /// Puts the copy in the place of a file that was destroyed, in memory at least.
  void Restore();
  /// Gives what was destroyed another name, once; true when there is nothing of the kind.
  [[nodiscard]] bool PutAside(const QString& file);
  /// A name for it that is free.
  [[nodiscard]] QString NameAside() const;
  /// After a start that found everything well: a program without copies may have written last.
  void RenewCopy();
  /// Where the file really is.
  [[nodiscard]] QString Target() const;
  /// What a write leaves behind, also one of a program that was killed. Only who holds the lock may.
  void RemoveLeftovers() const;
  [[noreturn]] void FailToWrite(int error) const;

  QString folder_;
  QString path_;
  QString copy_path_;
  Values values_;
  std::optional<safe_file::Stamp> loaded_;  ///< the state of the file that `values_` holds
  int writes_ = 0;
  bool in_batch_ = false;
  Values batch_;
  std::optional<StoreRules> rules_;  ///< once the store keeps itself safe
  QString aside_;                    ///< the name for a destroyed file that is still in its place
};

}  // namespace orvalis
