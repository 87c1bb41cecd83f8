#pragma once

#include <QFile>
#include <QFileInfo>
#include <QString>
#include <cstdint>
#include <string>

/// What it takes on each operating system to keep a file safe. Implemented once per operating system.
namespace orvalis::safe_file {

/// Tells one state of a file from another, as long as each write makes a new file.
struct Stamp {
  std::uint64_t identity = 0;
  std::int64_t size = -1;  ///< -1 when there is no file
  std::int64_t changed = 0;
  bool operator==(const Stamp&) const = default;
};
[[nodiscard]] Stamp StampOf(const QString& path);

/// The number of the system's last error on this thread, as set by these functions and Qt's file classes.
[[nodiscard]] int LastError();
void ClearLastError();
/// For a person.
[[nodiscard]] std::string ErrorText(int error);

[[nodiscard]] bool CanRead(const QString& file);
[[nodiscard]] bool CanWrite(const QString& folder);
/// Makes `file` readable only by its owner and the system administrator.
[[nodiscard]] bool RestrictToOwner(const QString& file);
/// Gives `from` the name `to`, in one step, in the place of what had it.
[[nodiscard]] bool Replace(const QString& from, const QString& to);
/// Removes a pipe or the like from the name of a file of ours: opening it would wait for ever.
inline void RemovePipe(const QString& name) {
  const QFileInfo there(name);
  if (there.exists() && !there.isFile() && !there.isDir()) QFile::remove(name);
}
/// Waits until the file is on the disk.
[[nodiscard]] bool Flush(const QString& file);
/// The same for the names in a folder. A file system that cannot do that does without.
void FlushNames(const QString& folder);

}  // namespace orvalis::safe_file
