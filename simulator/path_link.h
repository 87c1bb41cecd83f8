#pragma once

#include <string>

namespace orvalis_unit {

// A symbolic link that exists as long as the object.
class PathLink {
 public:
  // Makes `path` a link to `target`, atomically replacing an existing link. Throws std::runtime_error, for example if
  // `path` exists and is not a link.
  PathLink(std::string path, std::string target);

  // Removes the link, unless it has been redirected meanwhile.
  ~PathLink();

  PathLink(const PathLink&) = delete;
  PathLink& operator=(const PathLink&) = delete;

 private:
  std::string path_;
  std::string target_;
};

}  // namespace orvalis_unit
