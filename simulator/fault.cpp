#include "fault.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>

namespace orvalis_unit {
namespace {

struct FaultRow {
  FaultKind kind;
  std::string_view name;
  bool hits_handshake;
  bool hits_frame;
  double highest_amount = 0.0;  // 0: it takes none
};

// Far more than any program waits for.
constexpr double kLatest = 86400.0;
// What a frame cut short has at most.
constexpr double kMostOfAFrame = 116.0;

constexpr std::array<FaultRow, kFaultKindCount> kTable = {{
    {FaultKind::kSilent, "silent", true, true},
    {FaultKind::kWrongAnswer, "wrong-answer", true, false},
    {FaultKind::kShort, "short", false, true, kMostOfAFrame},
    {FaultKind::kCut, "cut", false, true, kMostOfAFrame},
    {FaultKind::kGarbage, "garbage", false, true, kMostOfAFrame},
    {FaultKind::kSlow, "slow", true, true},
    {FaultKind::kLate, "late", true, true, kLatest},
    {FaultKind::kDrop, "drop", true, true},
    {FaultKind::kNames, "names", false, true},
    {FaultKind::kDigits, "digits", false, true},
    {FaultKind::kNoise, "noise", true, true},
}};

// The most wrong bytes in a garbled frame, and the most of noise.
constexpr std::size_t kMostWrongBytes = 20;
constexpr std::size_t kMostWrongDigits = 5;

bool Affects(FaultKind kind, AnswerKind answer) {
  const FaultRow& row = kTable[static_cast<std::size_t>(kind)];
  return answer == AnswerKind::kHandshake ? row.hits_handshake : row.hits_frame;
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

// Which characters of an answer `is_meant`; a frame always has some, another answer may have none.
template <typename IsMeant>
std::vector<std::size_t> Places(std::string_view text, IsMeant is_meant) {
  std::vector<std::size_t> places;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (is_meant(text[i])) places.push_back(i);
  }
  return places;
}

double AmountOf(const FaultRow& row, std::string_view text) {
  if (row.highest_amount == 0.0) {
    throw std::invalid_argument("the fault " + std::string(row.name) + " takes no number");
  }
  const auto amount = ParseNumber(text);
  if (!amount || *amount < 1.0 || *amount > row.highest_amount || std::floor(*amount) != *amount) {
    throw std::invalid_argument(Quoted(text) + " is not a whole number from 1 to " + NumberText(row.highest_amount));
  }
  return *amount;
}

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
  const auto equals = parts[0].find('=');
  const auto kind = FaultByName(parts[0].substr(0, equals));
  if (!kind) {
    std::string message = "unknown fault " + Quoted(parts[0]) + "; the faults are";
    for (const FaultRow& row : kTable) message.append(" ").append(row.name);
    throw std::invalid_argument(message);
  }
  if (parts.size() > 3) throw std::invalid_argument("a fault is KIND[=NUMBER][:PROBABILITY[:SECONDS]]");

  FaultRule rule{.kind = *kind, .seconds = *kind == FaultKind::kDrop ? kDropSeconds : 0.0};
  if (equals != std::string_view::npos) {
    rule.amount = AmountOf(kTable[static_cast<std::size_t>(*kind)], parts[0].substr(equals + 1));
  }
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

void FaultBox::Strike(FaultKind kind, std::optional<double> seconds, Time now, std::optional<double> amount) {
  std::erase_if(entries_, [now](const Entry& entry) {
    return entry.rule.probability == 0.0 && !entry.once && entry.until <= now;
  });
  const FaultRule rule{.kind = kind, .probability = 0.0, .seconds = seconds.value_or(0.0), .amount = amount};
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

Answer FaultBox::Apply(FaultKind kind, Answer answer, std::optional<double> amount) {
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
      answer.text = answer.text.substr(0, Length(answer, amount, answer.text.size() - 1) - 1) + '#';
      break;
    case FaultKind::kCut:
      answer.text.resize(Length(answer, amount, answer.text.size() - 1));
      break;
    case FaultKind::kGarbage:
      answer.text = Garbled(std::move(answer.text), amount);
      break;
    case FaultKind::kSlow:
      answer.slowdown = kSlowFactor;
      break;
    case FaultKind::kLate:
      answer.delay = amount ? FromSeconds(*amount) : kLateBy;
      break;
    case FaultKind::kNames:
      answer.text = Misnamed(std::move(answer.text));
      break;
    case FaultKind::kDigits:
      answer.text = Miscounted(std::move(answer.text));
      break;
    case FaultKind::kNoise:
      answer.noise = Noise();
      break;
  }
  return answer;
}

std::size_t FaultBox::Below(std::size_t limit) {
  return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
}

// At least 1, and less than the whole answer.
std::size_t FaultBox::Length(const Answer& answer, std::optional<double> amount, std::size_t random_limit) {
  if (amount) return std::min(static_cast<std::size_t>(*amount), answer.text.size() - 1);
  return 1 + Below(random_limit);
}

std::string FaultBox::Misnamed(std::string text) {
  const auto letters = Places(text, IsLetter);
  char& letter = text[letters[Below(letters.size())]];
  const char wrong = static_cast<char>('A' + Below(26));
  letter = wrong == letter ? '?' : wrong;
  return text;
}

std::string FaultBox::Miscounted(std::string text) {
  const auto digits = Places(text, IsDigit);
  const std::size_t count = 1 + Below(kMostWrongDigits);
  for (std::size_t i = 0; i < count; ++i) {
    text[digits[Below(digits.size())]] = static_cast<char>('0' + Below(10));
  }
  return text;
}

std::string FaultBox::Noise() {
  std::string noise(1 + Below(kMostWrongBytes), '\0');
  for (char& byte : noise) byte = static_cast<char>(Below(256));
  if (Below(2) == 0) noise.back() = '#';
  return noise;
}

// The terminator stays in place and no other "#" is added: a frame of another length is a separate fault.
std::string FaultBox::Garbled(std::string text, std::optional<double> amount) {
  if (amount) {
    char& byte = text[std::min(static_cast<std::size_t>(*amount), text.size() - 1) - 1];
    // Any other byte but the terminator.
    byte = static_cast<char>(static_cast<unsigned char>(byte) + 1 + Below(255));
    if (byte == '#') byte = '$';
    return text;
  }
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
