#include "publish/webcam_upload.h"

#include <array>
#include <exception>

#include "base/run_time_error.h"
#include "publish/http_request.h"
#include "publish/secret_mask.h"
#include "publish/submit_fields.h"
#include "publish/url_helper.h"

namespace orvalis {
namespace {

// The other programs are Windows programs, wherever this one runs, and their places are fixed.
constexpr std::string_view kConverter = R"(C:\Program Files\IrfanView\i_view32.exe )";
constexpr std::string_view kTransfer = R"(C:\Program Files\WinSCP\winscp.exe  /console /script=)";
constexpr std::string_view kPicture = "image.jpg";
constexpr std::string_view kScript = "winscp.txt";
/// What the transfer program is told to run: not the script that is written here but one that the user has placed.
constexpr std::string_view kUsersScript = "\\winscp_xfer.txt";

std::string InFolder(const PictureFolder& folder, std::string_view name) {
  return folder.path + folder.separator + std::string(name);
}

/// Goes on whatever becomes of `step`.
template <typename Step>
void Try(Step step) {
  try {
    step();
  } catch (const std::exception&) {
    // A picture that is not published is not worth a word: without the other programs, each would bring one.
  }
}

void RefuseControlCharacters(const Settings& settings) {
  for (const std::string* text : {&settings.g_sWEBcam_name, &settings.g_sPWS_password, &settings.g_sWEBcam_site}) {
    if (!HasControlCharacter(*text)) continue;
    throw RunTimeError(RunTimeError::kInvalidCall,
                       "there is a control character in the webcam's name, the password or the webcam server");
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

FtpUpload OwnUpload(const PictureFolder& folder, const Settings& settings) {
  RefuseControlCharacters(settings);
  const auto refuse = [](const char* why) { throw RunTimeError(RunTimeError::kInvalidCall, why); };
  if (IsPrompt("g_sWEBcam_name", settings.g_sWEBcam_name) || IsPrompt("g_sPWS_password", settings.g_sPWS_password))
    refuse("the webcam's name or the password is the text that asks for it; enter yours");
  std::string server = settings.g_sWEBcam_site;
  const std::size_t host_begin = server.find("://") == std::string::npos ? 0 : server.find("://") + 3;
  // Without a "/" at its end a port would be taken for a part of the host.
  if (server.find('/', host_begin) == std::string::npos) server += '/';
  const UrlRecord url = SplitUrl(server);
  if (!url.scheme.empty() && url.scheme != "ftp")
    refuse("the webcam server is no FTP server: it begins with another scheme");
  if (url.host.empty()) refuse("the webcam server is missing");
  if (url.host.find_first_of(" @?#[]\\") != std::string::npos) {
    refuse("the webcam server has a character that no host has; the name and the password have fields of their own");
  }
  const bool names_port = server[host_begin + url.host.size()] == ':';
  if (names_port && url.port <= 0) refuse("the port of the webcam server is no port number");
  FtpUpload upload{.host = url.host, .folder = url.path, .name = std::string(kPicture)};
  if (names_port) upload.port = static_cast<std::uint16_t>(url.port);
  if (upload.folder.back() != '/') upload.folder += '/';
  upload.user = settings.g_sWEBcam_name;
  upload.password = settings.g_sPWS_password;
  upload.path = InFolder(folder, kPicture);
  return upload;
}

bool WebcamUpload::SaveScreen1(std::string_view file) {
  if (parts_.settings.g_bAllow_WEB != 1) return true;
  if (picture_ == nullptr) {
    // The file may hold a picture of some other day.
    report_.Refused("there is no panel to take a picture of");
    return true;
  }
  Try([&] { picture_->Capture(); });
  Try([&] { picture_->SaveBitmap(PicturePath(parts_.folder, file)); });
  if (parts_.settings.WebcamBuiltIn == 1) {
    SendItself();
    return true;
  }
  if (!parts_.other_programs) {
    report_.Refused("the programs that would do it are made for Windows; tick \"Use built-in FTP\"");
    return true;
  }
  Try([&] { parts_.commands.Start(ConverterCommand(parts_.folder, file)); });
  Try([&] { parts_.commands.Start(TransferCommand(parts_.folder)); });
  return true;
}

void WebcamUpload::Capture() {
  report_.Forget();
  SaveScreen1(kScreenshotFile);
}

void WebcamUpload::SendItself() {
  if (sending_) {
    report_.Failed("the former picture is still on its way, so this one is left out");
    return;
  }
  try {
    const FtpUpload upload = OwnUpload(parts_.folder, parts_.settings);
    picture_->SaveJpeg(upload.path);
    parts_.ftp.Send(upload, [this, password = upload.password](const std::string& failure) {
      sending_ = false;
      if (!failure.empty()) {
        // The setting may be another password by now.
        const std::array<std::string_view, 1> sent{password};
        report_.Failed("the picture was not sent: " + MaskSecrets(failure, sent));
        return;
      }
      parts_.boxes.AddError("the picture was sent");
      report_.Succeeded();
    });
    sending_ = true;  // not before: whatever keeps it from being sent, the next picture has its turn
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
