#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/clock.h"
#include "base/event_loop.h"
#include "config/settings.h"
#include "panel/panel_model.h"
#include "publish/http_request.h"
#include "publish/http_socket.h"
#include "publish/submit_boxes.h"
#include "publish/upload_schedule.h"
#include "reading/weather_state.h"

namespace orvalis {

/// Who asks for an upload.
enum class AskedBy { kSchedule, kUser };

/// What the user composes beside the settings. It lasts as long as the program runs.
struct RequestComposition {
  std::string_view method = kRequestMethods.front();
  std::vector<RequestRow> variables;
  std::vector<RequestRow> headers;
};

/// A message box over the web publishing window.
class MessageBoxes {
 public:
  virtual ~MessageBoxes() = default;
  /// Returns at once; a box that is open already says the new text instead.
  virtual void ShowMessage(std::string_view text, std::string_view title) = 0;
};

/// Sends the readings to the weather service.
class ReadingsUpload : public ScheduledUpload {
 public:
  /// A server that says nothing for so long is given up.
  static constexpr std::chrono::seconds kPatience{30};
  /// No exchange lasts longer, however slowly the answer drips in.
  static constexpr std::chrono::seconds kLongestExchange{60};
  /// As much of an answer as it is judged by, in bytes.
  static constexpr std::size_t kLongestJudged = 8192;

  struct Parts {
    HttpSocket& socket;
    EventLoop& loop;
    const Clock& clock;
    const Settings& settings;
    const WeatherState& weather;
    const PanelModel& panel;
    SubmitBoxes& boxes;
    EventList& events;
    ToCodePage to_code_page;
  };

  explicit ReadingsUpload(const Parts& parts) : parts_(parts), report_("readings upload", parts.boxes, parts.events) {}
  ReadingsUpload(const ReadingsUpload&) = delete;
  ReadingsUpload& operator=(const ReadingsUpload&) = delete;
  ~ReadingsUpload() override { End(); }

  /// Where the messages of a click are shown; none when headless.
  void SetMessageBoxes(MessageBoxes* boxes) { message_boxes_ = boxes; }

  /// Sends the current readings, unless uploads are switched off. Returns at once: what comes of it is seen in the
  /// boxes. An exchange that is still under way is ended. Still due is what lacks nothing but a reading.
  UploadTurn Send(AskedBy asked_by);

  [[nodiscard]] std::int32_t IntervalRow() const override { return parts_.settings.g_lPWSUpdate_interval_index; }
  [[nodiscard]] UploadTurn Start() override { return Send(AskedBy::kSchedule); }

  /// Shows in the request box what would be sent now, switched on or not; the request that was sent stays there until
  /// `Edited` or the next one.
  void Preview();
  /// The user changed something that the request is made of.
  void Edited();

  [[nodiscard]] RequestComposition& composition() { return composition_; }

 private:
  /// Why nothing can be sent.
  struct Refusal {
    std::string text;
    std::string_view title{};    ///< of a message box; empty where there is none
    bool lacks_reading = false;  ///< and nothing else
  };
  struct Prepared {
    std::string host;
    std::uint16_t port;
    std::string bytes{};
    std::string shown{};  ///< without the password
  };

  [[nodiscard]] std::variant<Prepared, Refusal> Prepare(AskedBy asked_by) const;
  /// What keeps the values from being told as those of now, or "".
  [[nodiscard]] std::string_view LackOfReading() const;
  /// Whether the ID or the password is still the text that asks for it.
  [[nodiscard]] bool LacksAccount() const;
  void Begin(const Prepared& request);
  void Show(const Refusal& refusal, AskedBy asked_by);

  void Receive(std::string_view bytes);
  void Closed();
  /// Ends the exchange before the server did. One that has answered has done its work and is judged by its answer,
  /// also when it keeps the connection open; otherwise `why` is the failure.
  void GiveUp(const std::string& why);
  void AwaitAnswer();
  /// Ends the exchange, without a word.
  void End();
  void Judge();

  Parts parts_;
  UploadReport report_;
  MessageBoxes* message_boxes_ = nullptr;
  RequestComposition composition_;
  bool shows_sent_ = false;  ///< the request box shows what was sent, not what would be

  bool under_way_ = false;
  std::string answer_;  ///< the beginning of it, as much as is judged
  std::size_t received_ = 0;
  EventLoop::TimerId patience_ = 0;
  EventLoop::TimerId deadline_ = 0;
};

}  // namespace orvalis
