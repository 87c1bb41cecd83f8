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
/// file: it holds a password. A failed write changes nothing, neither in the file nor in memory, and no
/// operation waits longer than half a second for another program. Its copy is `Orvalis.Weather.good.ini`, and what was
/// destroyed is kept as `Orvalis.Weather.damaged-DATE.ini`. docs/profile.md describes the files.
class IniProfile : public Profile {
 public:
  /// `folder` is created when the first value is written.
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

  /// Updates `values_` from the file.
  void Reload();
  void Write(const Values& changes);
  void PrepareFolder() const;
  /// Locks out other programs while the result lives. Throws when another one holds the lock for too long.
  [[nodiscard]] std::unique_ptr<QLockFile> Lock() const;
  /// Writes a complete new file, in a folder that only the owner can enter, and replaces the old one with it; then the
  /// copy, if the values are worth one.
  void Replace(const Values& values);
  /// Replaces a destroyed file by the copy, at least in memory.
  void Restore();
  /// Renames a destroyed file, once; true when there is none left.
  [[nodiscard]] bool PutAside(const QString& file);
  /// An unused name for it.
  [[nodiscard]] QString NameAside() const;
  /// After a start that found everything well: a program without copies may have written last.
  void RenewCopy();
  /// Where the file really is.
  [[nodiscard]] QString Target() const;
  /// Removes the leftovers of a write, including one by a program that was killed. Requires the lock.
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
