#pragma once

#include "publish/webcam_upload.h"

namespace orvalis {

/// Starts a command line as intended: the program is the shortest prefix, up to a blank or the end, that is the full
/// path of an executable file. A program for another system does not count.
class PathCommandStarter : public CommandStarter {
 public:
  void Start(const std::string& command_line) override;
};

}  // namespace orvalis
