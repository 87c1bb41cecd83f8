// What is sent to web services and what they answer: URLs, requests, replies, and that no password is shown.
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "base/run_time_error.h"
#include "publish/http_request.h"
#include "publish/pws_upload.h"
#include "publish/secret_mask.h"
#include "publish/service_answer.h"
#include "publish/tail_text.h"
#include "publish/url_helper.h"
#include "publish/webcam_upload.h"
#include "tests/fuzz/fuzz.h"

namespace orvalis {
namespace {

using fuzz::Input;
using fuzz::Require;

std::size_t CountOf(std::string_view text, std::string_view part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + part.size())) ++count;
  return count;
}

/// A request, unless it is refused. It is one: its header ends where it should, whatever the parts hold.
void CheckRequest(const HttpRequest& request) {
  std::string text;
  try {
    text = RequestText(request);
  } catch (const RunTimeError&) {
    return;
  }
  const bool has_body = request.method != "GET";
  const std::size_t end = text.find("\r\n\r\n");
  Require(end != std::string::npos && text.substr(end + 4) == (has_body ? request.query : ""),
          "a request ends where its header says", text);
  const std::string_view header = std::string_view(text).substr(0, end);
  std::size_t lines = 1 + 1 + (has_body ? 2 : 0);
  bool names_connection = false;
  for (const RequestRow& row : request.headers) {
    lines += row.name.empty() && row.value.empty() ? 0 : 1;
    names_connection = names_connection || row.name.size() == std::string_view("Connection").size();
  }
  const std::size_t line_ends = CountOf(header, "\r\n");
  Require(line_ends + 1 == lines + 1 || (names_connection && line_ends + 1 == lines), "no line is smuggled in", text);
  Require(header.find_first_of(std::string_view("\0\x7f", 2)) == std::string_view::npos, "a header is text", text);
  Require(ShownText(request, "shown").size() + request.query.size() == text.size() + 5, "what is shown is the same",
          text);
}

void CheckUrls(std::string_view text, Input& input) {
  UrlRecord url;
  try {
    url = SplitUrl(text);
    Require(url.path.starts_with('/'), "a path begins with a slash", text);
    if (!Complaint(url).text.empty()) return;
    CheckUrl(text, url);
  } catch (const RunTimeError&) {
    return;
  }
  Require(PortOf(url) > 0, "there is a port to connect to", text);
  HttpRequest request{.method = kRequestMethods.at(input.Byte() % kRequestMethods.size()), .url = url};
  request.headers.push_back({std::string(input.Until('\n')), std::string(input.Until('\n'))});
  const std::string name(input.Until('\n'));
  request.query = UploadQuery(name, input.Until('\n'), {}, {}, {}, {{std::string(input.Until('\n')), name}},
                              [](std::string_view utf8) { return std::string(utf8); });
  CheckRequest(request);
}

void CheckWebcam(std::string_view site, Input& input) {
  Settings settings;
  settings.g_sWEBcam_site = site;
  settings.g_sWEBcam_name = input.Until('\n');
  settings.g_sPWS_password = input.Until('\n');
  const PictureFolder folder{.path = "/opt"};
  try {
    Require(CountOf(TransferScript(folder, settings), "\n") == 7, "a script has its seven lines", site);
    const FtpUpload upload = BuiltInUpload(folder, settings);
    Require(!upload.host.empty() && upload.host.find('/') == std::string::npos, "there is a host", site);
    Require(upload.folder.front() == '/' && upload.folder.back() == '/' && upload.port > 0, "there is a place", site);
  } catch (const RunTimeError&) {
  }
}

void CheckAnswer(std::string_view answer, std::size_t piece) {
  TailText tail;
  bool had_line = false;
  for (std::size_t at = 0; at < answer.size(); at += piece) {
    tail.Append(answer.substr(at, piece));
    const bool has_line = HasStatusLine(tail.All());
    Require(has_line || !had_line, "a status line that came stays");
    had_line = has_line;
  }
  Require(answer.ends_with(tail.View()) && tail.View().size() == std::min(answer.size(), TailText::kShown),
          "the end of an answer is shown");
  if (ServiceObjection(tail.View()).empty()) {
    Require(answer.starts_with("HTTP/") && answer.find(" 2") != std::string_view::npos,
            "only a good status is a success", answer);
  }
}

std::string Decoded(std::string_view text, bool plus_is_blank) {
  const auto value = [](char c) -> int {
    constexpr std::string_view kDigits = "0123456789abcdef";
    const auto at = kDigits.find(static_cast<char>(c >= 'A' && c <= 'F' ? c + 32 : c));
    return at == std::string_view::npos ? -1 : static_cast<int>(at);
  };
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool encoded = text[i] == '%' && i + 2 < text.size() && value(text[i + 1]) >= 0 && value(text[i + 2]) >= 0;
    if (encoded) {
      decoded += static_cast<char>(value(text[i + 1]) * 16 + value(text[i + 2]));
      i += 2;
    } else {
      decoded += text[i] == '+' && plus_is_blank ? ' ' : text[i];
    }
  }
  return decoded;
}

void CheckMask(std::string_view secret, std::string_view text, std::size_t from) {
  const std::array<std::string_view, 1> secrets{secret};
  const std::string masked = MaskSecrets(text, secrets, from);
  // A mask itself may look like a part of such a password.
  if (secret.empty() || secret.find('*') != std::string_view::npos) return;
  Require(masked.find(secret) == std::string::npos, "a password is not shown", masked);
  // A beginning that is cut off may be the "%" of what follows.
  if (from != 0) return;
  for (const bool plus : {false, true}) {
    Require(Decoded(masked, plus).find(secret) == std::string::npos, "an encoded password is not shown", masked);
  }
}

}  // namespace
}  // namespace orvalis

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orvalis;
  fuzz::Input input(data, size);
  const std::uint8_t kind = input.Byte();
  switch (kind % 4) {
    case 0: {
      const std::string_view url = input.Until('\n');
      CheckUrls(url, input);
      break;
    }
    case 1: {
      const std::string_view site = input.Until('\n');
      CheckWebcam(site, input);
      break;
    }
    case 2:
      CheckAnswer(input.Rest(), 1U + kind / 4);
      break;
    default: {
      const std::string_view secret = input.Until('\n');
      const std::string_view text = input.Rest();
      const std::string encoded = UrlEncode(text);
      fuzz::Require(encoded.find_first_not_of("%0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz") ==
                        std::string::npos,
                    "what is encoded is plain", encoded);
      CheckMask(secret, text, kind / 4U);
    }
  }
  return 0;
}
