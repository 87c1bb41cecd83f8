#include "platform/qt/ini_profile.h"

#include <QCoreApplication>
#include <QDate>
#include <QDateTime>
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

/// How long another program may hold the lock. Everything waits meanwhile, so it is short.
constexpr std::chrono::milliseconds kPatience{500};

/// Ends the name of the folder that a write takes place in.
constexpr const char* kWorkshopEnd = ".new";

constexpr const char* kAsideNames = "Orvalis.Weather.damaged-*.ini";

QString ToQString(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

/// "name" at the root, "Capabilities/name" below a subkey.
QString KeyPath(std::string_view name, std::string_view subkey) {
  return subkey.empty() ? ToQString(name) : ToQString(subkey) + "/" + ToQString(name);
}

/// A user who edits the file may leave a comma unquoted, which Qt reads as a list.
QString AsText(const QVariant& value) {
  return value.typeId() == QMetaType::QStringList ? value.toStringList().join(",") : value.toString();
}

/// Every value of the INI file at `path`, or nothing when it is not one.
std::optional<std::map<QString, QString>> ReadFile(const QString& path) {
  if (QFileInfo::exists(path) && !QFileInfo(path).isFile()) return std::nullopt;  // reading a pipe would never end
  // Only for reading: Qt keeps what it could not write and would write it later.
  QSettings store(path, QSettings::IniFormat);
  store.sync();
  if (store.status() != QSettings::NoError) return std::nullopt;
  std::map<QString, QString> values;
  for (const QString& key : store.allKeys()) values[key] = AsText(store.value(key));
  return values;
}

ProfileValues AsTexts(const std::map<QString, QString>& values) {
  ProfileValues texts;
  for (const auto& [key, value] : values) texts[key.toStdString()] = value.toStdString();
  return texts;
}

/// Whether the file ends in the middle of a line of the copy: that may leave every key, or "2.1" of the stamp "2.18".
bool IsCutShort(const QString& path, const QString& copy_path) {
  if (!QFileInfo(copy_path).isFile()) return false;  // as above
  QFile file(path);
  QFile copy(copy_path);
  if (!file.open(QFile::ReadOnly) || !copy.open(QFile::ReadOnly)) return false;
  const QByteArray text = file.readAll();
  const QByteArray last = text.mid(text.lastIndexOf('\n'));
  const QByteArray whole = copy.readAll();
  // An editor may leave the last line without its end.
  return last.size() > 1 && whole.contains(last) && !whole.contains(last + '\n');
}

}  // namespace

IniProfile::IniProfile(const QString& folder)
    : folder_(folder), path_(folder + "/Orvalis.Weather.ini"), copy_path_(folder + "/Orvalis.Weather.good.ini") {}

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
  // Destroyed while the program runs: the values read last are used until the next write restores the file.
  if (rules_ && loaded_ && !Fault(*rules_).empty()) return;
  if (stamp != safe_file::Stamp{} && !safe_file::CanRead(path_)) {
    throw RunTimeError(RunTimeError::kPathFileAccess,
                       Message::Of("cannot read the settings in %1: %2")
                           .With(Location(), safe_file::ErrorText(safe_file::LastError())));
  }
  std::optional<Values> values = ReadFile(path_);
  if (!values) {
    throw RunTimeError(RunTimeError::kPathFileAccess,
                       Message::Of("%1 is damaged: it is not an INI file").With(Location()));
  }
  values_ = std::move(*values);
  loaded_ = stamp;
  aside_.clear();  // it is another file now
}

std::string IniProfile::Fault(const StoreRules& rules) {
  const safe_file::Stamp stamp = safe_file::StampOf(path_);
  if (stamp == safe_file::Stamp{}) {
    const bool first_start =
        !QFileInfo::exists(copy_path_) && QDir(folder_).entryList({kAsideNames}, QDir::AllEntries).isEmpty();
    return first_start ? "" : "is gone";
  }
  if (!safe_file::CanRead(path_)) return "cannot be read: " + safe_file::ErrorText(safe_file::LastError());
  if (!QFileInfo(path_).isFile()) return "is not a file";  // reading a pipe would never end
  const std::optional<Values> values = ReadFile(path_);
  if (!values) return "is not an INI file";
  std::string fault = rules.fault(AsTexts(*values));
  return fault.empty() && IsCutShort(path_, copy_path_) ? "is cut short" : fault;
}

bool IniProfile::KeepSafe(const StoreRules& rules) {
  rules_ = rules;
  // A file that merely lost its permissions gets them back; nothing is lost.
  if (QFileInfo(path_).isFile() && !safe_file::CanRead(path_)) static_cast<void>(safe_file::RestrictToOwner(path_));
  if (Fault(rules).empty()) {
    RenewCopy();
  } else {
    Restore();
  }
  return true;
}

void IniProfile::Restore() {
  std::unique_ptr<QLockFile> lock;
  std::string failure;
  try {
    PrepareFolder();
    lock = Lock();
  } catch (const RunTimeError& error) {
    failure = error.what();
  }
  const std::string fault = Fault(*rules_);
  if (fault.empty()) return;  // another program was faster
  const bool exists = safe_file::StampOf(path_) != safe_file::Stamp{};
  aside_ = exists ? NameAside() : QString();
  if (QFileInfo(copy_path_).isFile()) static_cast<void>(safe_file::RestrictToOwner(copy_path_));
  std::optional<Values> copy = ReadFile(copy_path_);
  if (copy && !rules_->good(AsTexts(*copy))) copy.reset();
  StoreLoss loss{
      .location = Location(), .fault = fault, .kept_as = QFileInfo(aside_).fileName().toStdString(), .copy_of = {}};
  if (copy) loss.copy_of = QFileInfo(copy_path_).lastModified().toString("yyyy-MM-dd hh:mm").toStdString();
  Values restored = copy.value_or(Values{});
  QString& notice = restored[ToQString(rules_->notice_key)];
  notice = QString::fromStdString(LossNotice(loss));
  if (failure.empty()) {
    try {
      Replace(restored);
    } catch (const RunTimeError& error) {
      failure = error.what();
    }
  }
  // The next write that succeeds puts all of this into the file.
  if (!failure.empty())
    notice = QString::fromStdString(LossNotice(loss) + " This has not been saved to disk yet: " + failure);
  values_ = std::move(restored);
  loaded_ = safe_file::StampOf(path_);
}

