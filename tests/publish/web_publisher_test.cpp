#include "publish/web_publisher.h"

#include "tests/support/publish_fixture.h"

namespace orvalis::test {
namespace {

using std::chrono::seconds;

class WebPublisherTest : public PublishFixture {
 public:
  WebPublisherTest() {
    publisher.readings().SetMessageBoxes(&outside);
    publisher.webcam().SetPicture(&outside);
    publisher.Load();
  }

  /// With the publisher's schedules.
  void Tick(int count) override {
    for (; count > 0; --count, loop.Advance(seconds(1))) publishing_poll.Poll();
  }
  /// The number of uploads begun in so many ticks.
  [[nodiscard]] std::size_t Sent(int ticks) {
    const std::size_t before = socket.requests.size();
    Tick(ticks);
    return socket.requests.size() - before;
  }
  /// What came into the error box since it was read last.
  [[nodiscard]] std::string NewErrors() {
    const std::string all(publisher.boxes().Errors());
    return all.substr(std::exchange(errors_read, all.size()));
  }
  static std::string ErrorLine(const std::string& text) { return "2026-11-21 09:04:05 PM " + text + "\r\n"; }

  /// What happens, and the line that it leaves in the error box.
  using Mishaps = std::vector<std::pair<std::function<void(WebPublisherTest&)>, std::string>>;

