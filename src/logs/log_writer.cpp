#include "logs/log_writer.h"

#include "base/path.h"

namespace orvalis {

void LogWriter::OpenFullLog(const Settings& settings) {
  // A disabled log creates no file, and its folder need not exist.
  if (settings.g_lFullLog == 1) full_.Open(PathFromText(settings.g_sFullLogPath));
}

void LogWriter::Write(const LogEntry& entry, const Settings& settings, std::int64_t tick_count) {
  rain_.Note(entry.weather, tick_count);
  WriteOneLine(entry, settings, tick_count);
  if (settings.g_lFullLog == 1) full_.Write(FullLogLine(entry));
}

void LogWriter::WriteBetweenFrames(const LogEntry& entry, const Settings& settings, std::int64_t tick_count,
                                   bool at_once) {
  constexpr std::int64_t kBetweenRecords = 1500;  // ms; asked once a second, it is every two
  if (at_once || tick_count - recorded_at_ >= kBetweenRecords) WriteOneLine(entry, settings, tick_count);
}

void LogWriter::WriteOneLine(const LogEntry& entry, const Settings& settings, std::int64_t tick_count) {
  if (settings.g_lOneLineLog != 1) return;
  recorded_at_ = tick_count;
  one_line_.Write(PathFromText(settings.g_sOneLineLogPath), OneLineRecord(entry, rain_));
}

}  // namespace orvalis
