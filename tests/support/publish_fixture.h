#pragma once

#include <gtest/gtest.h>

#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "base/run_time_error.h"
#include "publish/web_publisher.h"
#include "tests/support/link_fixture.h"

namespace orvalis::test {

/// A web server that says what the test wants, by its handlers.
class FakeSocket : public HttpSocket {
 public:
  void Begin(const std::string& to, std::uint16_t at, std::string bytes, Handlers given) override {
    ASSERT_FALSE(open) << "two exchanges at once";
    host = to;
    port = at;
    requests.push_back(std::move(bytes));
    handlers = std::move(given);
    open = true;
  }
  void Close() override { open = false; }

  std::string host;
  std::uint16_t port = 0;
  std::vector<std::string> requests;
  Handlers handlers;
  bool open = false;
};

/// The panel's picture, the other programs, the FTP server and the script's file: all write down what is asked of them.
class FakeOutside : public PanelPicture, public CommandStarter, public FtpSender, public MessageBoxes {
 public:
  void Capture() override { Note("capture"); }
  void SaveBitmap(const std::string& path) override { Note("bitmap " + path); }
  void SaveJpeg(const std::string& path) override { Note("jpeg " + path); }
  void Start(const std::string& line) override { Note("start " + line.substr(0, line.find(".exe"))); }
  void Send(const FtpUpload& upload, Done done) override {
    Note("ftp " + upload.host + upload.folder + upload.name);
    if (no_thread) throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
    ftp_done = std::move(done);
  }
  void Abandon() override {}
  void ShowMessage(std::string_view text, std::string_view title) override {
    calls.push_back(std::string(title) + ": " + std::string(text));
  }
  void Note(std::string call) {
    calls.push_back(std::move(call));
    if (fails) throw RunTimeError(RunTimeError::kPathFileAccess, "no");
  }

  bool fails = false;
  bool no_thread = false;
  std::vector<std::string> calls;
  Done ftp_done;
};

/// The publisher between the real acquisition and faked servers.
class PublishFixture : public LinkFixture {
 public:
  PublishFixture() {
    settings.g_bAllow_PWS = 1;
    settings.g_sPWS_name = "KTEST1";
    settings.g_sPWS_password = "s3cr3t/x";
    settings.g_sPWS_site = "http://service.example:8080/update";
    settings.g_sWEBcam_name = "cam";
    settings.g_sWEBcam_site = "ftp.example";
  }

  FakeSocket socket;
  FakeOutside outside;
  std::string script;
  WebPublisher publisher{
      {.store = store,
       .settings = settings,
       .weather = weather,
       .panel = panel,
       .loop = loop,
       .clock = clock,
       .events = events,
       .boundary = boundary,
       .socket = socket,
       .ftp = outside,
       .commands = outside,
       .write_private = [this](const std::string& path, const std::string& text) { script = path + "\n" + text; },
       .folder = {.path = "/opt/orvalis"},
       .other_programs = true,
       .to_code_page = [](std::string_view utf8) { return std::string(utf8); }}};
};

}  // namespace orvalis::test
