#include "logs/log_files.h"

#include <system_error>

#include "base/path.h"

namespace orvalis {
namespace {

namespace fs = std::filesystem;

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
  // A file that was deleted or moved away goes on taking lines that nobody will read.
  const std::uintmax_t on_disk = fs::file_size(path_, error);
  if (file_.is_open() && file_.good() && !error && on_disk == size_) return true;
  file_.close();
  file_.clear();
  bool cut_off = false;  // a full disk may have taken half a line
  if (!error && on_disk > 0) {
    std::ifstream existing(path_, std::ios::binary);
    existing.seekg(-1, std::ios::end);
    cut_off = existing.get() != '\n';
  }
  file_.open(path_, std::ios::app | std::ios::binary);
  if (!file_) {
    Fail("cannot write the " + std::string(kind_.name) + " " + TextOfPath(path_) +
         "; is its folder there, and may it be written?");
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
  if (trouble_.Mended()) report_("the " + std::string(kind_.name) + " is written again");
}

void RotatingLog::Rotate() {
  file_.close();
  const auto former = [&](int number) { return fs::path(path_) += "." + std::to_string(number); };
  // Out of the way first: when that cannot be done, the former ones stay where they are and the log grows on.
  std::error_code error;
  fs::rename(path_, former(0), error);
  if (error) {
    rotate_at_ = size_ + kind_.max_bytes / 10;  // it grows meanwhile, and is tried again then
    Fail("cannot begin a new " + std::string(kind_.name) + " " + TextOfPath(path_) + ": " + error.message());
    return;
  }
  rotate_at_ = kind_.max_bytes;
  for (int number = kind_.former_kept; number >= 1; --number) fs::rename(former(number - 1), former(number), error);
}

void RotatingLog::Fail(const std::string& failure) {
  if (trouble_.IsNews(failure)) report_(failure);
}

void OneLineLog::Write(const fs::path& folder, const std::string& record) {
  const fs::path path = folder / kFileName;
  const fs::path fresh = folder / (std::string(kFileName) + ".new");
  std::error_code error;
  {
    std::ofstream file(fresh, std::ios::trunc | std::ios::binary);
    file << record << '\n' << std::flush;
    if (!file) error = std::make_error_code(std::errc::io_error);
  }
  const bool written = !error;
  if (!error) fs::rename(fresh, path, error);
  // Where a file that is being read cannot be replaced, a reader now and then is in the way, and the next record
  // follows.
  if (error && written && ++held_ < kHeldQuietly) return;
  if (error) {
    const std::string failure = "cannot write the one-line log " + TextOfPath(path) +
                                "; is its folder there, may it be written, and is there room on the disk?";
    if (trouble_.IsNews(failure)) report_(failure);
    return;
  }
  held_ = 0;
  if (trouble_.Mended()) report_("the one-line log is written again");
}

}  // namespace orvalis