  [[nodiscard]] PollCycle::Parts PublishingParts() {
    PollCycle::Parts parts = PollParts();
    parts.uploads = {&publisher.webcam_schedule(), &publisher.readings_schedule()};
    return parts;
  }
  std::size_t errors_read = 0;
  PollCycle publishing_poll{PublishingParts()};
};

TEST_F(WebPublisherTest, SaysWhyNoPictureIsSentWhereTheProgramsCannotRun) {
  settings.g_bAllow_WEB = 1;
  SubmitBoxes boxes(settings, clock);
  WebcamUpload upload({.settings = settings,
                       .folder = {.path = "/opt/orvalis"},
                       .commands = outside,
                       .ftp = outside,
                       .write_private = {},
                       .boxes = boxes,
                       .events = events,
                       .other_programs = false});
  upload.SetPicture(&outside);
  upload.Capture();
  (void)upload.Start();
  EXPECT_EQ(outside.calls, (Strings{"capture", "bitmap /opt/orvalis/screenshot.bmp", "capture",
                                    "bitmap /opt/orvalis/screenshot.bmp"}));
  EXPECT_EQ(events.events().size(), 1u) << "said once on schedule";
  EXPECT_NE(boxes.Errors().find("tick \"Use built-in FTP\""), std::string::npos);
}

TEST_F(WebPublisherTest, TheReadingsGoOutEverySixSecondsAtAnIntervalOfFive) {
  Connect(5);
  EXPECT_TRUE(socket.requests.empty());
  ASSERT_EQ(Sent(1), 1u);
  EXPECT_EQ(socket.host + ":" + std::to_string(socket.port), "service.example:8080");
  EXPECT_TRUE(
      socket.requests[0].starts_with("GET /update?ID=KTEST1&PASSWORD=s3cr3t/x&dateutc=2026%2D11%2D21%2B21%3A04"));
  const std::string shown = publisher.boxes().request();
  EXPECT_NE(shown.find("PASSWORD=********&"), std::string::npos);
  // The server sends the password back, in two pieces and in other writings; its line ends are mixed. Meanwhile the
  // user enters another one.
  socket.handlers.connected();
  socket.handlers.received("HTTP/1.0 200 OK\n\rs3c");
  settings.g_sPWS_password = "s3";
  socket.handlers.received("r3t/x s3cr3t%2fx\r");
  socket.handlers.received("\nend");
  socket.handlers.closed();
  EXPECT_EQ(publisher.boxes().Response(), "HTTP/1.0 200 OK\r\n\r\n******** ********\r\nend");
  EXPECT_EQ(NewErrors(), "");
  EXPECT_EQ(Sent(60), 10u);
  // What was answered stays when nothing more comes, and what comes is added; the first password is still hidden.
  socket.handlers.failed("Connection refused");
  EXPECT_TRUE(NewErrors().ends_with(ErrorLine("Connection refused")));
  EXPECT_EQ(Sent(6), 1u);
  socket.handlers.received("HTTP/1.0 204");
  EXPECT_EQ(publisher.boxes().Response(), "HTTP/1.0 200 OK\r\n\r\n******** ********\r\nend\r\n\r\nHTTP/1.0 204");
}

TEST_F(WebPublisherTest, NothingGoesOutWhileSwitchedOffOrDisconnected) {
  settings.g_bAllow_PWS = 0;
  Connect(40);
  settings.g_bAllow_PWS = 1;
  EXPECT_EQ(Sent(2), 1u);
  connector.Disconnect();
  EXPECT_EQ(Sent(70'000), 0u);
  Connect(4);
  EXPECT_EQ(socket.requests.size(), 2u) << "due as soon as there is a frame";
}

// "SAFE soon" must not go out in the cycle that found UNSAFE, nor an old reason in the one that ended a silence.
TEST_F(WebPublisherTest, ThePictureIsOfThePanelAsThisCycleLeftIt) {
  PollCycle::Parts drawing = PublishingParts();
  drawing.draw = [this] { outside.Note("drawn " + BannerOf(observer.Now(), clock, {}).word); };
  settings.SafeHoldSeconds = 0;
  PollCycle cycle(drawing);
  settings.g_bAllow_WEB = 1;
  publisher.SetInterval(kSubmitIntervals[1], 0);
  Connect();
  for (int i = 0; i < 6; ++i) {
    cycle.Poll();
    loop.Advance(seconds(1));
    if (i == 2) port.frame = LiveFrame("RB=1");
  }
  outside.calls.resize(4);
  EXPECT_EQ(outside.calls, (Strings{"drawn SAFE soon", "drawn UNSAFE", "drawn UNSAFE", "capture"}));
}

TEST_F(WebPublisherTest, WhatIsDueWaitsForAReadingAndForTheEndOfAnEdit) {
  Connect(6);
  Measure("TA=+19999", 20);
  ASSERT_EQ(Sent(6), 0u);
  port.frame = LiveFrame("");
  EXPECT_EQ(Sent(2), 1u) << "not an interval later";

  settings.g_lWEBUpdate_interval_index = 0;
  settings.g_bAllow_WEB = 1;
  publisher.SetText(kSubmitTexts[3], "http://half");
  EXPECT_EQ(Sent(12), 0u);
  EXPECT_TRUE(outside.calls.empty());
  publisher.SetText(kSubmitTexts[3], "http://whole.example/");
  publisher.EndEdit();
  EXPECT_EQ(Sent(2), 1u);
  EXPECT_EQ(socket.host, "whole.example");
  EXPECT_FALSE(outside.calls.empty());
  publisher.SetText(kSubmitTexts[3], "http://left.example/");
  EXPECT_EQ(Sent(28), 0u);
  EXPECT_EQ(Sent(4), 1u) << "somebody went away in the middle of it";
}

TEST_F(WebPublisherTest, AnotherIntervalIsKeptByTheWindowAndByTheCycle) {
  Connect(2);
  (void)profile.TakeLog();
  publisher.SetInterval(kSubmitIntervals[0], 2);
  publisher.SetInterval(kSubmitIntervals[1], 0);
  EXPECT_EQ(profile.TakeLog().size(), 4u);
  Silence(1);  // also while no frame comes
  port.silent = false;
  Tick(1);
  EXPECT_EQ(profile.TakeLog().size(), 4u);
  EXPECT_EQ(profile.At("g_lPWSUpdate_interval_index") + " " + profile.At("g_lPWSUpdate_interval"), "2 15");
  EXPECT_EQ(Sent(11), 0u);
  EXPECT_EQ(Sent(1), 1u) << "fifteen seconds, on a working tick";
  EXPECT_TRUE(profile.log.empty());

  // A store that fails keeps nothing from being sent, and is written as soon as it can be.
  profile.fails = true;
  publisher.SetInterval(kSubmitIntervals[0], 0);
  EXPECT_EQ(Sent(8), 1u);
  profile.fails = false;
  Tick(2);
  EXPECT_EQ(profile.At("g_lPWSUpdate_interval"), "5");
}

TEST_F(WebPublisherTest, WhatAServerDoesWrongIsOneLineAndTheNextUploadIsOnItsTick) {
  const auto receive = [](const char* bytes) {
    return [bytes](WebPublisherTest& t) { t.socket.handlers.received(bytes), t.socket.handlers.closed(); };
  };
  const auto a_byte_a_second = [](WebPublisherTest& t) {
    t.socket.handlers.connected();
    for (int i = 0; i < 61 && t.socket.open; ++i) {
      t.socket.handlers.received("H");
      t.loop.Advance(seconds(1));
    }
  };
  const Mishaps cases{
      {[](auto& t) { t.socket.handlers.failed("Connection refused"); }, "Connection refused"},
      {[](auto& t) { t.loop.Advance(seconds(31)); }, "no answer within 30 seconds"},
      {a_byte_a_second, "the response took longer than 60 seconds"},
      {[](auto& t) { t.socket.handlers.closed(); }, "the server closed the connection without answering"},
      {receive("HTTP/1.1 302 Found s3cr3t/x\r\nLocation: http://elsewhere/"),
       "the server redirects (status 302), and redirects are not followed"},
      {receive("HTTP/1.1 401 No, s3cr3t\xe9x\r\n\r\n"), "the server refused (status 401)"},
      {receive("HTTP/1.1 2000 OK\r\n\r\n"), "the response is not from a web server"},
      {[](auto& t) { t.publisher.TestServer(); }, "previous upload aborted: the next one is due"},
  };
  Connect(4);
  for (const auto& [happens, line] : cases) {
    socket.Close();
    publisher.TestServer();
    happens(*this);
    EXPECT_EQ(NewErrors(), ErrorLine(line));
    EXPECT_EQ(LastEvent(), "readings upload: " + line);
    EXPECT_EQ(socket.open, line.starts_with("previous upload")) << line;
  }
  // The same failure at every interval fills no event list; that it works again is news.
  Tick(6);  // the readings are fresh again
  socket.handlers.failed("gone");
  const Strings listed = EventTexts();
  Tick(6);
  socket.handlers.failed("gone");
  EXPECT_EQ(EventTexts(), listed);
  Tick(6);
  socket.handlers.received("HTTP/1.0 204 No Content\r\n\r\n");
  loop.Advance(seconds(31));  // left open by a server that has answered
  EXPECT_EQ(LastEvent(), "readings upload: works again");
  EXPECT_FALSE(socket.open);

  // Each way in which an exchange ends before the server does: what has answered has done its work.
  const std::function<void(WebPublisherTest&)> endings[] = {
      [](auto& t) { t.Tick(6); }, [](auto& t) { t.socket.handlers.failed("reset by peer"); }, a_byte_a_second};
  (void)NewErrors();
  for (const auto& end : endings) {
    if (!socket.open) publisher.TestServer();
    socket.handlers.received("HTTP/1.0 200 OK\r\n\r\n");
    end(*this);
    EXPECT_EQ(NewErrors(), "");
  }
}

TEST_F(WebPublisherTest, ALongAnswerLeavesItsLast64KB) {
  Connect(4);
  publisher.TestServer();
  const std::string piece = "HTTP/1.0 200 OK\r\n" + std::string(16'384, 'x');
  for (std::size_t sent = 0; sent < 10'000'000; sent += piece.size()) socket.handlers.received(piece);
  const std::string end(64 * 1024 - 3, 'y');  // the cut goes through a password
  socket.handlers.received("s3cr3t/x" + end.substr(7) + "the end");
  socket.handlers.closed();
  const std::string response = publisher.boxes().Response();
  EXPECT_EQ(response.substr(0, 10), "********yy");
  EXPECT_EQ(response.size(), 64u * 1024 + 5) << "eight asterisks for the three bytes that are left";
  EXPECT_TRUE(response.ends_with("the end"));
  EXPECT_EQ(NewErrors(), ErrorLine("the response is longer than 64 KB; only its end is kept"));
  for (int i = 0; i < 5000; ++i) publisher.boxes().AddError("a long failing line that comes again and again");
  EXPECT_LE(publisher.boxes().Errors().size(), 64u * 1024);
}

TEST_F(WebPublisherTest, NothingIsSentThatIsNotKnownOrCannotBe) {
  const auto url = [](const char* text) { return [text](WebPublisherTest& t) { t.settings.g_sPWS_site = text; }; };
  const Mishaps cases{
      {url("http:///x"), "Invalid Host"},
      {url("https://h/x"), "Invalid protocol schema"},
      {url("http://h:abc/x"), "the port in the URL is not a valid port number"},
      {url("http://h:70000/x"), "the port in the URL is above 32767"},
      {[](auto& t) { t.settings.g_sPWS_password = "a\r\nX: y"; },
       "there is a control character in the URL, the station's ID or the password"},
      {[](auto& t) { t.settings.DemoMode = 1; }, "demo values are not uploaded; \"Test Server\" sends them anyway"},
      {[](auto& t) { t.settings.g_sPWS_name = "Your Wunderground Site ID"; },
       "the station ID or the password is still the placeholder; enter your own"},
      {[](auto& t) { t.port.frame = LiveFrame("TA=+19999"); }, "the ambient temperature is not known"},
  };
  Connect(2);
  for (const auto& [happens, why] : cases) {
    const Settings good = settings;
    happens(*this);
    Tick(12);  // until the ambient temperature counts as unknown
    if (socket.open) socket.handlers.closed();
    publisher.readings().Edited();
    (void)NewErrors();
    EXPECT_EQ(Sent(60), 0u) << why;
    EXPECT_EQ(NewErrors(), ErrorLine("not sent: " + why)) << "said once";
    settings = good;
    Measure("", 12);
  }
  EXPECT_TRUE(outside.calls.empty()) << "no message box that nobody asked for";

  for (const char* site : {"", "ftp://h/"}) {
    settings.g_sPWS_site = site;
    publisher.TestServer();
  }
  EXPECT_EQ(outside.calls, (Strings{"ERROR: Invalid Host", "Orvalis: Invalid protocol schema"}));

  settings.g_sPWS_site = "http://h/";
  settings.DemoMode = 1;
  Tick(4);
  const std::size_t requests = socket.requests.size();
  publisher.TestServer();
  EXPECT_EQ(socket.requests.size(), requests + 1) << "made-up values on demand";
  settings.DemoMode = 0;
  Silence(20);
  (void)NewErrors();
  publisher.TestServer();
  EXPECT_EQ(socket.requests.size(), requests + 1);
  EXPECT_EQ(NewErrors(), ErrorLine("not sent: no current reading"));
}

TEST_F(WebPublisherTest, SomebodyWithoutAnAccountSeesWhatWouldBeSent) {
  settings.g_bAllow_PWS = 0;
  Connect();
  publisher.readings().Preview();
  Tick(4);
  publisher.readings().composition() = {
      .method = "POST", .variables = {{"v", "1"}}, .headers = {{"X-H", "2 s3cr3t/x"}}};
  publisher.readings().Edited();
  const std::string request = publisher.boxes().request();
  for (const char* part :
       {"POST /update HTTP/1.0\r\n", "\r\nX-H: 2 ********\r\n", "ID=KTEST1&PASSWORD=********&", "=5.0&v=1"}) {
    EXPECT_NE(request.find(part), std::string::npos) << request;
  }
  publisher.TestServer();
  EXPECT_TRUE(socket.requests.empty()) << "switched off is switched off, for the button too";
}

TEST_F(WebPublisherTest, EditsReachTheSettingsTheStoreAndTheScript) {
  profile.log.clear();
  for (const SubmitText& box : kSubmitTexts) {
    script.clear();
    const std::string key(box.key);
    publisher.SetText(box, "new/" + key);
    EXPECT_TRUE(settings.*box.member == "new/" + key && profile.At(key) == "new/" + key) << key;
    EXPECT_EQ(!script.empty(), key != "g_sPWS_name" && key != "g_sPWS_site") << key;
  }
  EXPECT_EQ(script.substr(0, script.find('\n')), "/opt/orvalis/winscp.txt");
  EXPECT_NE(script.find("\nopen ftp://new/g_sWEBcam_name:new/g_sPWS_password@new/g_sWEBcam_site\n"), std::string::npos);
  for (const SubmitSwitch& box : kSubmitSwitches) {
    for (const bool on : {true, false}) {
      publisher.SetSwitch(box, on);
      EXPECT_EQ(std::to_string(settings.*box.member) + profile.At(std::string(box.key)), on ? "11" : "00");
    }
  }
  profile.fails = true;
  publisher.SetSwitch(kSubmitSwitches[0], true);
  EXPECT_EQ(settings.g_bAllow_PWS, 1);
  EXPECT_NE(panel.status.English().find("storing the web publishing settings"), std::string::npos)
      << panel.status.English();
}

TEST_F(WebPublisherTest, ThePictureIsTakenConvertedAndSentWhateverFails) {
  const Strings steps{"capture", "bitmap /opt/orvalis/screenshot.bmp", R"(start C:\Program Files\IrfanView\i_view32)",
                      R"(start C:\Program Files\WinSCP\winscp)"};
  settings.g_lWEBUpdate_interval_index = 0;
  settings.g_bAllow_PWS = 0;
  publisher.Load();
  Connect(6);
  EXPECT_TRUE(outside.calls.empty());
  settings.g_bAllow_WEB = 1;
  Tick(6);
  EXPECT_EQ(outside.calls, steps);
  outside.calls.clear();
  outside.fails = true;
  EXPECT_TRUE(publisher.webcam().SaveScreen1(kScreenshotFile));
  EXPECT_EQ(outside.calls, steps);
  EXPECT_EQ(NewErrors(), "");

  // The program's own way, one at a time.
  settings.WebcamBuiltIn = 1;
  outside = {};
  outside.no_thread = true;
  publisher.Capture();
  EXPECT_NE(panel.status.English().find("capturing the panel"), std::string::npos) << panel.status.English();
  outside = {};
  publisher.Capture();
  EXPECT_EQ(outside.calls, (Strings{"capture", "bitmap /opt/orvalis/screenshot.bmp", "jpeg /opt/orvalis/image.jpg",
                                    "ftp ftp.example/image.jpg"}));
  publisher.Capture();
  EXPECT_EQ(NewErrors(), ErrorLine("the previous picture is still being sent; this one was skipped"));
  settings.g_sPWS_password = "another";
  outside.ftp_done("Access denied: s3cr3t/x");
  EXPECT_EQ(NewErrors(), ErrorLine("the picture was not sent: Access denied: ********"));
  publisher.Capture();
  outside.ftp_done("");
  EXPECT_EQ(NewErrors(), ErrorLine("the picture was sent"));
  EXPECT_EQ(LastEvent(), "webcam upload: works again");
  settings.g_sPWS_password = "Your Wunderground Password";
  publisher.Capture();
  EXPECT_EQ(NewErrors(),
            ErrorLine("not sent: the webcam name or the password is still the placeholder; enter your own"));
  outside.calls.clear();
  publisher.webcam().SetPicture(nullptr);
  for (const std::int32_t built_in : {1, 0}) {
    settings.WebcamBuiltIn = built_in;
    publisher.Capture();
    EXPECT_EQ(NewErrors(), ErrorLine("not sent: there is no panel to capture"));
    EXPECT_TRUE(outside.calls.empty()) << "not the picture of some other day either";
  }
}

}  // namespace
}  // namespace orvalis::test
