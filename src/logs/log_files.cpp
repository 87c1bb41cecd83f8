#include "logs/log_files.h"

#include <system_error>

#include "base/path.h"

namespace orvalis {
namespace {

namespace fs = std::filesystem;

/// Whether opening it returns at once: a pipe that nobody reads would hold up the program, and with it the readings.
/// Folders fail by themselves.
bool OpensAtOnce(const fs::path& path) {
  std::error_code error;
  const fs::file_type type = fs::status(path, error).type();
  return type != fs::file_type::fifo && type != fs::file_type::socket && type != fs::file_type::block;
}

/// Returns whether `path` now holds `record` and nothing else.
bool WriteWhole(const fs::path& path, const std::string& record) {
  std::error_code error;
  if (!OpensAtOnce(path)) fs::remove(path, error);  // the name is for this log alone
  std::ofstream file(path, std::ios::trunc | std::ios::binary);
  file << record << '\n' << std::flush;
  return file.good();
}

}  // namespace

void RotatingLog::Open(const fs::path& folder) {
  Close();
  path_ = folder / kind_.file_name;
  static_cast<void>(EnsureOpen());
}

void RotatingLog::Close() {
  file_.close();
  file_.clear();
  trouble_.Mended();
  rotate_at_ = kind_.max_bytes;
}

bool RotatingLog::EnsureOpen() {
  std::error_code error;
  // A deleted or moved file would go on taking lines unread.
  const std::uintmax_t on_disk = fs::file_size(path_, error);
  if (file_.is_open() && file_.good() && !error && on_disk == size_) return true;
  file_.close();
  file_.clear();
  if (!OpensAtOnce(path_)) {
    Fail("cannot write the " + std::string(kind_.name) + ": " + TextOfPath(path_) + " is not a file; remove it");
    return false;
  }
  bool cut_off = false;  // a full disk may have taken half a line
  if (!error && on_disk > 0) {
    std::ifstream existing(path_, std::ios::binary);
    existing.seekg(-1, std::ios::end);
    cut_off = existing.get() != '\n';
  }
  file_.open(path_, std::ios::app | std::ios::binary);
  if (!file_) {
    Fail("cannot write the " + std::string(kind_.name) + " " + TextOfPath(path_) +
         "; does its folder exist, and is it writable?");
    return false;
  }
  size_ = error ? 0 : on_disk;
  if (cut_off) {
    file_ << '\n';
    ++size_;
  }
  return true;
}

void RotatingLog::Write(const std::string& line) {
  if (path_.empty() || !EnsureOpen()) return;
  if (size_ + line.size() + 1 > rotate_at_) {
    Rotate();
    if (!EnsureOpen()) return;
  }
  file_ << line << '\n' << std::flush;
  if (!file_) {
    Fail("cannot write the " + std::string(kind_.name) + " " + TextOfPath(path_) + "; is the disk full?");
    return;
  }
  size_ += line.size() + 1;
  if (trouble_.Mended()) report_("the " + std::string(kind_.name) + " is being written again");
}

void RotatingLog::Rotate() {
  file_.close();
  const auto old_file = [&](int number) { return fs::path(path_) += "." + std::to_string(number); };
  // The current file goes first: if it cannot be renamed, the old ones stay and the log keeps growing.
  std::error_code error;
  fs::rename(path_, old_file(0), error);
  if (error) {
    rotate_at_ = size_ + kind_.max_bytes / 10;  // try again when it has grown this much
    Fail("cannot start a new " + std::string(kind_.name) + " " + TextOfPath(path_) + ": " + error.message());
    return;
  }
  rotate_at_ = kind_.max_bytes;
  for (int number = kind_.old_files_kept; number >= 1; --number)
    fs::rename(old_file(number - 1), old_file(number), error);
}

void RotatingLog::Fail(const std::string& failure) {
  if (trouble_.IsNews(failure)) report_(failure);
}

void OneLineLog::Write(const fs::path& folder, const std::string& record) {
  const fs::path path = folder / kFileName;
  const fs::path fresh = folder / (std::string(kFileName) + ".new");
  std::error_code error;
  bool written = WriteWhole(fresh, record);
  if (!written) {
    // On a full disk the older record would go on saying what is no longer so, and it is in the way of this one.
    fs::remove(path, error);
    written = WriteWhole(fresh, record);
  }
  error = written ? std::error_code() : std::make_error_code(std::errc::io_error);
  if (!error) fs::rename(fresh, path, error);
  // Where a file cannot be replaced while it is read, a reader may block a record now and then, and the next one
  // follows.
  if (error && written && ++held_ < kHeldQuietly) return;
  if (error) {
    const std::string failure = "cannot write the one-line log " + TextOfPath(path) +
                                "; does its folder exist, is it writable, and is the disk full?";
    if (trouble_.IsNews(failure)) report_(failure);
    return;
  }
  held_ = 0;
  if (trouble_.Mended()) report_("the one-line log is being written again");
}

}  // namespace orvalis
