#pragma once

#include <QObject>
#include <functional>

class QSocketNotifier;

namespace orvalis {

/// Turns SIGINT, SIGTERM and SIGHUP into a call from the event loop, as long as it lives. One at a time.
class StopSignals : public QObject {
  Q_OBJECT
 public:
  explicit StopSignals(std::function<void()> stop);
  ~StopSignals() override;

 private:
  std::function<void()> stop_;
};

}  // namespace orvalis
