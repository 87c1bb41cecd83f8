#include "publish/webcam_upload.h"

#include <array>
#include <exception>

#include "base/message.h"
#include "base/run_time_error.h"
#include "publish/http_request.h"
#include "publish/secret_mask.h"
#include "publish/submit_fields.h"
#include "publish/url_helper.h"

namespace orvalis {
namespace {

// The external programs are Windows programs at fixed paths, whatever system this one runs on.
constexpr std::string_view kConverter = R"(C:\Program Files\IrfanView\i_view32.exe )";
constexpr std::string_view kTransfer = R"(C:\Program Files\WinSCP\winscp.exe  /console /script=)";
constexpr std::string_view kPicture = "image.jpg";
constexpr std::string_view kScript = "winscp.txt";
/// The script that the transfer program runs: not the one written here but one that the user provides.
constexpr std::string_view kUsersScript = "\\winscp_xfer.txt";

std::string InFolder(const PictureFolder& folder, std::string_view name) {
  return folder.path + folder.separator + std::string(name);
}

/// Runs `step` and ignores its failure.
template <typename Step>
void Try(Step step) {
  try {
    step();
  } catch (const std::exception&) {
    // Not reported: without the external programs every picture would fail.
  }
}

void RefuseControlCharacters(const Settings& settings) {
  for (const std::string* text : {&settings.g_sWEBcam_name, &settings.g_sPWS_password, &settings.g_sWEBcam_site}) {
    if (!HasControlCharacter(*text)) continue;
    throw RunTimeError(
        RunTimeError::kInvalidCall,
        Message::Of("there is a control character in the webcam's name, the password or the webcam server"));
  }
}

}  // namespace

std::string PicturePath(const PictureFolder& folder, std::string_view file) {
  if (folder.separator == '\\') return InFolder(folder, file);
  return InFolder(folder, file.substr(file.find_first_not_of('\\')));
}

std::string ConverterCommand(const PictureFolder& folder, std::string_view file) {
  std::string command(kConverter);
  command.append(folder.path).append("\\").append(file);
  command.append("/resample /convert=").append(folder.path).append("\\").append(kPicture);
  return command;
}

std::string TransferCommand(const PictureFolder& folder) {
  std::string command(kTransfer);
  return command.append("\"").append(folder.path).append(kUsersScript).append("\"");
}

std::string TransferScript(const PictureFolder& folder, const Settings& settings) {
  RefuseControlCharacters(settings);
  constexpr std::string_view kScheme = "ftp://";
  std::string_view site = settings.g_sWEBcam_site;
  if (site.starts_with(kScheme)) site.remove_prefix(kScheme.size());
  std::string script;
  const auto line = [&](const std::string& text) { script.append(text).append(folder.line_end); };
  line("option batch on");
  line("option confirm off");
  line("option reconnecttime off");
  line("open " + std::string(kScheme) + settings.g_sWEBcam_name + ":" + settings.g_sPWS_password + "@" +
       std::string(site));
  line("option transfer binary");
  line("put \"" + InFolder(folder, kPicture) + "\"");
  line("exit");
  return script;
}

FtpUpload BuiltInUpload(const PictureFolder& folder, const Settings& settings) {
  RefuseControlCharacters(settings);
  const auto refuse = [](Phrase why) { throw RunTimeError(RunTimeError::kInvalidCall, why); };
  if (IsPrompt("g_sWEBcam_name", settings.g_sWEBcam_name) || IsPrompt("g_sPWS_password", settings.g_sPWS_password))
    refuse(Message::Of("the webcam name or the password is still the placeholder; enter your own"));
  std::string server = settings.g_sWEBcam_site;
  const std::size_t host_begin = server.find("://") == std::string::npos ? 0 : server.find("://") + 3;
  // Without a trailing "/" a port would be taken as part of the host.
  if (server.find('/', host_begin) == std::string::npos) server += '/';
  const UrlRecord url = SplitUrl(server);
  if (!url.scheme.empty() && url.scheme != "ftp") refuse(Message::Of("the webcam server is not an FTP address"));
  if (url.host.empty()) refuse(Message::Of("the webcam server is missing"));
  if (url.host.find_first_of(" @?#[]\\") != std::string::npos) {
    refuse(Message::Of(
        "the webcam server contains an invalid character; enter the name and the password in their own fields"));
  }
  const bool names_port = server[host_begin + url.host.size()] == ':';
  if (names_port && url.port <= 0) refuse(Message::Of("the port of the webcam server is not a valid port number"));
  FtpUpload upload{.host = url.host, .folder = url.path, .name = std::string(kPicture)};
  if (names_port) upload.port = static_cast<std::uint16_t>(url.port);
  if (upload.folder.back() != '/') upload.folder += '/';
  upload.user = settings.g_sWEBcam_name;
  upload.password = settings.g_sPWS_password;
  upload.path = InFolder(folder, kPicture);
  return upload;
}

bool WebcamUpload::SaveScreen1(std::string_view file) {
  if (parts_.settings.g_bAllow_WEB == 1) CaptureAndSend(file);
  return true;
}

void WebcamUpload::CaptureAndSend(std::string_view file) {
  if (picture_ == nullptr) {
    // The file may contain an old picture.
    report_.Refused("there is no panel to capture");
    return;
  }
  Try([&] { picture_->Capture(); });
  Try([&] { picture_->SaveBitmap(PicturePath(parts_.folder, file)); });
  if (parts_.settings.WebcamBuiltIn == 1) {
    SendBuiltIn();
    return;
  }
  if (!parts_.other_programs) {
    report_.Refused("the programs that send it run only on Windows; tick \"Use built-in FTP\"");
    return;
  }
  Try([&] { parts_.commands.Start(ConverterCommand(parts_.folder, file)); });
  Try([&] { parts_.commands.Start(TransferCommand(parts_.folder)); });
}

void WebcamUpload::Capture(Permission permission) {
  report_.Repeat();
  if (permission == Permission::kOnce) {
    CaptureAndSend(kScreenshotFile);
  } else {
    SaveScreen1(kScreenshotFile);
  }
}

void WebcamUpload::SendBuiltIn() {
  if (sending_) {
    report_.Failed("the previous picture is still being sent; this one was skipped");
    return;
  }
  try {
    const FtpUpload upload = BuiltInUpload(parts_.folder, parts_.settings);
    picture_->SaveJpeg(upload.path);
    parts_.ftp.Send(upload, [this, password = upload.password](const std::string& failure) {
      sending_ = false;
      if (!failure.empty()) {
        // The password setting may have changed meanwhile.
        const std::array<std::string_view, 1> sent{password};
        report_.Failed("the picture was not sent: " + MaskSecrets(failure, sent));
        return;
      }
      parts_.boxes.AddError("the picture was sent");
      report_.Succeeded();
    });
    sending_ = true;  // only now: after a failure the next picture is tried
  } catch (const RunTimeError& error) {
    report_.Refused(error.what());
  }
}

void WebcamUpload::WriteScript() {
  try {
    parts_.write_private(InFolder(parts_.folder, kScript), TransferScript(parts_.folder, parts_.settings));
  } catch (const RunTimeError& error) {
    parts_.boxes.AddError(error.what());
  }
}

}  // namespace orvalis
