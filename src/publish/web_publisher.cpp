#include "publish/web_publisher.h"

#include "base/run_time_error.h"
#include "publish/http_request.h"
#include "publish/url_helper.h"

namespace orvalis {
namespace {

WebPublisher::Target None(const Message& why) { return {Message::Of("Cannot be sent: %1.").With(why), false}; }

WebPublisher::Target To(const std::string& account, const std::string& server, std::uint16_t port) {
  return {Message::Of("Sent as %1 to %2, port %3.").With(account, server, port), true};
}

}  // namespace

WebPublisher::WebPublisher(const Parts& parts)
    : parts_(parts),
      boxes_(parts.settings, parts.clock),
      readings_({.socket = parts.socket,
                 .loop = parts.loop,
                 .clock = parts.clock,
                 .settings = parts.settings,
                 .weather = parts.weather,
                 .panel = parts.panel,
                 .boxes = boxes_,
                 .events = parts.events,
                 .to_code_page = parts.to_code_page}),
      webcam_({.settings = parts.settings,
               .folder = parts.folder,
               .commands = parts.commands,
               .ftp = parts.ftp,
               .write_private = parts.write_private,
               .boxes = boxes_,
               .events = parts.events,
               .other_programs = parts.other_programs}),
      readings_schedule_(readings_, parts.store,
                         {.doing = Message::Of("publishing the readings"),
                          .storing = Message::Of("storing the readings interval"),
                          .index_key = "g_lPWSUpdate_interval_index",
                          .interval_key = "g_lPWSUpdate_interval"},
                         [this] { return BeingEdited(); }),
      webcam_schedule_(webcam_, parts.store,
                       {.doing = Message::Of("publishing the picture"),
                        .storing = Message::Of("storing the picture interval"),
                        .index_key = "g_lWEBUpdate_interval_index",
                        .interval_key = "g_lWEBUpdate_interval"},
                       [this] { return BeingEdited(); }) {}

void WebPublisher::Load() {
  readings_schedule_.Load();
  webcam_schedule_.Load();
}

template <typename Write>
void WebPublisher::Keep(Write write) {
  constexpr auto kStoring = Message::Of("storing the web publishing settings");
  parts_.boundary.Run(kStoring, [&] {
    write();
    parts_.boundary.Succeeded(kStoring);
  });
}

void WebPublisher::SetText(const SubmitText& box, const std::string& text) {
  edited_until_ = parts_.loop.TickCount() + std::chrono::milliseconds(kEditTimeout).count();
  parts_.settings.*box.member = text;
  Keep([&] { parts_.store.Write(box.key, parts_.settings); });
  if (box.in_script) webcam_.WriteScript();
  readings_.Edited();
}

void WebPublisher::SetSwitch(const SubmitSwitch& box, bool on) {
  parts_.settings.*box.member = on ? 1 : 0;
  Keep([&] { parts_.store.Write(box.key, parts_.settings); });
  readings_.Edited();
}

void WebPublisher::SetInterval(const SubmitInterval& list, std::int32_t row) {
  parts_.settings.*list.row = row;
  Keep([&] {
    Profile::Batch batch(parts_.store.profile());
    parts_.store.WriteText(list.index_key, std::to_string(row));
    parts_.store.WriteText(list.interval_key, UploadIntervalText(row));
    batch.Commit();
  });
}

void WebPublisher::TestServer(Permission permission) {
  parts_.boundary.Run(Message::Of("testing the server"), [&] { readings_.Send(Trigger::kUser, permission); });
}

void WebPublisher::Capture(Permission permission) {
  parts_.boundary.Run(Message::Of("capturing the panel"), [&] { webcam_.Capture(permission); });
}

WebPublisher::Target WebPublisher::ReadingsTarget() const try {
  const Settings& settings = parts_.settings;
  if (IsPrompt("g_sPWS_name", settings.g_sPWS_name) || IsPrompt("g_sPWS_password", settings.g_sPWS_password)) {
    return None(Message::Of("the station ID or the password is still the placeholder"));
  }
  const UrlRecord url = SplitUrl(settings.g_sPWS_site);
  if (const UrlComplaint complaint = Complaint(url); !complaint.text.empty()) return None(std::string(complaint.text));
  CheckUrl(settings.g_sPWS_site, url);
  return To(settings.g_sPWS_name, url.host, PortOf(url));
} catch (const RunTimeError& error) {
  return None(error.message());
}

WebPublisher::Target WebPublisher::PictureTarget() const try {
  if (parts_.settings.WebcamBuiltIn != 1) {
    if (!parts_.other_programs) return None(Message::Of("tick \"Use built-in FTP\""));
    return {Message::Of("Sent by the script winscp_xfer.txt, with the account and the server in it."), true};
  }
  const FtpUpload upload = BuiltInUpload(parts_.folder, parts_.settings);
  return To(upload.user, upload.host + upload.folder + upload.name, upload.port);
} catch (const RunTimeError& error) {
  return None(error.message());
}

}  // namespace orvalis
