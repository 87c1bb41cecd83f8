#pragma once

#include <string>
#include <vector>

#include "acquisition/alerts.h"

namespace orvalis::test {

/// Writes down the sounds and programs that alerts ask for.
class AlertRecorder : public SoundPlayer, public ProgramStarter {
 public:
  void Play(const std::string& path) override { paths.push_back(path); }
  void Start(const std::string& path) override { paths.push_back(path); }
  std::vector<std::string> paths;
};

}  // namespace orvalis::test
