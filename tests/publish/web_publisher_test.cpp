#include "publish/web_publisher.h"

#include "tests/support/publish_fixture.h"

namespace orvalis::test {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

class WebPublisherTest : public PublishFixture {
 public:
  WebPublisherTest() {
    publisher.readings().SetMessageBoxes(&outside);
    publisher.webcam().SetPicture(&outside);
    publisher.Load();
  }

  void Tick(int count) {
    for (int i = 0; i < count; ++i) {
      publishing_poll.Poll();
      loop.Advance(seconds(1));
    }
  }
  [[nodiscard]] std::string Errors() { return std::string(publisher.boxes().Errors()); }
  [[nodiscard]] std::string LastError() {
    std::string all = Errors();
    if (all.empty()) return "";
    all.resize(all.size() - 2);
    const auto begin = all.rfind('\n');
    return all.substr(begin == std::string::npos ? 0 : begin + 1);
  }

  [[nodiscard]] PollCycle::Parts PublishingParts() {
    PollCycle::Parts parts = PollParts();
    parts.uploads = {&publisher.webcam_schedule(), &publisher.readings_schedule()};
    return parts;
  }
  PollCycle publishing_poll{PublishingParts()};
};

// Worked by hand from the frame HUM=0520 TP=-02000 TA=+00500 WND=0020 R=0120 and the clock's 2026-11-21 21:04:05.
TEST_F(WebPublisherTest, TheReadingsGoOutEverySixSecondsAtAnIntervalOfFive) {
  Connect();
  Tick(5);
  EXPECT_TRUE(socket.requests.empty());
  Tick(1);
  ASSERT_EQ(socket.requests.size(), 1u);
  EXPECT_EQ(socket.host, "service.example");
  EXPECT_EQ(socket.port, 8080);
  EXPECT_EQ(socket.requests[0],
            "GET /update?ID=KTEST1&PASSWORD=s3cr3t/x&dateutc=2026%2D11%2D21%2B21%3A04%2E05%2E00&tempf=%20%2041%2E0"
            "&windspeedmph=%2018%2E0&windgustmph=%20%2018%2E0&humidity=%2048%2E9&clouds=SKC"
            "&softwaretype=orvalis%20v01&action=updateraw&realtime=1&rtfreq=5.0 HTTP/1.0\r\n"
            "Host: service.example\r\nConnection: close\r\n\r\n");
  const std::string shown = publisher.boxes().request();
  EXPECT_EQ(shown.find("s3cr3t"), std::string::npos);
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
  EXPECT_EQ(Errors(), "");
  settings.g_sPWS_password = "s3cr3t/x";
  Tick(60);
  EXPECT_EQ(socket.requests.size(), 11u);
}

TEST_F(WebPublisherTest, TheCountersStopAndRestartAsTheyShould) {
  settings.g_bAllow_PWS = 0;
  Connect();
  Tick(40);
  EXPECT_TRUE(socket.requests.empty());
  settings.g_bAllow_PWS = 1;  // the counter went on being reset: no upload out of turn
  Tick(2);
  EXPECT_EQ(socket.requests.size(), 1u);
  connector.Disconnect();
  Tick(70'000);
  EXPECT_EQ(socket.requests.size(), 1u);
  Connect();
  Tick(4);
  EXPECT_EQ(socket.requests.size(), 2u) << "due as soon as there is a frame";
}

TEST_F(WebPublisherTest, AnotherIntervalIsKeptByTheWindowAndByTheCycle) {
  Connect();
  Tick(2);
  profile.log.clear();
  publisher.SetInterval(kSubmitIntervals[0], 2);
  publisher.SetInterval(kSubmitIntervals[1], 0);
  EXPECT_EQ(profile.log,
            (std::vector<std::string>{"write /g_sPWSUpdate_interval_index", "write /g_sPWSUpdate_interval",
                                      "write /g_sWEBUpdate_interval_index", "write /g_sWEBUpdate_interval"}));
  profile.log.clear();
  Tick(2);
  EXPECT_EQ(profile.log,
            (std::vector<std::string>{"write /g_lWEBUpdate_interval_index", "write /g_lWEBUpdate_interval",
                                      "write /g_lPWSUpdate_interval_index", "write /g_lPWSUpdate_interval"}));
  EXPECT_EQ(profile.At("g_lPWSUpdate_interval_index") + " " + profile.At("g_lPWSUpdate_interval"), "2 15");
  profile.log.clear();
  Tick(11);
  EXPECT_TRUE(socket.requests.empty());
  Tick(1);
  EXPECT_EQ(socket.requests.size(), 1u) << "fifteen seconds, on a working tick";
  EXPECT_TRUE(profile.log.empty());

  // A store that fails keeps nothing from being sent, and is written as soon as it can be.
  profile.fails = true;
  publisher.SetInterval(kSubmitIntervals[0], 0);
  Tick(8);
  EXPECT_EQ(socket.requests.size(), 2u);
  profile.fails = false;
  Tick(2);
  EXPECT_EQ(profile.At("g_lPWSUpdate_interval"), "5");
  settings.g_lPWSUpdate_interval_index = 99;
  Tick(2);
  EXPECT_EQ(profile.At("g_lPWSUpdate_interval"), "600") << "what the list says when nothing is chosen";
}

TEST_F(WebPublisherTest, WhatAServerDoesWrongIsOneLineAndTheNextUploadIsOnItsTick) {
  struct Case {
    const char* name;
    std::function<void(WebPublisherTest&)> act;
    const char* line;
  };
  const auto receive = [](const char* bytes) {
    return [bytes](WebPublisherTest& t) {
      t.socket.handlers.received(bytes);
      t.socket.handlers.closed();
    };
  };
  const Case cases[] = {
      {"unreachable", [](WebPublisherTest& t) { t.socket.handlers.failed("Connection refused"); },
       "Connection refused"},
      {"silent", [](WebPublisherTest& t) { t.loop.Advance(seconds(31)); }, "no answer within 30 seconds"},
      {"a byte a second",
       [](WebPublisherTest& t) {
         t.socket.handlers.connected();
         for (int i = 0; i < 61 && t.socket.open; ++i) {
           t.socket.handlers.received("H");
           t.loop.Advance(seconds(1));
         }
       },
       "the answer took longer than 60 seconds"},
      {"closed", [](WebPublisherTest& t) { t.socket.handlers.closed(); },
       "the server closed the connection without an answer"},
      {"redirect", receive("HTTP/1.1 302 Found s3cr3t/x\r\nLocation: http://elsewhere/"),
       "the server sends elsewhere (status 302), where nothing is sent"},
      {"refused", receive("HTTP/1.1 401 No, s3cr3t\xe9x\r\n\r\n"), "the server refuses (status 401)"},
      {"no status", receive("HTTP/1.1 2000 OK\r\n\r\n"), "what answers is not a web server"},
      {"no web server", receive("220 welcome\r\n"), "what answers is not a web server"},
      {"still busy", [](WebPublisherTest& t) { t.publisher.TestServer(); },
       "the former upload was ended unfinished: the next one is due"},
  };
  Connect();
  Tick(4);
  for (const Case& row : cases) {
    socket.Close();
    publisher.TestServer();
    const std::string before = Errors();
    row.act(*this);
    EXPECT_EQ(LastError(), std::string("2026-11-21 09:04:05 PM ") + row.line) << row.name;
    EXPECT_EQ(Errors().size(), before.size() + LastError().size() + 2) << "one line: " << row.name;
    EXPECT_EQ(events.events().back().text, std::string("readings upload: ") + row.line) << row.name;
    EXPECT_EQ(socket.open, std::string_view(row.name) == "still busy") << row.name;
  }
  // The same failure at every interval fills no event list; that it works again is news.
  Tick(6);  // the readings are fresh again
  socket.handlers.failed("gone");
  const std::size_t listed = events.events().size();
  for (int i = 0; i < 5; ++i) {
    Tick(6);
    socket.handlers.failed("gone");
  }
  EXPECT_EQ(events.events().size(), listed);
  Tick(6);
  socket.handlers.received("HTTP/1.0 204 No Content\r\n\r\n");
  loop.Advance(seconds(31));  // left open by a server that has answered
  EXPECT_EQ(events.events().back().text, "readings upload: works again");
  EXPECT_FALSE(socket.open);

  // Each way in which an exchange ends before the server does: what has answered has done its work.
  const std::function<void()> endings[] = {
      [&] { Tick(6); },
      [&] { socket.handlers.failed("Connection reset by peer"); },
      [&] {
        for (int i = 0; i < 61 && socket.open; ++i) {
          socket.handlers.received("x");
          loop.Advance(seconds(1));
        }
      },
  };
  for (const auto& end : endings) {
    const std::string before = Errors();
    if (!socket.open) publisher.TestServer();
    socket.handlers.received("HTTP/1.0 200 OK\r\n\r\n");
    end();
    EXPECT_EQ(Errors(), before);
  }
}

TEST_F(WebPublisherTest, ALongAnswerLeavesItsLast64KB) {
  Connect();
  Tick(4);
  publisher.TestServer();
  const std::string piece = "HTTP/1.0 200 OK\r\n" + std::string(16 * 1024, 'x');
  for (std::size_t sent = 0; sent < 10'000'000; sent += piece.size()) socket.handlers.received(piece);
  const std::string end(64 * 1024 - 3, 'y');  // the cut goes through a password
  socket.handlers.received("s3cr3t/x" + end.substr(7) + "the end");
  socket.handlers.closed();
  const std::string response = publisher.boxes().Response();
  EXPECT_EQ(response.substr(0, 10), "********yy");
  EXPECT_EQ(response.size(), 64u * 1024 + 5) << "eight asterisks for the three bytes that are left";
  EXPECT_TRUE(response.ends_with("the end"));
  EXPECT_EQ(LastError(), "2026-11-21 09:04:05 PM the answer is longer than 64 KB; its end alone is kept");
  for (int i = 0; i < 5000; ++i) publisher.boxes().AddError("a long failing line that comes again and again");
  EXPECT_LE(Errors().size(), 64u * 1024);
}

TEST_F(WebPublisherTest, NothingIsSentThatIsNotKnownOrCannotBe) {
  struct Case {
    const char* name;
    std::function<void(WebPublisherTest&)> arrange;
    const char* why;
  };
  const auto url = [](const char* text) { return [text](WebPublisherTest& t) { t.settings.g_sPWS_site = text; }; };
  const Case cases[] = {
      {"no host", url("http:///x"), "Invalid Host"},
      {"scheme", url("https://h/x"), "Invalid protocol schema"},
      {"port", url("http://h:abc/x"), "the port in the URL is no port number"},
      {"port beyond", url("http://h:70000/x"), "the port in the URL is beyond 32767"},
      {"password", [](WebPublisherTest& t) { t.settings.g_sPWS_password = "a\r\nX: y"; },
       "there is a control character in the URL, the station's ID or the password"},
      {"demo", [](WebPublisherTest& t) { t.settings.DemoMode = 1; },
       "the values are made up in demo mode; \"Test Server\" sends them all the same"},
      {"ambient", [](WebPublisherTest& t) { t.port.frame.replace(58, 6, "+19999"); },
       "the ambient temperature is not known"},
  };
  Connect();
  Tick(2);
  for (const Case& row : cases) {
    const Settings good = settings;
    row.arrange(*this);
    Tick(12);  // until the ambient temperature counts as unknown
    const std::size_t requests = socket.requests.size();
    if (socket.open) socket.handlers.closed();
    publisher.readings().Edited();
    const std::size_t errors = Errors().size();
    Tick(60);
    EXPECT_EQ(socket.requests.size(), requests) << row.name;
    EXPECT_EQ(LastError(), std::string("2026-11-21 09:04:05 PM not sent: ") + row.why) << row.name;
    EXPECT_EQ(Errors().size(), errors + LastError().size() + 2) << "said once: " << row.name;
    settings = good;
    port.frame = LiveFrame();
    Tick(12);
  }
  EXPECT_TRUE(outside.calls.empty()) << "no message box that nobody asked for";

  settings.g_sPWS_site = "";
  publisher.TestServer();
  settings.g_sPWS_site = "ftp://h/";
  publisher.TestServer();
  EXPECT_EQ(outside.calls, (std::vector<std::string>{"ERROR: Invalid Host", "Orvalis: Invalid protocol schema"}));

  settings.g_sPWS_site = "http://h/";
  settings.DemoMode = 1;
  Tick(4);
  const std::size_t requests = socket.requests.size();
  publisher.TestServer();
  EXPECT_EQ(socket.requests.size(), requests + 1) << "made-up values on demand";
  settings.DemoMode = 0;
  port.silent = true;
  Tick(20);
  publisher.TestServer();
  EXPECT_EQ(socket.requests.size(), requests + 1);
  EXPECT_TRUE(LastError().ends_with("not sent: there is no reading of now")) << LastError();
}

TEST_F(WebPublisherTest, SomebodyWithoutAnAccountSeesWhatWouldBeSent) {
  settings.g_bAllow_PWS = 0;
  Connect();
  publisher.readings().Preview();
  EXPECT_EQ(publisher.boxes().request_caption(), "Nothing would be sent now: there is no reading of now");
  Tick(4);
  publisher.readings().composition() = {
      .method = "POST", .variables = {{"v", "1"}}, .headers = {{"X-H", "2 s3cr3t/x"}}};
  publisher.readings().Edited();
  EXPECT_EQ(publisher.boxes().request_caption(), "Request, as it would be sent now if uploads were allowed");
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
    publisher.SetText(box, "new/" + std::string(box.key));
    EXPECT_EQ(settings.*box.member, "new/" + std::string(box.key));
    EXPECT_EQ(profile.At(std::string(box.key)), "new/" + std::string(box.key));
    EXPECT_EQ(!script.empty(), box.key != "g_sPWS_name" && box.key != "g_sPWS_site") << box.key;
  }
  EXPECT_EQ(script.substr(0, script.find('\n')), "/opt/orvalis/winscp.txt");
  EXPECT_NE(script.find("\nopen ftp://new/g_sWEBcam_name:new/g_sPWS_password@new/g_sWEBcam_site\n"), std::string::npos);
  for (const SubmitSwitch& box : kSubmitSwitches) {
    for (const bool on : {true, false}) {
      publisher.SetSwitch(box, on);
      EXPECT_EQ(settings.*box.member, on ? 1 : 0);
      EXPECT_EQ(profile.At(std::string(box.key)), on ? "1" : "0");
    }
  }
  profile.fails = true;
  publisher.SetSwitch(kSubmitSwitches[0], true);
  EXPECT_EQ(settings.g_bAllow_PWS, 1);
  EXPECT_NE(panel.status.find("keeping the web publishing settings"), std::string::npos) << panel.status;
}

TEST_F(WebPublisherTest, ThePictureIsTakenConvertedAndSentWhateverFails) {
  const std::vector<std::string> steps{"capture", "bitmap /opt/orvalis/screenshot.bmp",
                                       R"(start C:\Program Files\IrfanView\i_view32)",
                                       R"(start C:\Program Files\WinSCP\winscp)"};
  settings.g_lWEBUpdate_interval_index = 0;
  settings.g_bAllow_PWS = 0;
  publisher.Load();
  Connect();
  Tick(6);
  EXPECT_TRUE(outside.calls.empty());
  settings.g_bAllow_WEB = 1;
  Tick(6);
  EXPECT_EQ(outside.calls, steps);
  outside.calls.clear();
  outside.fails = true;
  EXPECT_TRUE(publisher.webcam().SaveScreen1(kScreenshotFile));
  EXPECT_EQ(outside.calls, steps);
  EXPECT_EQ(Errors(), "");

  // The program's own way, one at a time.
  outside = {};
  settings.WebcamBuiltIn = 1;
  outside.no_thread = true;
  publisher.Capture();
  EXPECT_NE(panel.status.find("capturing the panel"), std::string::npos) << panel.status;
  outside = {};
  publisher.Capture();
  EXPECT_EQ(outside.calls, (std::vector<std::string>{"capture", "bitmap /opt/orvalis/screenshot.bmp",
                                                     "jpeg /opt/orvalis/image.jpg", "ftp ftp.example/image.jpg"}));
  publisher.Capture();
  EXPECT_TRUE(LastError().ends_with("the former picture is still on its way, so this one is left out"));
  settings.g_sPWS_password = "another";
  outside.ftp_done("Access denied: s3cr3t/x");
  EXPECT_TRUE(LastError().ends_with("the picture was not sent: Access denied: ********"));
  publisher.Capture();
  outside.ftp_done("");
  EXPECT_TRUE(LastError().ends_with("the picture was sent"));
  EXPECT_EQ(events.events().back().text, "webcam upload: works again");
  publisher.webcam().SetPicture(nullptr);
  publisher.Capture();
  EXPECT_TRUE(LastError().ends_with("not sent: there is no panel to take a picture of"));
}

}  // namespace
}  // namespace orvalis::test
