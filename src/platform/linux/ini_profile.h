#pragma once

#include <QString>
#include <map>
#include <memory>
#include <utility>

#include "config/profile.h"

class QSettings;

namespace orvalis {

/// The profile store of a Linux user: one INI file, `Orvalis.Weather.ini`. Every write is on the disk when it returns,
/// replaces the file in one step, and keeps what other programs wrote in the meantime. Only the owner may read the
/// file: it holds a password. docs/profile.md describes the file.
class IniProfile : public Profile {
 public:
  /// `folder` is made when the first value is written.
  explicit IniProfile(const QString& folder);
  ~IniProfile() override;

  void SetDeviceType(std::string_view type) override;
  void Register(std::string_view driver_id, std::string_view description) override;
  [[nodiscard]] std::string GetValue(std::string_view driver_id, std::string_view name,
                                     std::string_view subkey) override;
  void WriteValue(std::string_view driver_id, std::string_view name, std::string_view value,
                  std::string_view subkey) override;
  [[nodiscard]] std::string Location() const override { return path_.toStdString(); }

 protected:
  void BeginBatch() override;
  void CommitBatch() override;
  void AbandonBatch() noexcept override;

 private:
  void Write(const std::map<QString, QString>& values);
  void PrepareFolder() const;
  void TightenPermissions() const;
  void CheckRead(const QSettings& store) const;

  QString folder_;
  QString path_;
  bool in_batch_ = false;
  std::map<QString, QString> batch_;
};

}  // namespace orvalis
