#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "config/settings.h"
#include "publish/submit_boxes.h"
#include "publish/upload_schedule.h"

namespace orvalis {

/// The program's folder, and the system's path separator and line end.
struct PictureFolder {
  std::string path;            ///< without a trailing separator
  char separator = '/';        ///< '\\' on Windows
  std::string line_end{"\n"};  ///< "\r\n" on Windows
};

/// The file name of the screenshot, with its leading separator.
inline constexpr std::string_view kScreenshotFile = "\\screenshot.bmp";

/// The picture of the main panel, in the web publishing window's picture box.
class PanelPicture {
 public:
  virtual ~PanelPicture() = default;
  /// Captures the panel, visible or not, and shows the picture.
  virtual void Capture() = 0;
  /// Writes it as a bitmap with 24 bits per pixel. Throws RunTimeError kPathFileAccess.
  virtual void SaveBitmap(const std::string& path) = 0;
  /// Writes it as JPEG, atomically. Throws RunTimeError kPathFileAccess.
  virtual void SaveJpeg(const std::string& path) = 0;
};

/// Starts other programs from a command line.
class CommandStarter {
 public:
  virtual ~CommandStarter() = default;
  /// Starts it minimised and does not wait. Throws RunTimeError kFileNotFound.
  virtual void Start(const std::string& command_line) = 0;
};

/// One file for an FTP server.
struct FtpUpload {
  std::string host{};
  std::uint16_t port = 21;
  std::string folder{};  ///< relative to the login folder, "/" at both ends
  std::string name{};    ///< file name on the server
  std::string user{};
  std::string password{};
  std::string path{};  ///< of the local file
};

/// Sends files by FTP in the background.
class FtpSender {
 public:
  /// A transfer that takes longer is aborted.
  static constexpr std::chrono::seconds kLongestTransfer{60};
  /// Receives the reason of the failure, or "".
  using Done = std::function<void(const std::string& failure)>;

  virtual ~FtpSender() = default;
  /// Returns at once; `done` is called later from the event loop. Must not be called during another transfer.
  virtual void Send(const FtpUpload& upload, Done done) = 0;
  /// Aborts the transfer without calling its `done`. Does not wait for it.
  virtual void Abandon() = 0;
  /// Whether a thread still waits for a server and can only be stopped by ending the process.
  [[nodiscard]] virtual bool LeavesThread() const { return false; }
};

/// Writes a file that only its owner may read, atomically. Throws RunTimeError kPathFileAccess.
using PrivateFileWriter = std::function<void(const std::string& path, const std::string& text)>;

/// The path of `file`, which begins with "\", in the program's folder. On Windows this gives two separators, which is
/// harmless.
[[nodiscard]] std::string PicturePath(const PictureFolder& folder, std::string_view file);
/// The command line that converts the bitmap, deliberately without a blank before "/resample" and a size after it.
[[nodiscard]] std::string ConverterCommand(const PictureFolder& folder, std::string_view file);
/// The command line that runs the user's own transfer script.
[[nodiscard]] std::string TransferCommand(const PictureFolder& folder);
/// A script for the transfer program. User, password and host are written unescaped, without a scheme, which the line
/// already has. Throws RunTimeError kInvalidCall for a control character in one of them, which would start another
/// line.
[[nodiscard]] std::string TransferScript(const PictureFolder& folder, const Settings& settings);
/// The upload for the built-in FTP. Throws RunTimeError kInvalidCall, or kOverflow for the port, when the server, the
/// user or the password is unusable.
[[nodiscard]] FtpUpload BuiltInUpload(const PictureFolder& folder, const Settings& settings);

/// Publishes a picture of the main panel.
class WebcamUpload : public ScheduledUpload {
 public:
  struct Parts {
    const Settings& settings;
    PictureFolder folder;
    CommandStarter& commands;
    FtpSender& ftp;
    PrivateFileWriter write_private;
    SubmitBoxes& boxes;
    EventList& events;
    bool other_programs;  ///< whether the two external programs can run on this system
  };

  explicit WebcamUpload(const Parts& parts) : parts_(parts), report_("webcam upload", parts.boxes, parts.events) {}
  WebcamUpload(const WebcamUpload&) = delete;
  WebcamUpload& operator=(const WebcamUpload&) = delete;
  ~WebcamUpload() override { parts_.ftp.Abandon(); }

  /// The panel's picture; null when headless.
  void SetPicture(PanelPicture* picture) { picture_ = picture; }

  /// Captures the panel into `file` and has it converted and sent. Returns at once, always true. The result of the
  /// external programs is unknown; that of the built-in FTP, and why nothing can be sent, is reported in the error box.
  bool SaveScreen1(std::string_view file);
  /// The user asked for a picture, and may allow it for this time alone: its failure is reported even if it is the same
  /// as the last.
  void Capture(Permission permission = Permission::kBySetting);

  /// Rewrites the script file; a failure is reported in the error box.
  void WriteScript();

  [[nodiscard]] std::int32_t IntervalRow() const override { return parts_.settings.g_lWEBUpdate_interval_index; }
  [[nodiscard]] UploadTurn Start() override {
    SaveScreen1(kScreenshotFile);
    return UploadTurn::kTaken;
  }
  [[nodiscard]] const UploadReport::Counts& counts() const { return report_.counts(); }

 private:
  void CaptureAndSend(std::string_view file);
  void SendBuiltIn();

  Parts parts_;
  UploadReport report_;
  PanelPicture* picture_ = nullptr;
  bool sending_ = false;
};

}  // namespace orvalis
