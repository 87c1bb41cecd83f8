// What is put on the wire: URLs, encoding, the query, the request around it, the lines for the picture's programs.

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "base/run_time_error.h"
#include "config/settings_table.h"
#include "publish/http_request.h"
#include "publish/pws_upload.h"
#include "publish/secret_mask.h"
#include "publish/service_answer.h"
#include "publish/submit_fields.h"
#include "publish/url_helper.h"
#include "publish/webcam_upload.h"
#include "tests/support/error_of.h"

namespace orvalis {
namespace {

TEST(SplitUrl, CutsWhereTheMarksAre) {
  const std::pair<const char*, UrlRecord> cases[] = {
      {"http://example.org/station/update.php?x=1&y=2", {"http", "example.org", 0, "/station/update.php", "x=1&y=2"}},
      {"example.org:8080/p", {"", "example.org", 8080, "/p", ""}},
      {"example.org:8080", {"", "example.org:8080", 0, "/", ""}},
      {"example.org:abc/p", {"", "example.org", 0, "/p", ""}},
      {"http://example.org", {"http", "example.org", 0, "/", ""}},
      {"http://h/a:1/b?c?d", {"http", "h", 0, "/a:1/b", "c?d"}},
      {"http://:80/p", {"http", "", 80, "/p", ""}},
      {"http:///p", {"http", "", 0, "/p", ""}},
  };
  for (const auto& [url, record] : cases) EXPECT_EQ(SplitUrl(url), record) << url;
  for (const char* url : {"h:32768/", "h:99999999999/", "h:-40000/"})
    EXPECT_THROW((void)SplitUrl(url), RunTimeError) << url;
}

TEST(UrlEncode, LeavesDigitsAndLettersAlone) {
  EXPECT_EQ(UrlEncode(std::string_view("azAZ09\t @[`{/:\0\x0f\x10\xe9\xff", 19)),
            "azAZ09%9%20%40%5B%60%7B%2F%3A%0%F%10%E9%FF");
}

TEST(MaskSecrets, KnowsEveryWritingOfAPassword) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"a.b c", "a.b c|a.b+c|a.b%20c|a%2eb%20c|%61%2E%62%20%63|a.b-c",
       "********|********|********|********|********|a.b-c"},
      {"p%2Fw", "p%2Fw p%252Fw p%252fw p%2fw", "******** ******** p%252fw p%2fw"},
      {"100%", "100% 100%25 100%2", "******** ******** ********2"},
      {"\xc3\xa9x", "\xc3\xa9x %C3%a9x", "******** ********"},
      {"*", "PASSWORD=********&", "PASSWORD=********&"},
      {"aba", "ababa aba%", "******** ********%"},
      {"", "a b", "a b"},
  };
  for (const auto& [secret, text, masked] : cases) {
    const std::array<std::string_view, 2> secrets{secret, "other"};
    EXPECT_EQ(MaskSecrets(text, secrets), masked) << text;
  }
  const std::array<std::string_view, 2> overlapping{"s3", "s3cr3t"};
  EXPECT_EQ(MaskSecrets("<s3cr3t>", overlapping), "<********>");
  EXPECT_EQ(MaskSecrets("<s3cr3t>", overlapping, 4), "********>") << "cut off within a password";
}

TEST(CloudCode, AColdSkyComesFirstThenRainThenTheDifference) {
  Settings settings;
  settings.FullCloudyDegC = 19;
  settings.PartCloudyDegC = 22;
  const std::tuple<double, double, bool, const char*> cases[] = {
      {-5.0, -5.0, true, "SKC"}, {-4.9, 30.0, true, "OVC"}, {-4.9, 30.0, false, "SKC"},
      {1.0, 20.0, false, "OVC"}, {1.0, 20.1, false, "SCT"}, {1.0, 22.9, false, "SCT"},
      {1.0, 23.0, false, "SKC"}, {3.1, 25.1, false, "SKC"}, {-3.3, 15.7, false, "OVC"},
  };
  for (const auto& [sky, ambient, raining, code] : cases) {
    EXPECT_EQ(CloudCode(sky, ambient, raining, settings), code) << sky << " " << ambient;
  }
}

