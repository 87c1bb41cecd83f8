#include "platform/linux/command_starter.h"

#include <QFileInfo>
#include <QProcess>

#include "base/run_time_error.h"

namespace orvalis {

void PathCommandStarter::Start(const std::string& command_line) {
  const QString line = QString::fromStdString(command_line);
  for (qsizetype end = 0; end >= 0 && end < line.size();) {
    end = line.indexOf(' ', end + 1);
    const QFileInfo program(line.left(end));
    if (!program.isAbsolute() || !program.isFile() || !program.isExecutable()) continue;
    const QStringList arguments = end < 0 ? QStringList() : QProcess::splitCommand(line.mid(end));
    if (QProcess::startDetached(program.filePath(), arguments)) return;
  }
  throw RunTimeError(RunTimeError::kFileNotFound,
                     Message::Of("no program found for the command \"%1\"").With(command_line));
}

}  // namespace orvalis
