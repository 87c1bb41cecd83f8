#include "logs/crash_note.h"

#include <fstream>
#include <system_error>

namespace orvalis {

std::string TakeCrashNote(const std::filesystem::path& folder) {
  const std::filesystem::path note = folder / kCrashNoteFile;
  std::error_code error;
  if (!std::filesystem::is_regular_file(note, error)) return "";
  std::string line;
  std::getline(std::ifstream(note), line);
  std::filesystem::remove(note, error);  // where it cannot be removed every start says it
  return line;
}

}  // namespace orvalis
