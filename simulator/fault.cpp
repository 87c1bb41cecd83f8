#include "fault.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace orvalis_unit {
namespace {

struct FaultRow {
  FaultKind kind;
  std::string_view name;
  bool hits_handshake;
  bool hits_frame;
};

constexpr std::array<FaultRow, kFaultKindCount> kTable = {{
    {FaultKind::kSilent, "silent", true, true},
    {FaultKind::kWrongAnswer, "wrong-answer", true, false},
    {FaultKind::kShort, "short", false, true},
    {FaultKind::kCut, "cut", false, true},
    {FaultKind::kGarbage, "garbage", false, true},
    {FaultKind::kSlow, "slow", true, true},
    {FaultKind::kLate, "late", true, true},
    {FaultKind::kDrop, "drop", true, true},
}};

// The most wrong bytes in a garbled frame.
constexpr std::size_t kMostWrongBytes = 20;

bool Affects(FaultKind kind, AnswerKind answer) {
  const FaultRow& row = kTable[static_cast<std::size_t>(kind)];
  return answer == AnswerKind::kHandshake ? row.hits_handshake : row.hits_frame;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

std::string_view FaultName(FaultKind kind) { return kTable[static_cast<std::size_t>(kind)].name; }

std::optional<FaultKind> FaultByName(std::string_view name) {
  const auto row = std::ranges::find(kTable, name, &FaultRow::name);
  if (row == kTable.end()) return {};
  return row->kind;
}

FaultRule ParseFaultRule(std::string_view text) {
  std::vector<std::string_view> parts;
  while (true) {
    const auto colon = text.find(':');
    parts.push_back(text.substr(0, colon));
    if (colon == std::string_view::npos) break;
    text.remove_prefix(colon + 1);
  }
  const auto kind = FaultByName(parts[0]);
  if (!kind) {
    std::string message = "unknown fault " + Quoted(parts[0]) + "; the faults are";
    for (const FaultRow& row : kTable) message.append(" ").append(row.name);
    throw std::invalid_argument(message);
  }
  if (parts.size() > 3) throw std::invalid_argument("a fault is KIND[:PROBABILITY[:SECONDS]]");

  FaultRule rule{.kind = *kind, .seconds = *kind == FaultKind::kDrop ? kDropSeconds : 0.0};
  if (parts.size() > 1) {
    const auto probability = ParseNumber(parts[1]);
    if (!probability || *probability < 0.0 || *probability > 1.0) {
      throw std::invalid_argument(Quoted(parts[1]) + " is not a probability from 0 to 1");
    }
    rule.probability = *probability;
  }
  if (parts.size() > 2) {
    const auto seconds = ParseSeconds(parts[2]);
    if (!seconds) throw std::invalid_argument(Quoted(parts[2]) + " is not a number of seconds");
    rule.seconds = *seconds;
  }
  return rule;
}

FaultBox::FaultBox(const std::vector<FaultRule>& rules, std::uint32_t seed) : random_(seed) {
  for (const FaultRule& rule : rules) entries_.push_back({rule});
}

void FaultBox::Strike(FaultKind kind, std::optional<double> seconds, Time now) {
  std::erase_if(entries_, [now](const Entry& entry) {
    return entry.rule.probability == 0.0 && !entry.once && entry.until <= now;
  });
  const FaultRule rule{.kind = kind, .probability = 0.0, .seconds = seconds.value_or(0.0)};
  entries_.insert(entries_.begin(), {rule, seconds ? now + FromSeconds(*seconds) : Time(-1), !seconds});
}

std::optional<FaultRule> FaultBox::Next(AnswerKind answer, Time now) {
  for (auto entry = entries_.begin(); entry != entries_.end(); ++entry) {
    const FaultRule rule = entry->rule;
    if (!Affects(rule.kind, answer)) continue;
    if (entry->once) {
      entries_.erase(entry);
      return rule;
    }
    if (now < entry->until) return rule;
    if (std::uniform_real_distribution<double>(0.0, 1.0)(random_) < rule.probability) {
      // A drop lasts while the line is gone; after that it must strike again.
      if (rule.kind != FaultKind::kDrop) entry->until = now + FromSeconds(rule.seconds);
      return rule;
    }
  }
  return {};
}

Answer FaultBox::Apply(FaultKind kind, Answer answer) {
  switch (kind) {
    case FaultKind::kSilent:
    case FaultKind::kDrop:
      answer.text.clear();
      break;
    case FaultKind::kWrongAnswer:
      // Any printable character except "W", which is replaced by the last one.
      answer.text = static_cast<char>('!' + Below('~' - '!'));
      if (answer.text == "W") answer.text = "~";
      break;
    case FaultKind::kShort:
      answer.text = answer.text.substr(0, Below(answer.text.size() - 1)) + '#';
      break;
    case FaultKind::kCut:
      answer.text.resize(1 + Below(answer.text.size() - 1));
      break;
    case FaultKind::kGarbage:
      answer.text = Garbled(std::move(answer.text));
      break;
    case FaultKind::kSlow:
      answer.slowdown = kSlowFactor;
      break;
    case FaultKind::kLate:
      answer.delay = kLateBy;
      break;
  }
  return answer;
}

std::size_t FaultBox::Below(std::size_t limit) {
  return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
}

// The terminator stays in place and no other "#" is added: a frame of another length is a separate fault.
std::string FaultBox::Garbled(std::string text) {
  const bool letters_only = Below(2) == 0;
  const std::size_t wrong_bytes = 1 + Below(kMostWrongBytes);
  for (std::size_t i = 0; i < wrong_bytes; ++i) {
    char& byte = text[Below(text.size() - 1)];
    if (letters_only) {
      if (IsDigit(byte)) byte = static_cast<char>('A' + Below(26));
    } else {
      byte = static_cast<char>(Below(256));
      if (byte == '#') byte = '\0';
    }
  }
  return text;
}

}  // namespace orvalis_unit