TEST(UploadQuery, IsTheServicesToTheByte) {
  EXPECT_EQ(UploadTime({.year = 2024, .month = 1, .day = 2, .hour = 13, .minute = 45, .second = 30}),
            "2024-01-02+13:45.30.00");
  EXPECT_EQ(UploadTime({2023, 12, 31, 23, 59, 59, 600}), "2024-01-01+00:00.00.00");

  Settings settings;
  settings.RainThreshold = 350;
  settings.FullCloudyDegC = 19;
  settings.PartCloudyDegC = 22;
  WeatherState weather;
  weather.ambient_celsius = 0;
  weather.sky_celsius = -4.94;  // shown as -4.9
  weather.wind_average_mph = 123.45;
  weather.wind_gust_mph = -10;
  weather.humidity_percent = 7.25;
  weather.rain = 351;
  const auto western = [](std::string_view utf8) { return utf8 == "\xc3\xa9" ? "\xe9" : std::string(utf8); };
  EXPECT_EQ(UploadQuery("K 1", "p&w+d", {2024, 1, 2, 13, 45, 30}, weather, settings,
                        {{"", ""}, {"a b", "1&2"}, {"\xc3\xa9", "\xc3\xa9"}}, western),
            "ID=K 1&PASSWORD=p&w+d&dateutc=2024%2D01%2D02%2B13%3A45%2E30%2E00&tempf=%20%2032%2E0"
            "&windspeedmph=123%2E5&windgustmph=%20%2D10%2E0&humidity=%20%207%2E3&clouds=OVC"
            "&softwaretype=orvalis%20v01&action=updateraw&realtime=1&rtfreq=5.0&a%20b=1%262&%E9=%E9");
}

TEST(RequestText, IsFramedByMethodAndRows) {
  HttpRequest request{.url = SplitUrl("http://h.example:81/p?k=v"), .query = "a=1"};
  EXPECT_EQ(RequestText(request), "GET /p?k=v&a=1 HTTP/1.0\r\nHost: h.example\r\nConnection: close\r\n\r\n");
  request.method = "POST";
  request.headers = {{"", ""}, {"connection", "keep-alive"}, {"X-A", "b: c"}};
  EXPECT_EQ(RequestText(request),
            "POST /p?k=v HTTP/1.0\r\nHost: h.example\r\nContent-Type: application/x-www-form-urlencoded\r\n"
            "Content-Length: 3\r\nconnection: keep-alive\r\nX-A: b: c\r\n\r\na=1");
  EXPECT_TRUE(
      ShownText(request, "a=********").ends_with("Length: 3\r\nconnection: keep-alive\r\nX-A: b: c\r\n\r\na=********"));
  request = {.method = "HEAD", .url = SplitUrl("http://h"), .query = ""};
  EXPECT_TRUE(RequestText(request).starts_with("HEAD / HTTP/1.0\r\nHost: h\r\nContent-Type: "));
  EXPECT_EQ(PortOf(SplitUrl("http://h/")), 80);
  EXPECT_EQ(PortOf(SplitUrl("http://h:8080/")), 8080);
}

TEST(RequestText, NothingCanBeSplitInTwo) {
  using Spoil = void (*)(HttpRequest&, const std::string&);
  const Spoil spoils[] = {[](auto& request, auto& bad) { request.query += bad; },
                          [](auto& request, auto& bad) { request.url.host += bad; },
                          [](auto& request, auto& bad) { request.url.path += bad; },
                          [](auto& request, auto& bad) { request.url.query = bad; },
                          [](auto& request, auto& bad) {
                            request.headers.push_back({"X" + bad, "v"});
                          },
                          [](auto& request, auto& bad) {
                            request.headers.push_back({"X", "v" + bad + "Y: z"});
                          }};
  for (const char* method : {"GET", "POST"}) {
    const HttpRequest good{.method = method, .url = SplitUrl("http://h/p"), .query = "a=1"};
    EXPECT_NO_THROW((void)RequestText(good));
    for (const std::string& bad : std::vector<std::string>{"\r\n", "\n", std::string(1, '\0'), "\x1f", "\x7f"}) {
      for (const Spoil spoil : spoils) {
        HttpRequest request = good;
        spoil(request, bad);
        EXPECT_THROW((void)RequestText(request), RunTimeError) << &spoil - spoils;
      }
    }
    for (const char* name : {"", "X Y", "X:", "Ü"}) {
      HttpRequest request = good;
      request.headers = {{name, "v"}};
      EXPECT_THROW((void)RequestText(request), RunTimeError) << name;
    }
  }
}

