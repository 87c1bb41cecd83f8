#pragma once

#include <QObject>
#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>

#include "publish/webcam_upload.h"

namespace orvalis {

/// FTP with libcurl, in a separate thread for each transfer: even in its non-blocking mode libcurl blocks while it
/// waits for the server's final reply and for the end of the session, and cannot be interrupted there. So nothing waits
/// for such a thread. It gets a copy of all it needs and returns one text through the event loop; nothing else is
/// shared.
class CurlFtpSender : public QObject, public FtpSender {
  Q_OBJECT
 public:
  CurlFtpSender() = default;
  CurlFtpSender(const CurlFtpSender&) = delete;
  CurlFtpSender& operator=(const CurlFtpSender&) = delete;
  ~CurlFtpSender() override { mailbox_->Close(); }

  void Send(const FtpUpload& upload, Done done) override;
  void Abandon() override;
  [[nodiscard]] bool LeavesThread() const override { return mailbox_.use_count() > 1; }

 private:
  /// Where a thread reports the result of its transfer. Each thread shares ownership and may outlive the sender.
  class Mailbox {
   public:
    explicit Mailbox(CurlFtpSender* sender) : sender_(sender) {}
    void Tell(std::uint64_t transfer, const std::string& failure);
    /// The sender is destroyed: later reports are dropped.
    void Close();

   private:
    std::mutex mutex_;
    CurlFtpSender* sender_;
  };

  void Finish(std::uint64_t transfer, const std::string& failure);

  Done done_;
  std::uint64_t transfer_ = 0;  ///< counts them: the end of an abandoned one may still be in the event loop
  std::shared_ptr<std::atomic<bool>> abandoned_;  ///< of the last transfer
  std::shared_ptr<Mailbox> mailbox_ = std::make_shared<Mailbox>(this);
};

}  // namespace orvalis
