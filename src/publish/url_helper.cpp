#include "publish/url_helper.h"

#include <limits>

#include "base/message.h"
#include "base/run_time_error.h"
#include "base/text.h"

namespace orvalis {
namespace {

constexpr auto kPortTooHigh = Message::Of("the port in the URL is above %1");

/// The number in `text`, or 0 when it is not a number.
std::int16_t ReadPort(std::string_view text) {
  std::int32_t number = 0;
  bool beyond = false;
  try {
    number = TextToInteger(text);
    beyond = number != static_cast<std::int16_t>(number);
  } catch (const RunTimeError& error) {
    beyond = error.number() == RunTimeError::kOverflow;
  }
  if (beyond) {
    throw RunTimeError(RunTimeError::kOverflow, kPortTooHigh.With(std::numeric_limits<std::int16_t>::max()));
  }
  return static_cast<std::int16_t>(number);
}

}  // namespace

UrlRecord SplitUrl(std::string_view url) {
  constexpr std::string_view kSchemeEnd = "://";
  UrlRecord record;
  if (const auto end = url.find(kSchemeEnd); end != std::string_view::npos) {
    record.scheme = url.substr(0, end);
    url.remove_prefix(end + kSchemeEnd.size());
  }
  const auto colon = url.find(':');
  const auto slash = url.find('/');
  if (slash == std::string_view::npos) {
    record.host = url;
    record.path = "/";
    return record;
  }
  if (colon < slash) {
    record.host = url.substr(0, colon);
    record.port = ReadPort(url.substr(colon + 1, slash - colon - 1));
  } else {
    record.host = url.substr(0, slash);
  }
  const std::string_view rest = url.substr(slash);
  const auto question_mark = rest.find('?');
  record.path = rest.substr(0, question_mark);
  if (question_mark != std::string_view::npos) record.query = rest.substr(question_mark + 1);
  return record;
}

std::string UrlEncode(std::string_view text) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string encoded;
  for (const char c : text) {
    if ((c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z')) {
      encoded += c;
      continue;
    }
    const auto code = static_cast<unsigned char>(c);
    encoded += '%';
    if (code >= 16) encoded += kDigits[code / 16];
    encoded += kDigits[code % 16];
  }
  return encoded;
}

}  // namespace orvalis
