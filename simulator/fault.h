#pragma once

#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "text.h"

namespace orvalis_unit {

// What can go wrong between a request and its answer.
enum class FaultKind {
  kSilent,       // no answer
  kWrongAnswer,  // the handshake is answered with a printable character other than "W"
  kShort,        // a frame cut short, with "#" sent at the cut
  kCut,          // a frame cut short, without "#"
  kGarbage,      // a frame of the right length with wrong bytes in it
  kSlow,         // bytes sent at a tenth of the speed
  kLate,         // the answer begins kLateBy after it should
  kDrop,         // the line vanishes, as if the adapter were pulled out, and comes back
  kNames,        // a letter of a field's name is another one
  kDigits,       // some digits are other digits, which no receiver can tell from a measurement
  kNoise         // arbitrary bytes come some time after the answer, with a "#" among them now and then
};
inline constexpr std::size_t kFaultKindCount = 11;

inline constexpr Time kLateBy = std::chrono::seconds(5);  // the default
inline constexpr Time kNoiseAfter = std::chrono::milliseconds(700);
inline constexpr int kSlowFactor = 10;
inline constexpr double kDropSeconds = 5.0;  // the default

// Its name on the command line and on standard input.
std::string_view FaultName(FaultKind kind);
std::optional<FaultKind> FaultByName(std::string_view name);

struct FaultRule {
  FaultKind kind;
  double probability = 1.0;  // of striking each answer, 0..1
  double seconds = 0.0;      // how long it lasts once it strikes; 0: for that answer only
  // kLate: seconds, otherwise kLateBy. kShort, kCut: characters that are sent in all, otherwise a random number.
  // kGarbage: the character that alone is wrong, otherwise random ones.
  std::optional<double> amount{};
};

// From "KIND[=AMOUNT][:PROBABILITY[:SECONDS]]". Throws std::invalid_argument with a text for the user.
FaultRule ParseFaultRule(std::string_view text);

enum class AnswerKind { kHandshake, kFrame };

// An answer on its way to the line.
struct Answer {
  AnswerKind kind;
  std::string text;
  Time delay{};         // before its first byte
  int slowdown = 1;     // each byte takes this many times its normal time
  std::string noise{};  // sent kNoiseAfter it
};

// Decides which answers go wrong and applies the faults. The same seed gives the same faults for the same requests.
class FaultBox {
 public:
  FaultBox(const std::vector<FaultRule>& rules, std::uint32_t seed);

  // Triggers a fault for `seconds` from `now`, or without a duration for the next answer that it can affect. `amount`
  // as in FaultRule.
  void Strike(FaultKind kind, std::optional<double> seconds, Time now, std::optional<double> amount = {});

  // Ends every fault and forgets every rule.
  void Clear() { entries_.clear(); }

  // The fault that affects the answer due now, with its duration, if any. Call once per answer.
  std::optional<FaultRule> Next(AnswerKind answer, Time now);

  // The answer as it leaves the unit under the fault. kSilent and kDrop leave its text empty.
  Answer Apply(FaultKind kind, Answer answer, std::optional<double> amount = {});

 private:
  struct Entry {
    FaultRule rule;
    Time until{-1};     // active until this time
    bool once = false;  // strikes the next answer only
  };

  std::size_t Below(std::size_t limit);
  std::size_t Length(const Answer& answer, std::optional<double> amount, std::size_t random_limit);
  std::string Garbled(std::string text, std::optional<double> amount);
  std::string Misnamed(std::string text);
  std::string Miscounted(std::string text);
  std::string Noise();

  std::vector<Entry> entries_;  // the first that strikes wins
  std::mt19937 random_;
};

}  // namespace orvalis_unit
