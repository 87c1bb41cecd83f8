#pragma once

#include <string>
#include <vector>

#include "app/alerts.h"
#include "base/run_time_error.h"

namespace orvalis::test {

/// Writes down the sounds and programs that alerts ask for, each with a blank behind it, or fails.
class AlertRecorder : public SoundPlayer, public ProgramStarter {
 public:
  void Play(const std::string& path) override { Give(path); }
  void Start(const Call& call) override {
    Give(call.path);
    calls.push_back(call);
  }
  std::string given;
  std::string failure;
  std::vector<Call> calls;  ///< those that did not fail

 private:
  void Give(const std::string& path) {
    if (!failure.empty()) throw RunTimeError(RunTimeError::kFileNotFound, failure);
    given += path + " ";
  }
};

}  // namespace orvalis::test
