#pragma once

#include <string>

namespace orvalis::indi {

/// Which station is followed, kept over restarts in a file of INDI's folder, `~/.indi/DEVICE_station`.
class StationMemory {
 public:
  explicit StationMemory(const std::string& device);

  /// "" when no station was kept. A file that cannot be read or was destroyed gives a text that no station has: the
  /// roof must not follow another dome because a disk failed.
  [[nodiscard]] std::string Read() const;
  /// Keeps `uuid`; "" forgets. The file is the old one or the new one, whatever happens. Returns why that failed, or
  /// "".
  [[nodiscard]] std::string Write(const std::string& uuid) const;

 private:
  std::string folder_;
  std::string path_;
};

}  // namespace orvalis::indi
