#include "platform/qt/single_instance.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocalSocket>
#include <QSysInfo>
#include <chrono>
#include <cstdlib>

#include "platform/system/safe_file.h"

namespace orvalis {
namespace {

constexpr int kPatienceMs = 3000;
constexpr char kHasPanel = 'p';
constexpr char kHeadless = 'h';

/// The same for every spelling of the same folder.
QString SocketName(const QString& folder) {
  const QString canonical = QFileInfo(folder).canonicalFilePath();
  const QByteArray key = (canonical.isEmpty() ? QDir(folder).absolutePath() : canonical).toUtf8();
  return "orvalis-" + QCryptographicHash::hash(key, QCryptographicHash::Sha256).toHex().left(24);
}

/// Where the system keeps a name that programs listen at, if it is a file there. The folder is one for all users.
QString FileOf(const QString& socket_name) { return QDir::cleanPath(QDir::tempPath()) + "/" + socket_name; }

/// Whether `name` belongs to a user other than the owner of `ours`, a file that this user created.
bool BelongsToAnother(const QString& name, const QString& ours) {
  const QFileInfo file(name);
  return file.exists() && file.ownerId() != QFileInfo(ours).ownerId();
}

/// The folder must be there for the lock in it; a folder that cannot be made is reported when settings are written.
QString Prepared(const QString& folder) {
  QDir().mkpath(folder);
  return folder;
}

/// Whether a lock's file has been there for longer than any program takes to write it.
bool IsOld(const QLockFile& lock) {
  constexpr qint64 kMomentMs = 10'000;
  const QDateTime made = QFileInfo(lock.fileName()).lastModified();
  return made.isValid() && std::abs(made.msecsTo(QDateTime::currentDateTime())) > kMomentMs;
}

}  // namespace

SingleInstance::SingleInstance(const QString& profile_folder)
    : socket_name_(SocketName(Prepared(profile_folder))), lock_(profile_folder + "/Orvalis.Weather.running") {
  // A lock is stale when its process is gone, however old it is.
  lock_.setStaleLockTime(std::chrono::milliseconds(0));
  server_.setSocketOptions(QLocalServer::UserAccessOption);
  QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this] { Answer(); });
}

SingleInstance::Start SingleInstance::Claim() { return ClaimWithin({}) ? Start::kFirst : ContactRunning(); }

bool SingleInstance::Lock(std::chrono::milliseconds patience) {
  safe_file::RemovePipe(lock_.fileName());
  if (lock_.tryLock(static_cast<int>(patience.count()))) return true;
  qint64 holder = 0;
  QString machine;
  QString program;
  const bool readable = lock_.getLockInfo(&holder, &machine, &program);
  // Process numbers start over when the system starts, so a killed program may have had this one's number; and
  // one that was killed at the wrong moment, or a power failure, leaves a file without any number.
  const bool left_over =
      readable ? holder == QCoreApplication::applicationPid() && machine == QSysInfo::machineHostName() : IsOld(lock_);
  return left_over && QFile::remove(lock_.fileName()) && lock_.tryLock();
}

bool SingleInstance::ClaimWithin(std::chrono::milliseconds patience) {
  // Where no lock can be created the profile is not writable either, so a second program does no harm.
  if (!Lock(patience) && lock_.error() == QLockFile::LockFailedError) return false;
  QFile::setPermissions(lock_.fileName(), QFile::ReadOwner | QFile::WriteOwner);  // it names the machine
  RemoveLeftovers();
  Listen();
  return true;
}

// Taking over the lock of a killed program briefly creates a second file, which stays if this program is killed too. It
// is not needed while the lock is held.
void SingleInstance::RemoveLeftovers() const {
  if (!lock_.isLocked()) return;
  const QFileInfo lock(lock_.fileName());
  for (const QString& name : lock.dir().entryList({lock.fileName() + ".rmlock*"}, QDir::Files)) {
    QFile::remove(lock.dir().filePath(name));
  }
}

void SingleInstance::Listen() {
  QLocalServer::removeServer(socket_name_);  // of a program that was killed
  if (server_.listen(socket_name_)) return;
  problem_ = "a second start cannot bring this program to the front: ";
  problem_ += BelongsToAnother(FileOf(socket_name_), lock_.fileName())
                  ? "another user of this machine has taken the name " + FileOf(socket_name_)
                  : server_.errorString();
}

SingleInstance::Start SingleInstance::ContactRunning() const {
  // The running program answers as the same user; another user's answer cannot be trusted.
  if (BelongsToAnother(FileOf(socket_name_), lock_.fileName())) return Start::kNameIsTaken;
  QLocalSocket socket;
  socket.connectToServer(socket_name_);
  char answer = 0;
  const bool answered =
      socket.waitForConnected(kPatienceMs) && socket.waitForReadyRead(kPatienceMs) && socket.getChar(&answer);
  if (!answered) return Start::kOtherNotResponding;
  return answer == kHasPanel ? Start::kPanelRaised : Start::kOtherIsHeadless;
}

void SingleInstance::Answer() {
  while (QLocalSocket* socket = server_.nextPendingConnection()) {
    QObject::connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    socket->putChar(bring_to_front_ && bring_to_front_() ? kHasPanel : kHeadless);
    socket->disconnectFromServer();  // after the answer is written
  }
}

}  // namespace orvalis
