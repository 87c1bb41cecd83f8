#include "path_link.h"

#include <unistd.h>

#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace orvalis_unit {

namespace fs = std::filesystem;

PathLink::PathLink(std::string path, std::string target) : path_(std::move(path)), target_(std::move(target)) {
  std::error_code error;
  const auto type = fs::symlink_status(path_, error).type();
  if (type == fs::file_type::symlink) {
    const std::string fresh = path_ + ".new-" + std::to_string(getpid());
    fs::create_symlink(target_, fresh, error);
    if (!error) fs::rename(fresh, path_, error);
    std::error_code ignored;
    if (error) fs::remove(fresh, ignored);
  } else if (type == fs::file_type::not_found) {
    fs::create_symlink(target_, path_, error);
  } else if (!error) {
    throw std::runtime_error(path_ + " exists and is not a symbolic link");
  }
  if (error) throw std::runtime_error("cannot make the link " + path_ + ": " + error.message());
}

PathLink::~PathLink() {
  std::error_code error;
  if (fs::read_symlink(path_, error) == fs::path(target_) && !error) fs::remove(path_, error);
}

}  // namespace orvalis_unit
