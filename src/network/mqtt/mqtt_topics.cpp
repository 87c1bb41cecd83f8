#include "network/mqtt/mqtt_topics.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace orvalis::network {
namespace {

constexpr char kSubstitute = '_';
constexpr std::size_t kLongestLevel = 100;  // characters

/// One character of UTF-8: its length in bytes and its number. A byte that begins none has the length 1 and no number.
struct Character {
  std::size_t length = 1;
  std::uint32_t code = 0;  ///< 0 also for what is damaged
};

Character FirstOf(std::string_view text) {
  struct Form {
    unsigned char mask;
    unsigned char lead;
    std::size_t length;
    std::uint32_t lowest;
  };
  constexpr std::array<Form, 4> kForms{
      {{0x80, 0x00, 1, 0}, {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}}};
  const auto first = static_cast<unsigned char>(text.front());
  for (const Form& form : kForms) {
    if ((first & form.mask) != form.lead || text.size() < form.length) continue;
    std::uint32_t code = first & static_cast<unsigned char>(~form.mask);
    for (std::size_t i = 1; i < form.length; ++i) {
      const auto next = static_cast<unsigned char>(text[i]);
      if ((next & 0xC0) != 0x80) return {};
      code = code << 6 | (next & 0x3F);
    }
    const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < form.lowest || code > 0x10FFFF || surrogate) return {};
    return {.length = form.length, .code = code};
  }
  return {};
}

/// Whether brokers take it in a topic, and people can type it without quotes.
bool IsPlain(std::uint32_t code) {
  constexpr std::string_view kSpecial = "/+#";
  const bool control = code <= 0x20 || (code >= 0x7F && code <= 0xA0);
  const bool wide_blank = (code >= 0x2000 && code <= 0x200F) || (code >= 0x2028 && code <= 0x202F) || code == 0x3000;
  const bool no_character = (code >= 0xFDD0 && code <= 0xFDEF) || (code & 0xFFFE) == 0xFFFE || code == 0xFEFF;
  const bool special = code < 0x80 && kSpecial.find(static_cast<char>(code)) != std::string_view::npos;
  return !control && !wide_blank && !no_character && !special;
}

/// The levels of `prefix`, each as a topic takes it.
std::string Prefix(std::string_view prefix) {
  std::string topic;
  while (!prefix.empty()) {
    const std::size_t end = std::min(prefix.find('/'), prefix.size());
    const std::string level = TopicLevel(prefix.substr(0, end), "");
    if (!level.empty()) topic += (topic.empty() ? "" : "/") + level;
    prefix.remove_prefix(std::min(end + 1, prefix.size()));
  }
  // What begins with "$" belongs to the broker.
  if (topic.starts_with('$')) topic.front() = kSubstitute;
  return topic.empty() ? "orvalis" : topic;
}

}  // namespace

std::string TopicLevel(std::string_view name, std::string_view otherwise) {
  std::string level;
  for (std::size_t count = 0; !name.empty() && count < kLongestLevel; ++count) {
    const Character character = FirstOf(name);
    if (IsPlain(character.code)) {
      level += name.substr(0, character.length);
    } else {
      level += kSubstitute;
    }
    name.remove_prefix(character.length);
  }
  return level.empty() ? std::string(otherwise) : level;
}

MqttTopics TopicsOf(std::string_view prefix, const Station& station) {
  const std::string base = Prefix(prefix) + "/" + TopicLevel(station.name, MqttNodeId(station)) + "/";
  return {.availability = base + "availability",
          .observation = base + "observation",
          .verdict = base + "verdict",
          .discovery = "homeassistant/device/" + MqttNodeId(station) + "/config"};
}

std::string MqttNodeId(const Station& station) {
  constexpr std::size_t kDigits = 16;
  std::string id;
  for (const char c : station.uuid) {
    if (c != '-' && id.size() < kDigits) id += c;
  }
  return "orvalis" + TopicLevel(id, "");
}

}  // namespace orvalis::network
