#include "answer.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

namespace orvalis::indi {
namespace {

using Json = nlohmann::json;
using std::chrono::milliseconds;

constexpr std::size_t kLongestName = 100;    // bytes
constexpr std::size_t kLongestReason = 200;  // bytes; with what stands before it, it fits a message of INDI
constexpr std::size_t kMostReasons = 20;
constexpr double kLongestAge = 365 * 86'400.0;  // s; longer is not fresher

constexpr double kKilometresPerHour = 3.6;  // in metres per second

/// A member of `values` and the value that is made from it.
struct Measured {
  const char* name;
  double factor;
};
constexpr std::size_t kRain = 7;
constexpr std::array<Measured, kRain> kMeasured{{{"ambient_c", 1},
                                                 {"humidity_percent", 1},
                                                 {"dew_point_c", 1},
                                                 {"wind_m_s", kKilometresPerHour},
                                                 {"wind_gust_m_s", kKilometresPerHour},
                                                 {"cloud_cover_percent", 1},
                                                 {"sky_c", 1}}};

/// Thrown and caught in this file only.
struct Unusable {};

const Json& Member(const Json& object, const char* name) {
  const auto member = object.find(name);
  if (member == object.end()) throw Unusable();
  return *member;
}

std::string Text(const Json& object, const char* name, std::size_t bytes) {
  const Json& member = Member(object, name);
  if (!member.is_string()) throw Unusable();
  return Printable(member.get_ref<const std::string&>(), bytes);
}

std::optional<double> Number(const Json& object, const char* name) {
  const Json& member = Member(object, name);
  if (member.is_null()) return std::nullopt;
  if (!member.is_number()) throw Unusable();
  return member.get<double>();
}

std::optional<milliseconds> Age(const Json& answer) {
  const std::optional<double> age = Number(answer, "age_s");
  if (!age) return std::nullopt;
  if (*age < 0) throw Unusable();
  return milliseconds(std::llround(std::min(*age, kLongestAge) * 1'000));
}

std::vector<Reason> Reasons(const Json& answer) {
  const Json& list = Member(answer, "reasons");
  if (!list.is_array() || list.size() > kMostReasons) throw Unusable();
  std::vector<Reason> reasons;
  for (const Json& reason : list) {
    if (!reason.is_object()) throw Unusable();
    reasons.push_back({Text(reason, "name", kLongestName), Text(reason, "text", kLongestReason)});
  }
  return reasons;
}

/// The sensor tells whether it is wet, not how much it rains: these count as light rain everywhere.
std::optional<double> RainRate(const Json& answer) {
  const Json& words = Member(answer, "words");
  if (!words.is_object()) throw Unusable();
  const Json& word = Member(words, "rain");
  if (word.is_null()) return std::nullopt;
  if (word == "Dry") return 0.0;
  if (word == "Damp") return 0.1;
  if (word == "Rain") return 1.0;
  throw Unusable();
}

Values ReadValues(const Json& answer) {
  const Json& members = Member(answer, "values");
  if (!members.is_object()) throw Unusable();
  Values values;
  for (std::size_t i = 0; i < kMeasured.size(); ++i) {
    const ValueForm& form = ValueForms()[i];
    const std::optional<double> value = Number(members, kMeasured[i].name);
    // A negative wind is one that could not be computed.
    if (value && *value * kMeasured[i].factor >= form.lowest && *value * kMeasured[i].factor <= form.highest) {
      values[i] = *value * kMeasured[i].factor;
    }
  }
  values[kRain] = RainRate(answer);
  return values;
}

Answer Read(const Json& json) {
  if (!json.is_object()) throw Unusable();
  Answer answer{.station = Text(json, "station", kLongestName),
                .uuid = Text(json, "uuid", kLongestName),
                .age = Age(json),
                .reasons = Reasons(json),
                .values = ReadValues(json)};
  const Json& safe = Member(json, "safe");
  if (!safe.is_boolean() || !IsUuid(answer.uuid)) throw Unusable();
  answer.safe = safe.get<bool>() && answer.reasons.empty();
  return answer;
}

/// How many bytes of `text` make up its first character; `text` is not empty.
std::size_t CharacterLength(std::string_view text) {
  std::size_t length = 1;
  while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) ++length;
  return length;
}

bool IsControl(std::string_view character) {
  const auto first = static_cast<unsigned char>(character.front());
  // The last two cannot be in XML, U+0080 to U+009F should not.
  return first < 0x20 || first == 0x7F || (first == 0xC2 && static_cast<unsigned char>(character.back()) < 0xA0) ||
         character == "\xEF\xBF\xBE" || character == "\xEF\xBF\xBF";
}

}  // namespace

const std::array<ValueForm, 8>& ValueForms() {
  static constexpr std::array<ValueForm, 8> kForms{
      {{"WEATHER_TEMPERATURE", "Temperature (C)", "%.2f", -100, 100},
       {"WEATHER_HUMIDITY", "Humidity (%)", "%.1f", 0, 100},
       {"WEATHER_DEWPOINT", "Dew point (C)", "%.2f", -100, 100},
       {"WEATHER_WIND_SPEED", "Wind (km/h)", "%.1f", 0, 500},
       {"WEATHER_WIND_GUST", "Gust (km/h)", "%.1f", 0, 500},
       {"WEATHER_CLOUD_COVER", "Clouds (%)", "%.f", 0, 100},
       {"WEATHER_SKY_TEMPERATURE", "Sky (C)", "%.2f", -200, 200},
       {"WEATHER_RAIN_HOUR", "Rain (0 dry, 0.1 damp, 1 rain)", "%.1f", 0, 1}}};
  return kForms;
}

std::variant<Answer, NoAnswer> ReadAnswer(std::string_view body) {
  const Json json = Json::parse(body, nullptr, /*allow_exceptions=*/false);
  if (json.is_discarded()) return NoAnswer{"the answer is no JSON"};
  try {
    return Read(json);
  } catch (const Unusable&) {
    return NoAnswer{"the answer is no observation; is another program there?"};
  }
}

std::string Printable(std::string_view text, std::size_t bytes) {
  std::string printable;
  while (!text.empty()) {
    const std::string_view character = text.substr(0, CharacterLength(text));
    if (printable.size() + character.size() > bytes) break;
    printable += IsControl(character) ? std::string_view(" ") : character;
    text.remove_prefix(character.size());
  }
  return printable;
}

bool IsUuid(std::string_view text) {
  constexpr std::string_view kForm = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
  const auto fits = [](char form, char c) {
    const bool hexadecimal = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
    return form == 'x' ? hexadecimal : c == form;
  };
  return std::equal(kForm.begin(), kForm.end(), text.begin(), text.end(), fits);
}

}  // namespace orvalis::indi
