#include "platform/qt/ini_profile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSettings>
#include <QVariant>
#include <algorithm>
#include <chrono>
#include <map>
#include <optional>
#include <utility>

#include "base/run_time_error.h"

namespace orvalis {
namespace {

/// How long another program may hold the file. Everything waits meanwhile, so it is short.
constexpr std::chrono::milliseconds kPatience{500};

/// Ends the name of the folder that a write takes place in.
constexpr const char* kWorkshopEnd = ".new";

QString ToQString(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

/// "name" at the root, "Capabilities/name" below a subkey.
QString KeyPath(std::string_view name, std::string_view subkey) {
  return subkey.empty() ? ToQString(name) : ToQString(subkey) + "/" + ToQString(name);
}

/// A person who edits the file may leave a comma unquoted, which Qt reads as a list.
QString AsText(const QVariant& value) {
  return value.typeId() == QMetaType::QStringList ? value.toStringList().join(",") : value.toString();
}

/// Every value of the INI file at `path`, or nothing when it is not one.
std::optional<std::map<QString, QString>> ReadFile(const QString& path) {
  // Only read, never set: Qt keeps what it could not write and would write it later.
  QSettings store(path, QSettings::IniFormat);
  store.sync();
  if (store.status() != QSettings::NoError) return std::nullopt;
  std::map<QString, QString> values;
  for (const QString& key : store.allKeys()) values[key] = AsText(store.value(key));
  return values;
}

}  // namespace

IniProfile::IniProfile(const QString& folder) : folder_(folder), path_(folder + "/Orvalis.Weather.ini") {}

// The file is this one driver's and of this one type, so there is nothing to register it with.
void IniProfile::SetDeviceType(std::string_view /*type*/) {}
void IniProfile::Register(std::string_view /*driver_id*/, std::string_view /*description*/) {}

std::string IniProfile::GetValue(std::string_view /*driver_id*/, std::string_view name, std::string_view subkey) {
  const QString key = KeyPath(name, subkey);
  if (const auto pending = batch_.find(key); pending != batch_.end()) return pending->second.toStdString();
  Reload();
  const auto found = values_.find(key);
  return found == values_.end() ? "" : found->second.toStdString();
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

void IniProfile::CommitBatch() {
  Write(batch_);
  AbandonBatch();
}

void IniProfile::AbandonBatch() noexcept {
  batch_.clear();
  in_batch_ = false;
}

void IniProfile::Reload() {
  const safe_file::Stamp stamp = safe_file::StampOf(path_);
  if (loaded_ == stamp) return;
  if (stamp != safe_file::Stamp{} && !safe_file::MayRead(path_)) {
    throw RunTimeError(RunTimeError::kPathFileAccess, "cannot read the settings in " + Location() + ": " +
                                                          safe_file::ErrorText(safe_file::LastError()));
  }
  std::optional<Values> values = ReadFile(path_);
  if (!values) {
    throw RunTimeError(RunTimeError::kPathFileAccess,
                       Location() + " is damaged: it is not an INI file; repair or remove it");
  }
  values_ = std::move(*values);
  loaded_ = stamp;
}

void IniProfile::Write(const Values& changes) {
  Reload();
  const auto stored = [this](const Values::value_type& change) {
    const auto found = values_.find(change.first);
    return found != values_.end() && found->second == change.second;
  };
  // A full disk must not keep the program from saying again what stands there already, as it does at each start.
  if (std::all_of(changes.begin(), changes.end(), stored)) {
    static_cast<void>(safe_file::KeepForOwner(path_));  // that needs no room
    return;
  }
  PrepareFolder();
  QLockFile lock(path_ + ".lock");
  // Stale when its process is gone; and, when a power failure left it empty, by its age. It is never held for long.
  lock.setStaleLockTime(std::chrono::minutes(1));
  if (!lock.tryLock(kPatience)) {
    if (lock.error() != QLockFile::LockFailedError) FailToWrite(safe_file::LastError());
    throw RunTimeError(RunTimeError::kPathFileAccess, "cannot write the settings to " + Location() +
                                                          ": another program has held " +
                                                          lock.fileName().toStdString() + " for half a second");
  }
  RemoveLeftovers();
  Reload();
  Values values = values_;
  for (const auto& [key, value] : changes) values[key] = value;
  Replace(values);
  values_ = std::move(values);
  loaded_ = safe_file::StampOf(path_);
}

void IniProfile::PrepareFolder() const {
  safe_file::ForgetLastError();
  if (!QFileInfo::exists(folder_) && !QDir().mkpath(folder_)) {
    throw RunTimeError(RunTimeError::kPathFileAccess,
                       "cannot make the folder " + folder_.toStdString() +
                           " for the settings: " + safe_file::ErrorText(safe_file::LastError()));
  }
  if (!safe_file::MayWrite(folder_)) FailToWrite(safe_file::LastError());
}

void IniProfile::Replace(const Values& values) {
  // Names of their own for each write: whatever Qt remembers of a file is never met again. Qt gives a new file to all
  // readers, and its own temporary ones too, so they are written where nobody else gets in.
  const QString workshop = path_ + "." + QString::number(QCoreApplication::applicationPid()) + "-" +
                           QString::number(++writes_) + kWorkshopEnd;
  const QString written = workshop + "/written";
  const QString checked = workshop + "/checked";
  safe_file::ForgetLastError();
  bool good = QDir().mkdir(workshop, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  int error = safe_file::LastError();
  if (good) {
    QSettings store(written, QSettings::IniFormat);
    for (const auto& [key, value] : values) store.setValue(key, value);
    store.sync();
    error = safe_file::LastError();
  }
  // Qt does not notice every write that a full disk cut short, so what is on the disk is read back before it counts.
  good = good && safe_file::Replace(written, checked) && ReadFile(checked) == values;
  if (good) {
    const QFileInfo target(path_);
    const QString name = target.isSymLink() ? target.symLinkTarget() : path_;
    good = safe_file::Flush(checked) && safe_file::KeepForOwner(checked) && safe_file::Replace(checked, name);
    error = safe_file::LastError();
  }
  RemoveLeftovers();
  if (!good) FailToWrite(error);
  safe_file::FlushNames(folder_);  // the new name is part of the folder
}

void IniProfile::RemoveLeftovers() const {
  const QString pattern = QFileInfo(path_).fileName() + ".*" + kWorkshopEnd;
  for (const QString& name : QDir(folder_).entryList({pattern}, QDir::Dirs | QDir::NoSymLinks)) {
    QDir(folder_ + "/" + name).removeRecursively();
  }
}

void IniProfile::FailToWrite(int error) const {
  throw RunTimeError(RunTimeError::kPathFileAccess,
                     "cannot write the settings to " + Location() + ": " +
                         (error != 0 ? safe_file::ErrorText(error) : "the file or its folder cannot be written"));
}

}  // namespace orvalis
