#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "base/error_boundary.h"
#include "config/settings_store.h"
#include "publish/readings_upload.h"
#include "publish/submit_boxes.h"
#include "publish/submit_fields.h"
#include "publish/upload_schedule.h"
#include "publish/webcam_upload.h"

namespace orvalis {

/// Web publishing without its window: both uploads, their schedules, and what the window's controls do. It works the
/// same when there is no window.
class WebPublisher {
 public:
  struct Parts {
    SettingsStore& store;
    Settings& settings;
    const WeatherState& weather;
    const PanelModel& panel;
    EventLoop& loop;
    const Clock& clock;
    EventList& events;
    ErrorBoundary& boundary;
    HttpSocket& socket;
    FtpSender& ftp;
    CommandStarter& commands;
    PrivateFileWriter write_private;
    PictureFolder folder;
    bool other_programs;  ///< whether the two programs for pictures can run on this system
    ToCodePage to_code_page;
  };
  /// So long after the last letter a box that is left as it is counts as finished.
  static constexpr std::chrono::seconds kLongestEdit{30};

  explicit WebPublisher(const Parts& parts);

  /// Takes the loaded settings over.
  void Load();

  // What the user does in the window. The settings follow at once; a store that fails is reported.
  void SetText(const SubmitText& box, const std::string& text);
  /// The user leaves a text box. Until then what was typed may be half of it, and the schedules wait.
  void EndEdit() { edited_until_ = 0; }
  void SetSwitch(const SubmitSwitch& box, bool on);
  void SetInterval(const SubmitInterval& list, std::int32_t row);
  /// "&Test Server" and "Capture".
  void TestServer();
  void Capture();

  [[nodiscard]] const Settings& settings() const { return parts_.settings; }
  [[nodiscard]] SubmitBoxes& boxes() { return boxes_; }
  [[nodiscard]] ReadingsUpload& readings() { return readings_; }
  [[nodiscard]] WebcamUpload& webcam() { return webcam_; }
  [[nodiscard]] UploadSchedule& readings_schedule() { return readings_schedule_; }
  [[nodiscard]] UploadSchedule& webcam_schedule() { return webcam_schedule_; }

 private:
  template <typename Write>
  void Keep(Write write);
  [[nodiscard]] bool BeingEdited() const { return parts_.loop.TickCount() < edited_until_; }

  Parts parts_;
  SubmitBoxes boxes_;
  ReadingsUpload readings_;
  WebcamUpload webcam_;
  UploadSchedule readings_schedule_;
  UploadSchedule webcam_schedule_;
  std::int64_t edited_until_ = 0;  ///< TickCount; 0 when no box is being edited
};

}  // namespace orvalis
