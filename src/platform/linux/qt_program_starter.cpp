#include "platform/linux/qt_program_starter.h"

#include <QFileInfo>
#include <QProcess>

#include "base/run_time_error.h"

namespace orvalis {

void QtProgramStarter::Start(const std::string& path) {
  const QFileInfo file(QString::fromStdString(path));
  if (path.empty() || !file.isFile()) {
    throw RunTimeError(RunTimeError::kFileNotFound,
                       "program \"" + path + "\" not found; choose one in the setup dialog");
  }
  if (!file.isExecutable()) {
    throw RunTimeError(RunTimeError::kPermissionDenied,
                       "the program \"" + path + "\" is not executable; make it so with chmod +x");
  }
  if (!QProcess::startDetached(file.absoluteFilePath(), {}, file.absolutePath())) {
    throw RunTimeError(RunTimeError::kPathFileAccess, "the program \"" + path + "\" cannot be started");
  }
}

}  // namespace orvalis
