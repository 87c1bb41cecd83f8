#include "logs/log_writer.h"

#include "base/path.h"

namespace orvalis {

void LogWriter::OpenFullLog(const Settings& settings) {
  // A disabled log creates no file, and its folder need not exist.
  if (settings.g_lFullLog == 1) full_.Open(PathFromText(settings.g_sFullLogPath));
}

void LogWriter::Write(const LogEntry& entry, const Settings& settings, std::int64_t tick_count) {
  rain_.Note(entry.weather, tick_count);
  WriteOneLine(entry, settings);
  if (settings.g_lFullLog == 1) full_.Write(FullLogLine(entry));
}

void LogWriter::Withdraw(const LogEntry& entry, const Settings& settings) { WriteOneLine(entry, settings); }

void LogWriter::WriteOneLine(const LogEntry& entry, const Settings& settings) {
  if (settings.g_lOneLineLog != 1) return;
  one_line_.Write(PathFromText(settings.g_sOneLineLogPath), OneLineRecord(entry, rain_));
}

}  // namespace orvalis
