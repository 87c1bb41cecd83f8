#pragma once

#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "text.h"

namespace orvalis_unit {

// What can go wrong between a question and its answer.
enum class FaultKind {
  kSilent,       // no answer
  kWrongAnswer,  // the handshake answered with another printable character than "W"
  kShort,        // a frame cut somewhere, its "#" sent right there
  kCut,          // a frame cut somewhere, and no "#" at all
  kGarbage,      // a frame of the right length with wrong bytes in it
  kSlow,         // the bytes a tenth as fast
  kLate,         // the answer begins kLateBy after it should
  kDrop          // the line vanishes, as if the adapter were pulled out, and comes back
};
inline constexpr std::size_t kFaultKindCount = 8;

inline constexpr Time kLateBy = std::chrono::seconds(5);
inline constexpr int kSlowFactor = 10;
inline constexpr double kDropSeconds = 5.0;  // when a drop says nothing else

// The word for it on the command line and on standard input.
std::string_view FaultName(FaultKind kind);
std::optional<FaultKind> FaultByName(std::string_view name);

struct FaultRule {
  FaultKind kind;
  double probability = 1.0;  // of striking at any one answer, 0..1
  double seconds = 0.0;      // how long it lasts once it struck; 0: for that answer
};

// From "KIND[:PROBABILITY[:SECONDS]]". Throws std::invalid_argument with a text for the user.
FaultRule ParseFaultRule(std::string_view text);

enum class AnswerKind { kHandshake, kFrame };

// An answer on its way to the line.
struct Answer {
  AnswerKind kind;
  std::string text;
  Time delay{};      // before its first byte
  int slowdown = 1;  // a byte takes this many times its proper time
};

// Decides which answers go wrong, and spoils them. The same seed gives the same faults for the same questions.
class FaultBox {
 public:
  FaultBox(const std::vector<FaultRule>& rules, std::uint32_t seed);

  // Brings a fault about: for `seconds` from `now`, or for the next answer that it can befall when there is no
  // duration.
  void Strike(FaultKind kind, std::optional<double> seconds, Time now);

  // Ends every fault and forgets every rule.
  void Clear() { entries_.clear(); }

  // The fault that befalls the answer due now, with its duration, if any does. Each call is one answer.
  std::optional<FaultRule> Next(AnswerKind answer, Time now);

  // The answer as it leaves the unit under the fault. kSilent and kDrop leave its text empty.
  Answer Apply(FaultKind kind, Answer answer);

 private:
  struct Entry {
    FaultRule rule;
    Time until{-1};     // under way up to here
    bool once = false;  // strikes at the next answer and is gone
  };

  std::size_t Below(std::size_t limit);
  std::string Garbled(std::string text);

  std::vector<Entry> entries_;  // the first that strikes, wins
  std::mt19937 random_;
};

}  // namespace orvalis_unit