bool IniProfile::PutAside(const QString& file) {
  if (aside_.isEmpty()) return true;
  if (!safe_file::Replace(file, aside_)) return false;
  if (QFileInfo(aside_).isFile()) static_cast<void>(safe_file::RestrictToOwner(aside_));  // it may hold the password
  aside_.clear();
  return true;
}

QString IniProfile::NameAside() const {
  const QString begin =
      QFileInfo(Target()).path() + "/Orvalis.Weather.damaged-" + QDate::currentDate().toString(Qt::ISODate);
  QString name = begin + ".ini";
  for (int i = 2; QFileInfo::exists(name); ++i) name = begin + "-" + QString::number(i) + ".ini";
  return name;
}

void IniProfile::RenewCopy() {
  if (safe_file::StampOf(path_) == safe_file::Stamp{}) return;
  Reload();
  if (!rules_->good(AsTexts(values_)) || ReadFile(copy_path_) == values_) return;
  try {
    PrepareFolder();
    const std::unique_ptr<QLockFile> lock = Lock();
    Reload();
    Replace(values_);
    loaded_ = safe_file::StampOf(path_);
  } catch (const RunTimeError&) {
    // The settings are intact; the next write tries again.
  }
}

QString IniProfile::Target() const {
  const QFileInfo file(path_);
  return file.isSymLink() ? file.symLinkTarget() : path_;
}

void IniProfile::Write(const Values& changes) {
  if (rules_ && !Fault(*rules_).empty()) Restore();
  Reload();
  const auto stored = [this](const Values::value_type& change) {
    const auto found = values_.find(change.first);
    return found != values_.end() && found->second == change.second;
  };
  // A full disk must not make a write fail that changes nothing, as those at each start do.
  if (std::all_of(changes.begin(), changes.end(), stored)) {
    static_cast<void>(safe_file::RestrictToOwner(path_));  // that needs no room
    return;
  }
  PrepareFolder();
  const std::unique_ptr<QLockFile> lock = Lock();
  RemoveLeftovers();
  Reload();
  Values values = values_;
  for (const auto& [key, value] : changes) values[key] = value;
  Replace(values);
  values_ = std::move(values);
  loaded_ = safe_file::StampOf(path_);
}

void IniProfile::PrepareFolder() const {
  safe_file::ClearLastError();
  if (!QFileInfo::exists(folder_) && !QDir().mkpath(folder_)) {
    throw RunTimeError(RunTimeError::kPathFileAccess,
                       Message::Of("cannot create the folder %1 for the settings: %2")
                           .With(folder_.toStdString(), safe_file::ErrorText(safe_file::LastError())));
  }
  if (!safe_file::CanWrite(folder_)) FailToWrite(safe_file::LastError());
}

std::unique_ptr<QLockFile> IniProfile::Lock() const {
  safe_file::RemovePipe(path_ + ".lock");
  auto lock = std::make_unique<QLockFile>(path_ + ".lock");
  // Stale when its process is gone; and, when a power failure left it empty, by its age. It is never held for long.
  lock->setStaleLockTime(std::chrono::minutes(1));
  if (lock->tryLock(kPatience)) return lock;
  if (lock->error() != QLockFile::LockFailedError) FailToWrite(safe_file::LastError());
  throw RunTimeError(RunTimeError::kPathFileAccess,
                     Message::Of("cannot write the settings to %1: another program has locked %2 for half a second")
                         .With(Location(), lock->fileName().toStdString()));
}

void IniProfile::Replace(const Values& values) {
  // Names of their own for each write: whatever Qt remembers of a file is never met again. Qt gives a new file to all
  // readers, and its own temporary ones too, so they are written in a folder that only the owner can enter.
  const QString workshop = path_ + "." + QString::number(QCoreApplication::applicationPid()) + "-" +
                           QString::number(++writes_) + kWorkshopEnd;
  const QString written = workshop + "/written";
  const QString checked = workshop + "/checked";
  const QString copied = workshop + "/copied";
  safe_file::ClearLastError();
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
  // A copy that there is no room for leaves the one before, which is worth more than no setting stored.
  const bool copy = good && rules_ && rules_->good(AsTexts(values)) && QFile::copy(checked, copied) &&
                    ReadFile(copied) == values && safe_file::Flush(copied) && safe_file::RestrictToOwner(copied);
  if (good) {
    const QString target = Target();
    good = safe_file::Flush(checked) && safe_file::RestrictToOwner(checked) && PutAside(target) &&
           safe_file::Replace(checked, target);
    error = safe_file::LastError();
  }
  if (good && copy) static_cast<void>(safe_file::Replace(copied, copy_path_));
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
  const Message reason =
      error != 0 ? Message(safe_file::ErrorText(error)) : Message::Of("the file or its folder cannot be written");
  throw RunTimeError(RunTimeError::kPathFileAccess,
                     Message::Of("cannot write the settings to %1: %2").With(Location(), reason));
}

}  // namespace orvalis
