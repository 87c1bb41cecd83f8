#pragma once

#include "publish/webcam_upload.h"

namespace orvalis {

/// Starts a command line as its writer meant it: the program is the shortest beginning, up to a blank or the end, that
/// is an executable file's whole path. A program of another system is none.
class PathCommandStarter : public CommandStarter {
 public:
  void Start(const std::string& command_line) override;
};

}  // namespace orvalis
