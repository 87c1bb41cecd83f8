#pragma once

#include <curl/curl.h>

#include <functional>
#include <memory>
#include <string>

#include "address.h"
#include "event_set.h"

namespace orvalis::indi {

/// Asks the program for its observation and never waits for it: a driver that waits shows clients its last state.
class ObservationSource {
 public:
  /// An answer with status 200, by the moment of its request.
  using Answered = std::function<void(Moment requested, const std::string& body)>;
  using Failed = std::function<void(const std::string& problem)>;

  /// Throws std::runtime_error when libcurl cannot be used.
  ObservationSource(EventSet& events, Answered answered, Failed failed);
  ~ObservationSource();
  ObservationSource(const ObservationSource&) = delete;
  ObservationSource& operator=(const ObservationSource&) = delete;

  /// Abandons the request under way.
  void SetAddress(const Address& address);
  /// Sends a request, unless one is under way; that ends after `kLongestRequest` at the latest.
  void Ask();

  static constexpr std::chrono::seconds kLongestRequest{4};
  static constexpr std::size_t kLongestAnswer = 65'536;  // bytes

 private:
  using Multi = std::unique_ptr<CURLM, decltype(&curl_multi_cleanup)>;
  using Easy = std::unique_ptr<CURL, decltype(&curl_easy_cleanup)>;

  void SetUp();
  void Abandon();
  void Act(curl_socket_t socket, int events);
  void Finish(CURLcode result);
  static int WatchSocket(CURL*, curl_socket_t socket, int what, void* source, void*);
  static int SetTimer(CURLM*, long milliseconds, void* source);
  static std::size_t Receive(const char* bytes, std::size_t size, std::size_t count, void* source);

  EventSet& events_;
  Answered answered_;
  Failed failed_;
  Timer timer_;
  Easy easy_;  // used by `multi_`, which ends before it
  Multi multi_;
  std::string body_;
  Moment requested_{};
  bool asking_ = false;
};

}  // namespace orvalis::indi