TEST(CheckUrl, RefusesWhatCannotBeReached) {
  // The complaint of a message box; "line" where the error box says it.
  const auto verdict = [](const std::string& text) -> std::string {
    const UrlRecord url = SplitUrl(text);
    if (!Complaint(url).text.empty()) return std::string(Complaint(url).text);
    return test::ErrorOf([&] { CheckUrl(text, url); }) != 0 ? "line" : "";
  };
  const std::string long_path(10'000, 'a');
  const std::pair<const char*, std::vector<std::string>> cases[] = {
      {"", {"http://h/", "http://h-1.example_2:81/p"}},
      {"Invalid Host", {"", "http:///p", "http://:80/"}},
      {"Invalid protocol schema", {"h/p", "https://h/", "HTTP://h/"}},
      {"line",
       {"http://h:80", "http://h:abc/", "http://h:0/", "http://h:-1/", "http://h:/", "http://u@h/", "http://h h/",
        "http://[::1]/", "http://h/" + long_path, "http://" + long_path + "/"}}};
  for (const auto& [complaint, urls] : cases) {
    for (const auto& url : urls) EXPECT_EQ(verdict(url), complaint) << url.substr(0, 40);
  }
}

TEST(ServiceObjection, TheTextDecidesWhereTheStatusIsGood) {
  const std::pair<const char*, std::vector<std::string>> cases[] = {
      {"",
       {"", "success\n", "8\r\n<b>Success</b>\r\n0\r\n", "stored without errors", "accepted",
        "success, no invalid values", R"({"success": true, "error": null})"}},
      {"ID or the password is wrong",
       {"INVALIDPASSWORDID|Password or key and/or id are incorrect", "Unauthorized",
        R"({"success":true,"note":"Invalid password"})"}},
      {"failed", {R"({"success" : false})", "unsuccessful", "ERROR: Not a station"}}};
  for (const auto& [objection, texts] : cases) {
    for (const auto& text : texts) {
      const std::string said = ServiceObjection("HTTP/1.0 200 OK\r\nX-Error: invalid\r\n\r\n" + text);
      EXPECT_TRUE(said.ends_with(objection) && said.empty() == (*objection == 0)) << text << ": " << said;
    }
  }
  EXPECT_NE(ServiceObjection("HTTP/1.0 200 OK\n\nunauthorized"), "");
  EXPECT_NE(ServiceObjection("HTTP/1.0 500 Failed\r\n\r\nsuccess"), "");
}

TEST(Remark, TellsWhatBreaksTheQueryAndWhatIsAPrompt) {
  const SubmitText& station = kSubmitTexts[0];
  const SubmitText& webcam = kSubmitTexts[1];
  const SubmitText& password = kSubmitTexts[2];
  EXPECT_TRUE(Remark(station, "KTEST1/-x").empty());
  EXPECT_TRUE(Remark(webcam, "a b&c").empty()) << "no query has it";
  for (const char* text : {"a b", "a&b", "100%", "+", "#"}) {
    EXPECT_TRUE(!Remark(station, text).empty() && !Remark(password, text).empty()) << text;
  }
  for (const SubmitText& box : kSubmitTexts) {
    const bool prompts = box.key != "g_sPWS_site" && box.key != "g_sWEBcam_site";
    EXPECT_EQ(!Remark(box, *FindSettingKey(box.key)->default_text).empty(), prompts) << box.control;
  }
}

TEST(WebcamTexts, AreThoseOfTheOtherPrograms) {
  const PictureFolder windows{.path = R"(D:\My Orvalis)", .separator = '\\', .line_end = "\r\n"};
  const PictureFolder linux_folder{.path = "/opt/orvalis"};
  EXPECT_EQ(PicturePath(windows, kScreenshotFile), R"(D:\My Orvalis\\screenshot.bmp)");
  EXPECT_EQ(PicturePath(linux_folder, kScreenshotFile), "/opt/orvalis/screenshot.bmp");
  EXPECT_EQ(ConverterCommand(windows, kScreenshotFile),
            R"(C:\Program Files\IrfanView\i_view32.exe D:\My Orvalis\\screenshot.bmp/resample )"
            R"(/convert=D:\My Orvalis\image.jpg)");
  EXPECT_EQ(TransferCommand(windows),
            R"(C:\Program Files\WinSCP\winscp.exe  /console /script="D:\My Orvalis\winscp_xfer.txt")");

  Settings settings;
  settings.g_sWEBcam_name = "cam 1";
  settings.g_sPWS_password = "p@:w";
  settings.g_sWEBcam_site = "ftp.example";
  EXPECT_EQ(TransferScript(windows, settings),
            "option batch on\r\noption confirm off\r\noption reconnecttime off\r\nopen ftp://cam 1:p@:w@ftp.example\r\n"
            "option transfer binary\r\nput \"D:\\My Orvalis\\image.jpg\"\r\nexit\r\n");
  const std::string script = TransferScript(windows, settings);
  settings.g_sWEBcam_site = "ftp://ftp.example";
  EXPECT_EQ(TransferScript(windows, settings), script);
  settings.g_sPWS_password = "p\nexit";
  EXPECT_THROW((void)TransferScript(windows, settings), RunTimeError);

  settings.g_sPWS_password = "pw";
  // Host, port and folder.
  const std::pair<const char*, const char*> sites[] = {{"ftp://webcam.example", "webcam.example 21 /"},
                                                       {"ftp://h:2121/pictures", "h 2121 /pictures/"},
                                                       {"h/a b/", "h 21 /a b/"}};
  for (const auto& [site, target] : sites) {
    settings.g_sWEBcam_site = site;
    const FtpUpload upload = BuiltInUpload(linux_folder, settings);
    EXPECT_EQ(upload.host + " " + std::to_string(upload.port) + " " + upload.folder, target);
  }
  for (const char* site : {"", "ftps://h", "ftp://u@h", "h:x", "h:0/", "h:70000"}) {
    settings.g_sWEBcam_site = site;
    EXPECT_THROW((void)BuiltInUpload(linux_folder, settings), RunTimeError) << site;
  }
}

}  // namespace
}  // namespace orvalis
