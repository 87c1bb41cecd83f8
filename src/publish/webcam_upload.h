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

/// The program's own folder, and how its system writes paths and the lines of a file.
struct PictureFolder {
  std::string path;            ///< without a trailing separator
  char separator = '/';        ///< '\\' on Windows
  std::string line_end{"\n"};  ///< "\r\n" on Windows
};

/// The name that the picture is asked for by, with its separator.
inline constexpr std::string_view kScreenshotFile = "\\screenshot.bmp";

/// The picture of the main panel, in the web publishing window's picture box.
class PanelPicture {
 public:
  virtual ~PanelPicture() = default;
  /// Takes it, whether the panel is seen or not, and shows it.
  virtual void Capture() = 0;
  /// Writes it as a bitmap of 24 bits a point. Throws RunTimeError kPathFileAccess.
  virtual void SaveBitmap(const std::string& path) = 0;
  /// Writes it as JPEG; a reader finds the whole file, old or new. Throws RunTimeError kPathFileAccess.
  virtual void SaveJpeg(const std::string& path) = 0;
};

/// Starts other programs by a command line.
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
  std::string folder{};  ///< from where the user arrives, "/" at both ends
  std::string name{};    ///< of the file at the server
  std::string user{};
  std::string password{};
  std::string path{};  ///< of the file here
};

/// Sends files by FTP in the background.
class FtpSender {
 public:
  /// A transfer that takes longer is given up.
  static constexpr std::chrono::seconds kLongestTransfer{60};
  /// Told why it failed, or "".
  using Done = std::function<void(const std::string& failure)>;

  virtual ~FtpSender() = default;
  /// Returns at once; `done` is called later, from the event loop. Not while another one is under way.
  virtual void Send(const FtpUpload& upload, Done done) = 0;
  /// Ends the transfer under way, without a call of its `done`. Does not wait for it.
  virtual void Abandon() = 0;
  /// Whether a thread waits for a server that only the end of the process would stop.
  [[nodiscard]] virtual bool LeavesThread() const { return false; }
};

/// Writes a file that its owner alone may read, in one step. Throws RunTimeError kPathFileAccess.
using PrivateFileWriter = std::function<void(const std::string& path, const std::string& text)>;

/// The path of `file`, which begins with "\", in the program's folder. On Windows there are two separators then, which
/// does no harm.
[[nodiscard]] std::string PicturePath(const PictureFolder& folder, std::string_view file);
/// The command line that converts the bitmap. There is no blank before "/resample", and no size behind it.
[[nodiscard]] std::string ConverterCommand(const PictureFolder& folder, std::string_view file);
/// The command line that transfers what the user's own script says.
[[nodiscard]] std::string TransferCommand(const PictureFolder& folder);
/// A script for the transfer program. User, password and host go in as they stand, but for a scheme, which the line
/// has already. Throws RunTimeError kInvalidCall
/// for a control character in one of them, which would begin another line.
[[nodiscard]] std::string TransferScript(const PictureFolder& folder, const Settings& settings);
/// Where the picture goes when the program sends it itself. Throws RunTimeError kInvalidCall, or kOverflow for the
/// port, when the server, the user or the password cannot be used.
[[nodiscard]] FtpUpload OwnUpload(const PictureFolder& folder, const Settings& settings);

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
    bool other_programs;  ///< whether the two programs can run on this system at all
  };

  explicit WebcamUpload(const Parts& parts) : parts_(parts), report_("webcam upload", parts.boxes, parts.events) {}
  WebcamUpload(const WebcamUpload&) = delete;
  WebcamUpload& operator=(const WebcamUpload&) = delete;
  ~WebcamUpload() override { parts_.ftp.Abandon(); }

  /// The panel's picture; none when headless.
  void SetPicture(PanelPicture* picture) { picture_ = picture; }

  /// Captures the panel into `file`, and has it converted and sent. Returns at once, and true in any case. What the
  /// other programs make of it is not seen; what the program's own way makes of it is a line in the error box, and so
  /// is why nothing can be sent.
  bool SaveScreen1(std::string_view file);
  /// The user asks for it: what was said before is said again.
  void Capture();

  /// Writes the script file anew; a failure is a line in the error box.
  void WriteScript();

  [[nodiscard]] std::int32_t IntervalRow() const override { return parts_.settings.g_lWEBUpdate_interval_index; }
  [[nodiscard]] UploadTurn Start() override {
    SaveScreen1(kScreenshotFile);
    return UploadTurn::kTaken;
  }

 private:
  void SendItself();

  Parts parts_;
  UploadReport report_;
  PanelPicture* picture_ = nullptr;
  bool sending_ = false;
};

}  // namespace orvalis
