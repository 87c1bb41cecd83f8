#include "platform/qt/curl_ftp_sender.h"

#include <curl/curl.h>

#include <QFile>
#include <QLibrary>
#include <QMetaObject>
#include <algorithm>
#include <array>
#include <memory>
#include <string_view>
#include <thread>
#include <type_traits>
#include <utility>

#include "base/run_time_error.h"

namespace orvalis {
namespace {

using Url = std::unique_ptr<CURLU, decltype(&curl_url_cleanup)>;
using Easy = std::unique_ptr<CURL, decltype(&curl_easy_cleanup)>;

/// The functions of libcurl, which is loaded with the first picture: with the twenty libraries that it brings it takes
/// five megabytes, and few programs send pictures.
struct Curl {
  decltype(&curl_global_init) global_init;
  decltype(&curl_easy_init) easy_init;
  decltype(&curl_easy_cleanup) easy_cleanup;
  decltype(&curl_easy_setopt) easy_setopt;
  decltype(&curl_easy_perform) easy_perform;
  decltype(&curl_easy_strerror) easy_strerror;
  decltype(&curl_url) url;
  decltype(&curl_url_set) url_set;
  decltype(&curl_url_cleanup) url_cleanup;
};

/// Throws RunTimeError when it cannot be loaded.
Curl Load() {
  constexpr int kInterface = 4;
  QLibrary library("curl", kInterface);
  library.setLoadHints(QLibrary::PreventUnloadHint);  // a transfer may still be under way when the program ends
  const auto find = [&](auto& function, const char* name) {
    function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(library.resolve(name));
    if (function == nullptr) {
      throw RunTimeError(
          RunTimeError::kDeviceUnavailable,
          Message::Of("pictures cannot be sent without libcurl: %1").With(library.errorString().toStdString()));
    }
  };
  Curl curl{};
  find(curl.global_init, "curl_global_init");
  find(curl.easy_init, "curl_easy_init");
  find(curl.easy_cleanup, "curl_easy_cleanup");
  find(curl.easy_setopt, "curl_easy_setopt");
  find(curl.easy_perform, "curl_easy_perform");
  find(curl.easy_strerror, "curl_easy_strerror");
  find(curl.url, "curl_url");
  find(curl.url_set, "curl_url_set");
  find(curl.url_cleanup, "curl_url_cleanup");
  return curl;
}

/// Hands the file to the library, piece by piece.
std::size_t Read(char* buffer, std::size_t size, std::size_t count, void* rest) {
  auto& bytes = *static_cast<std::string_view*>(rest);
  const std::size_t taken = bytes.copy(buffer, size * count);
  bytes.remove_prefix(taken);
  return taken;
}

int StopWhenAbandoned(void* abandoned, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
  return static_cast<const std::atomic<bool>*>(abandoned)->load() ? 1 : 0;
}

/// The server's answers are not needed and must not appear on standard output.
std::size_t Drop(char*, std::size_t size, std::size_t count, void*) { return size * count; }

Url MakeUrl(const Curl& curl, const FtpUpload& upload) {
  Url url(curl.url(), curl.url_cleanup);
  const std::string path = upload.folder + upload.name;
  const bool good = url && curl.url_set(url.get(), CURLUPART_SCHEME, "ftp", 0) == CURLUE_OK &&
                    curl.url_set(url.get(), CURLUPART_HOST, upload.host.c_str(), 0) == CURLUE_OK &&
                    curl.url_set(url.get(), CURLUPART_PORT, std::to_string(upload.port).c_str(), 0) == CURLUE_OK &&
                    curl.url_set(url.get(), CURLUPART_PATH, path.c_str(), CURLU_URLENCODE) == CURLUE_OK;
  if (!good) url.reset();
  return url;
}

/// Sends `picture` by `easy` and waits until the server has it. Returns why it failed, or "".
std::string Transfer(const Curl& curl, const Easy& easy, const FtpUpload& upload, std::string_view picture,
                     std::atomic<bool>& abandoned) {
  const Url url = MakeUrl(curl, upload);
  if (!url || !easy) return "the webcam server address cannot be used";
  const auto set = [&](CURLoption option, auto value) { curl.easy_setopt(easy.get(), option, value); };
  constexpr long kYes = 1;
  constexpr std::chrono::seconds kLongestConnect{30};
  std::array<char, CURL_ERROR_SIZE> reason{};
  set(CURLOPT_CURLU, url.get());
  set(CURLOPT_PROTOCOLS_STR, "ftp");
  set(CURLOPT_PROXY, "");
  set(CURLOPT_USERNAME, upload.user.c_str());
  set(CURLOPT_PASSWORD, upload.password.c_str());
  set(CURLOPT_UPLOAD, kYes);
  set(CURLOPT_READFUNCTION, &Read);
  set(CURLOPT_READDATA, &picture);
  set(CURLOPT_INFILESIZE_LARGE, static_cast<curl_off_t>(picture.size()));
  set(CURLOPT_WRITEFUNCTION, &Drop);
  set(CURLOPT_CONNECTTIMEOUT, static_cast<long>(kLongestConnect.count()));
  set(CURLOPT_TIMEOUT, static_cast<long>(FtpSender::kLongestTransfer.count()));
  set(CURLOPT_SERVER_RESPONSE_TIMEOUT, static_cast<long>(kLongestConnect.count()));
  set(CURLOPT_NOSIGNAL, kYes);
  set(CURLOPT_QUICK_EXIT, kYes);  // do not wait for a name look-up, which cannot be cancelled
  set(CURLOPT_NOPROGRESS, 0L);
  set(CURLOPT_XFERINFOFUNCTION, &StopWhenAbandoned);
  set(CURLOPT_XFERINFODATA, &abandoned);
  set(CURLOPT_ERRORBUFFER, reason.data());
  const CURLcode code = curl.easy_perform(easy.get());
  if (code == CURLE_OK) return "";
  return reason.front() != '\0' ? reason.data() : curl.easy_strerror(code);
}

}  // namespace

void CurlFtpSender::Mailbox::Tell(std::uint64_t transfer, const std::string& failure) {
  const std::lock_guard lock(mutex_);
  if (sender_ == nullptr) return;
  const auto finish = [sender = sender_, transfer, failure] { sender->Finish(transfer, failure); };
  QMetaObject::invokeMethod(sender_, finish, Qt::QueuedConnection);
}

void CurlFtpSender::Mailbox::Close() {
  const std::lock_guard lock(mutex_);
  sender_ = nullptr;
}

void CurlFtpSender::Send(const FtpUpload& upload, Done done) {
  Abandon();
  // Before there is a second thread. It stays in the program: a thread may outlive everything else.
  static const Curl curl = Load();
  static const CURLcode ready = curl.global_init(CURL_GLOBAL_DEFAULT);
  if (ready != CURLE_OK) throw RunTimeError(RunTimeError::kDeviceUnavailable, curl.easy_strerror(ready));
  QFile file(QString::fromStdString(upload.path));
  if (!file.open(QIODevice::ReadOnly)) {
    throw RunTimeError(RunTimeError::kFileNotFound,
                       "cannot read " + upload.path + ": " + file.errorString().toStdString());
  }
  const auto abandoned = std::make_shared<std::atomic<bool>>(false);
  std::thread([mailbox = mailbox_, abandoned, upload, transfer = transfer_, picture = file.readAll().toStdString()] {
    const Easy easy(curl.easy_init(), curl.easy_cleanup);
    // Reported before libcurl closes the session with `easy`: a server can delay that for two minutes.
    mailbox->Tell(transfer, Transfer(curl, easy, upload, picture, *abandoned));
  }).detach();
  abandoned_ = abandoned;
  done_ = std::move(done);
}

void CurlFtpSender::Abandon() {
  ++transfer_;
  done_ = {};
  if (abandoned_) *abandoned_ = true;
}

void CurlFtpSender::Finish(std::uint64_t transfer, const std::string& failure) {
  if (transfer != transfer_) return;
  if (const Done done = std::exchange(done_, {})) done(failure);
}

}  // namespace orvalis
