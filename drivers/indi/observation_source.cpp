#include "observation_source.h"

#include <sys/epoll.h>

#include <stdexcept>
#include <utility>

namespace orvalis::indi {

ObservationSource::ObservationSource(EventSet& events, Answered answered, Failed failed)
    : events_(events),
      answered_(std::move(answered)),
      failed_(std::move(failed)),
      timer_(events, [this] { Act(CURL_SOCKET_TIMEOUT, 0); }),
      easy_(curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK ? curl_easy_init() : nullptr, curl_easy_cleanup),
      multi_(curl_multi_init(), curl_multi_cleanup) {
  if (!easy_ || !multi_) throw std::runtime_error("libcurl cannot be used");
  curl_multi_setopt(multi_.get(), CURLMOPT_SOCKETFUNCTION, &WatchSocket);
  curl_multi_setopt(multi_.get(), CURLMOPT_SOCKETDATA, this);
  curl_multi_setopt(multi_.get(), CURLMOPT_TIMERFUNCTION, &SetTimer);
  curl_multi_setopt(multi_.get(), CURLMOPT_TIMERDATA, this);
  SetUp();
  SetAddress({});
}

ObservationSource::~ObservationSource() { Abandon(); }

void ObservationSource::SetUp() {
  const auto set = [this](CURLoption option, auto value) { curl_easy_setopt(easy_.get(), option, value); };
  constexpr long kYes = 1;
  constexpr long kNo = 0;
  set(CURLOPT_PROTOCOLS_STR, "http");
  set(CURLOPT_FOLLOWLOCATION, kNo);  // where it leads, another dome may answer
  set(CURLOPT_PROXY, "");            // which may answer from memory
  set(CURLOPT_TIMEOUT_MS, static_cast<long>(std::chrono::milliseconds(kLongestRequest).count()));
  set(CURLOPT_NOSIGNAL, kYes);
  set(CURLOPT_QUICK_EXIT, kYes);  // do not wait for a name look-up, which cannot be cancelled
  set(CURLOPT_USERAGENT, "indi_orvalis_weather/" ORVALIS_VERSION);
  set(CURLOPT_WRITEFUNCTION, &Receive);
  set(CURLOPT_WRITEDATA, this);
}

void ObservationSource::SetAddress(const Address& address) {
  Abandon();
  curl_easy_setopt(easy_.get(), CURLOPT_URL, ("http://" + address.Text() + "/observation").c_str());
}

void ObservationSource::Abandon() {
  if (std::exchange(asking_, false)) curl_multi_remove_handle(multi_.get(), easy_.get());
}

void ObservationSource::Ask() {
  if (asking_) return;
  body_.clear();
  requested_ = Now();
  const CURLMcode result = curl_multi_add_handle(multi_.get(), easy_.get());
  asking_ = result == CURLM_OK;
  if (!asking_) failed_(curl_multi_strerror(result));
}

void ObservationSource::Act(curl_socket_t socket, int events) {
  int running = 0;
  curl_multi_socket_action(multi_.get(), socket, events, &running);
  int left = 0;
  while (const CURLMsg* message = curl_multi_info_read(multi_.get(), &left)) {
    if (message->msg == CURLMSG_DONE) Finish(message->data.result);
  }
}

void ObservationSource::Finish(CURLcode result) {
  Abandon();
  long status = 0;
  curl_easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &status);
  constexpr long kOk = 200;
  if (result == CURLE_OK && status == kOk) {
    answered_(requested_, body_);
  } else if (result == CURLE_OK) {
    failed_("it refused the request with status " + std::to_string(status));
  } else if (result == CURLE_OPERATION_TIMEDOUT) {
    // Its own text counts milliseconds and bytes, and would be news each time.
    failed_("it takes longer than " + std::to_string(kLongestRequest.count()) + " seconds");
  } else if (result == CURLE_WRITE_ERROR) {
    failed_("what is there sends too much");
  } else {
    failed_(curl_easy_strerror(result));
  }
}

int ObservationSource::WatchSocket(CURL*, curl_socket_t socket, int what, void* source, void*) {
  auto& self = *static_cast<ObservationSource*>(source);
  if (what == CURL_POLL_REMOVE) {
    self.events_.Forget(socket);
    return 0;
  }
  const std::uint32_t events =
      ((what & CURL_POLL_IN) != 0 ? EPOLLIN : 0U) | ((what & CURL_POLL_OUT) != 0 ? EPOLLOUT : 0U);
  self.events_.Watch(socket, events, [&self, socket](std::uint32_t ready) {
    int seen = 0;
    if ((ready & EPOLLIN) != 0) seen |= CURL_CSELECT_IN;
    if ((ready & EPOLLOUT) != 0) seen |= CURL_CSELECT_OUT;
    if ((ready & (EPOLLERR | EPOLLHUP)) != 0) seen |= CURL_CSELECT_ERR;
    self.Act(socket, seen);
  });
  return 0;
}

int ObservationSource::SetTimer(CURLM*, long milliseconds, void* source) {
  auto& self = *static_cast<ObservationSource*>(source);
  if (milliseconds < 0) {
    self.timer_.Stop();
  } else {
    self.timer_.Start(Now() + Moment(milliseconds));
  }
  return 0;
}

std::size_t ObservationSource::Receive(const char* bytes, std::size_t size, std::size_t count, void* source) {
  auto& self = *static_cast<ObservationSource*>(source);
  if (self.body_.size() + size * count > kLongestAnswer) return 0;
  self.body_.append(bytes, size * count);
  return size * count;
}

}  // namespace orvalis::indi
