#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/clock.h"
#include "base/event_loop.h"
#include "base/message.h"
#include "config/settings.h"
#include "panel/panel_model.h"
#include "publish/http_request.h"
#include "publish/http_socket.h"
#include "publish/submit_boxes.h"
#include "publish/upload_schedule.h"
#include "reading/weather_state.h"

namespace orvalis {

/// What triggers an upload.
enum class Trigger { kSchedule, kUser };

/// What the user adds to the request. Not stored: it lasts until the program ends.
struct RequestComposition {
  std::string_view method = kRequestMethods.front();
  std::vector<RequestRow> variables;
  std::vector<RequestRow> headers;
};

/// A message box over the web publishing window.
class MessageBoxes {
 public:
  virtual ~MessageBoxes() = default;
  /// Returns at once; a box that is already open shows the new text instead.
  virtual void ShowMessage(std::string_view text, std::string_view title) = 0;
};

/// Sends the readings to the weather service.
class ReadingsUpload : public ScheduledUpload {
 public:
  /// The exchange is aborted when the server is silent for this long.
  static constexpr std::chrono::seconds kIdleTimeout{30};
  /// The longest exchange, however slowly the response trickles in.
  static constexpr std::chrono::seconds kExchangeTimeout{60};
  /// How many bytes of a response are evaluated.
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

  /// Shows the messages after a click; null when headless.
  void SetMessageBoxes(MessageBoxes* boxes) { message_boxes_ = boxes; }

  /// Sends the current readings, unless that is not allowed. Returns at once; the result appears in the boxes. An
  /// exchange in progress is aborted. The upload stays due when only a reading is missing.
  UploadTurn Send(Trigger trigger, Permission permission = Permission::kBySetting);

  [[nodiscard]] std::int32_t IntervalRow() const override { return parts_.settings.g_lPWSUpdate_interval_index; }
  [[nodiscard]] UploadTurn Start() override { return Send(Trigger::kSchedule); }

  /// Shows in the request box what would be sent now, whether uploads are enabled or not. A request that was sent stays
  /// there until `Edited` or the next one.
  void Preview();
  /// The user changed something that is part of the request.
  void Edited();

  [[nodiscard]] RequestComposition& composition() { return composition_; }
  [[nodiscard]] const UploadReport::Counts& counts() const { return report_.counts(); }

 private:
  /// Why nothing can be sent.
  struct Refusal {
    Message text;
    std::string_view title{};      ///< of a message box; empty for none
    bool reading_missing = false;  ///< the only obstacle
  };
  struct Prepared {
    std::string host;
    std::uint16_t port;
    std::string bytes{};
    std::string shown{};  ///< without the password
  };

  [[nodiscard]] std::variant<Prepared, Refusal> Prepare(Trigger trigger) const;
  /// Why there is no current reading to send, or "".
  [[nodiscard]] Message MissingReading() const;
  /// Whether the ID or the password is still the placeholder.
  [[nodiscard]] bool AccountMissing() const;
  void Begin(const Prepared& request);
  void Show(const Refusal& refusal, Trigger trigger);

  void Receive(std::string_view bytes);
  void Closed();
  /// Ends the exchange before the server did. If the status line has arrived, the response decides, even though the
  /// server kept the connection open; otherwise the upload failed with `why`.
  void Abort(const std::string& why);
  void RestartIdleTimer();
  /// Ends the exchange without reporting anything.
  void End();
  void Judge();

  Parts parts_;
  UploadReport report_;
  MessageBoxes* message_boxes_ = nullptr;
  RequestComposition composition_;
  bool shows_sent_ = false;  ///< the request box shows what was sent, not a preview
  bool sent_once_ = false;   ///< by a permission for that time alone

  bool under_way_ = false;
  std::string answer_;  ///< its beginning, at most kLongestJudged bytes
  std::size_t received_ = 0;
  EventLoop::TimerId idle_timer_ = 0;
  EventLoop::TimerId exchange_timer_ = 0;
};

}  // namespace orvalis
