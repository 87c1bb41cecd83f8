#pragma once

#include <QObject>
#include <atomic>
#include <cstdint>
#include <string>
#include <thread>

#include "publish/webcam_upload.h"

namespace orvalis {

/// FTP by libcurl, in a thread of its own: libcurl holds its caller up while it waits for the server's word at the end
/// of a transfer and for its good-bye, also where everything else is done without waiting. The thread gets a copy of
/// all it needs and gives back one text through the event loop; nothing else is shared.
class CurlFtpSender : public QObject, public FtpSender {
  Q_OBJECT
 public:
  CurlFtpSender() = default;
  ~CurlFtpSender() override { Abandon(); }

  void Send(const FtpUpload& upload, Done done) override;
  /// Waits for the thread, which notices within a second.
  void Abandon() override;

 private:
  void Finish(std::uint64_t transfer, const std::string& failure);

  Done done_;
  std::uint64_t transfer_ = 0;  ///< counts them: the end of an abandoned one may still be in the event loop
  std::atomic<bool> abandoned_ = false;
  std::thread worker_;
};

}  // namespace orvalis
