#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "base/clock.h"
#include "base/event_list.h"
#include "base/message.h"
#include "base/once_until_mended.h"
#include "config/settings.h"
#include "publish/secret_mask.h"
#include "publish/tail_text.h"

namespace orvalis {

/// The three text boxes of the web publishing window. None of them ever shows the password: neither the current one nor
/// the one sent, however a server writes it.
class SubmitBoxes {
 public:
  SubmitBoxes(const Settings& settings, const Clock& clock) : settings_(settings), clock_(clock) {}

  /// `changed` is called after every change.
  void OnChanged(std::function<void()> changed) { changed_ = std::move(changed); }

  /// Shows a request, or why there is none, under a caption.
  void ShowRequest(Message caption, std::string_view text);
  /// Begins an exchange with the current password and shows its request. Earlier responses stay; the next one is added
  /// below them.
  void BeginExchange(Message caption, std::string_view request);

  /// Adds what a server sent, with every line end converted to CR LF.
  void AddResponse(std::string_view bytes);

  /// Adds a line to the error box: the time and `text`.
  void AddError(std::string_view text);

  [[nodiscard]] const Message& request_caption() const { return request_caption_; }
  [[nodiscard]] const std::string& request() const { return request_; }
  [[nodiscard]] std::uint64_t response_version() const { return response_.version(); }
  [[nodiscard]] std::string Response() const { return Masked(response_.All(), response_.shown_from()); }
  [[nodiscard]] std::uint64_t errors_version() const { return errors_.version(); }
  [[nodiscard]] std::string_view Errors() const { return errors_.View(); }

  /// `text` from byte `from` on, with the passwords masked. To be called before anything is cut off or replaced.
  [[nodiscard]] std::string Masked(std::string_view text, std::size_t from = 0) const;

 private:
  void Changed() const {
    if (changed_) changed_();
  }

  const Settings& settings_;
  const Clock& clock_;
  std::function<void()> changed_;
  Message request_caption_;
  std::string request_;
  std::string sent_password_;  ///< of the last exchange: its response is still shown after the setting changes
  TailText response_;
  bool after_return_ = false;  ///< the last byte of the response was a carriage return
  bool new_answer_ = false;    ///< the current exchange has received nothing yet
  TailText errors_;
};

/// Reports the results of one of the uploads in the error box and, without repeating them at every interval, in the
/// event list.
class UploadReport {
 public:
  /// `name` begins the lines of the event list: "readings upload".
  UploadReport(std::string_view name, SubmitBoxes& boxes, EventList& events)
      : name_(name), boxes_(boxes), events_(events) {}

  /// The upload was tried and failed.
  void Failed(const std::string& why);
  /// The upload was not tried. Reported once, until something else happens.
  void Refused(const std::string& why);
  void Succeeded();
  /// How many were tried since the start, and how that ended.
  struct Counts {
    std::uint64_t succeeded = 0;
    std::uint64_t failed = 0;
  };
  [[nodiscard]] const Counts& counts() const { return counts_; }
  /// The user asked for the upload: its failure is reported even if it is the same as the last.
  void Repeat() { trouble_.Repeat(); }

 private:
  bool Note(const std::string& why);

  std::string_view name_;
  SubmitBoxes& boxes_;
  EventList& events_;
  OnceUntilMended trouble_;
  Counts counts_;
};

}  // namespace orvalis
