#pragma once

#include <string>

namespace orvalis_unit {

// A symbolic link that is there as long as the object is.
class PathLink {
 public:
  // Makes `path` a link to `target`, in the place of a link that is there already; that change is atomic. Throws
  // std::runtime_error, among others when something else than a link is there.
  PathLink(std::string path, std::string target);

  // Leaves the path alone when somebody else has made it lead elsewhere meanwhile.
  ~PathLink();

  PathLink(const PathLink&) = delete;
  PathLink& operator=(const PathLink&) = delete;

 private:
  std::string path_;
  std::string target_;
};

}  // namespace orvalis_unit
