#include "platform/linux/ini_profile.h"

#include <fcntl.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QVariant>
#include <cerrno>
#include <cstring>

#include "base/run_time_error.h"

namespace orvalis {
namespace {

QString ToQString(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

/// "name" at the root, "Capabilities/name" below a subkey.
QString KeyPath(std::string_view name, std::string_view subkey) {
  return subkey.empty() ? ToQString(name) : ToQString(subkey) + "/" + ToQString(name);
}

/// A person who edits the file may leave a comma unquoted, which Qt reads as a list.
QString AsText(const QVariant& value) {
  return value.typeId() == QMetaType::QStringList ? value.toStringList().join(", ") : value.toString();
}

constexpr QFileDevice::Permissions kOwnerOnly = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

}  // namespace

IniProfile::IniProfile(const QString& folder) : folder_(folder), path_(folder + "/Orvalis.Weather.ini") {}

IniProfile::~IniProfile() = default;

// The file is this one driver's and of this one type, so there is nothing to register it with.
void IniProfile::SetDeviceType(std::string_view /*type*/) {}
void IniProfile::Register(std::string_view /*driver_id*/, std::string_view /*description*/) {}

std::string IniProfile::GetValue(std::string_view /*driver_id*/, std::string_view name, std::string_view subkey) {
  const QString key = KeyPath(name, subkey);
  if (const auto pending = batch_.find(key); pending != batch_.end()) return pending->second.toStdString();
  QSettings store(path_, QSettings::IniFormat);
  store.sync();  // another program may have written since
  CheckRead(store);
  return AsText(store.value(key)).toStdString();
}

void IniProfile::WriteValue(std::string_view /*driver_id*/, std::string_view name, std::string_view value,
                            std::string_view subkey) {
  const QString key = KeyPath(name, subkey);
  if (in_batch_) {
    batch_[key] = ToQString(value);
  } else {
    Write({{key, ToQString(value)}});
  }
}

void IniProfile::BeginBatch() { in_batch_ = true; }

void IniProfile::CommitBatch() {
  Write(batch_);
  AbandonBatch();
}

void IniProfile::AbandonBatch() noexcept {
  batch_.clear();
  in_batch_ = false;
}

void IniProfile::Write(const std::map<QString, QString>& values) {
  PrepareFolder();
  TightenPermissions();
  QSettings store(path_, QSettings::IniFormat);
  store.sync();
  CheckRead(store);
  std::map<QString, QVariant> former;
  for (const auto& [key, value] : values) {
    former.emplace(key, store.value(key));
    store.setValue(key, value);
  }
  store.sync();
  if (store.status() != QSettings::NoError) {
    const int error = errno;
    // Qt keeps what it could not write and would write it later; a failed write must leave nothing behind.
    for (const auto& [key, value] : former) {
      if (value.isValid()) {
        store.setValue(key, value);
      } else {
        store.remove(key);
      }
    }
    throw RunTimeError(RunTimeError::kPathFileAccess,
                       "cannot write the settings to " + Location() + ": " +
                           (error != 0 ? std::strerror(error) : "the file or its folder cannot be written"));
  }
  TightenPermissions();
  // The file's own data were synchronised by Qt; its new name is part of the folder.
  const int directory = open(QFile::encodeName(folder_).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (directory >= 0) {
    fsync(directory);
    close(directory);
  }
}

void IniProfile::PrepareFolder() const {
  errno = 0;
  if (!QFileInfo::exists(folder_) && !QDir().mkpath(folder_)) {
    throw RunTimeError(RunTimeError::kPathFileAccess, "cannot make the folder " + folder_.toStdString() +
                                                          " for the settings: " + std::strerror(errno));
  }
  if (access(QFile::encodeName(folder_).constData(), W_OK) != 0) {
    throw RunTimeError(RunTimeError::kPathFileAccess,
                       "cannot write the settings to " + Location() + ": the folder: " + std::strerror(errno));
  }
}

void IniProfile::TightenPermissions() const {
  const QFile file(path_);
  const auto others =
      QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ReadOther | QFileDevice::WriteOther;
  if (file.exists() && (file.permissions() & others) != 0) QFile::setPermissions(path_, kOwnerOnly);
}

void IniProfile::CheckRead(const QSettings& store) const {
  if (store.status() == QSettings::FormatError) {
    throw RunTimeError(RunTimeError::kPathFileAccess,
                       Location() + " is damaged: it is not an INI file; repair or remove it");
  }
  if (QFileInfo::exists(path_) && access(QFile::encodeName(path_).constData(), R_OK) != 0) {
    throw RunTimeError(RunTimeError::kPathFileAccess,
                       "cannot read the settings in " + Location() + ": " + std::strerror(errno));
  }
}

}  // namespace orvalis
