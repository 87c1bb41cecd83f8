#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "base/error_boundary.h"
#include "base/message.h"
#include "config/settings_store.h"
#include "publish/readings_upload.h"
#include "publish/submit_boxes.h"
#include "publish/submit_fields.h"
#include "publish/upload_schedule.h"
#include "publish/webcam_upload.h"

namespace orvalis {

/// Web publishing without its window: both uploads, their schedules, and the actions of the window's controls. Works
/// the same without a window.
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
    bool other_programs;  ///< whether the two picture programs can run on this system
    ToCodePage to_code_page;
  };
  /// An edit counts as finished this long after the last key stroke.
  static constexpr std::chrono::seconds kEditTimeout{30};

  explicit WebPublisher(const Parts& parts);

  /// Applies the loaded settings.
  void Load();

  // User actions in the window. The settings change at once; a failing store is reported.
  void SetText(const SubmitText& box, const std::string& text);
  /// The user left a text box. Until then the text may be incomplete, and the schedules wait.
  void EndEdit() { edited_until_ = 0; }
  void SetSwitch(const SubmitSwitch& box, bool on);
  void SetInterval(const SubmitInterval& list, std::int32_t row);
  /// "&Test Server" and "Capture".
  void TestServer(Permission permission = Permission::kBySetting);
  void Capture(Permission permission = Permission::kBySetting);

  /// The account and the server of an upload, or why there can be none, as a sentence for a person. Without the
  /// password.
  struct Target {
    Message text;
    bool usable;
  };
  [[nodiscard]] Target ReadingsTarget() const;
  [[nodiscard]] Target PictureTarget() const;

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
