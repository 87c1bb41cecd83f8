// What a line may bring, from its bytes to the verdict: the real link, polling and judgement, on a faked port. The
// answers to requests are divided by line ends; a first byte below 4 makes an event of one, see `Answer`.
#include <array>
#include <optional>
#include <string>

#include "network/readings.h"
#include "tests/fuzz/fuzz.h"
#include "tests/support/link_world.h"

namespace orvalis {
namespace {

using fuzz::Input;
using fuzz::Require;
using Field = SensorFrame::Field;

/// Whether `text` begins as every undamaged frame does, told apart without the program's own table of fields.
bool LooksWhole(std::string_view text) {
  constexpr std::string_view kForm =
      "HUM=dddd LGT=dddd R=dddd WND=dddd TP=sddddd TTP=sddddd TA=sddddd AH=d HB=d AR=d RB=d AW=d AL=d AC=d";
  if (text.size() < 117 || text[116] != '#') return false;
  for (std::size_t i = 0; i < kForm.size(); ++i) {
    const bool fits = kForm[i] == 'd'   ? text[i] >= '0' && text[i] <= '9'
                      : kForm[i] == 's' ? text[i] == '+' || text[i] == '-'
                                        : text[i] == kForm[i];
    if (!fits) return false;
  }
  return true;
}

class Line : public test::LinkWorld {
 public:
  explicit Line(Input& input) : input_(input) {
    port.writes_down = false;
    const std::uint8_t rules = input_.Byte();
    settings.VerdictRain = rules & 1;
    settings.VerdictWind = rules >> 1 & 1;
    settings.VerdictClouds = rules >> 2 & 1;
    settings.VerdictLight = rules >> 3 & 1;
    settings.KeepVerdict = rules >> 4 & 1;
    settings.SafeHoldSeconds = (rules & 32) != 0 ? 10 : 0;
    const std::uint8_t start = input_.Byte();
    settings.TempsAvgCount = start & 7;  // 0 cannot be used
    begins_safe_ = (start & 8) == 0;
    observer.Listen([this](const Observation& now, const Observer::News& news) {
      if (news.reading) digit_ = weather.unsafe_indicator;
      Check(now);
    });
    poll.Listen([this](const SensorFrame& frame) {
      if (!LooksWhole(frame.text())) return;
      good_ = frame.text();
      good_at_ = loop.TickCount();
    });
  }

  void Run() {
    port.frame = test::LiveFrame("WND=0002");  // calm
    connector.Connect();
    Pass(begins_safe_ ? 24 : 1);
    if (begins_safe_) Require(observer.Now().verdict.safe || settings.TempsAvgCount == 0, "good frames are safe");
    port.measure = [this] { return Answer(); };
    for (int i = 0; i < 60 && !input_.empty(); ++i) Pass(1);
    port.silent = true;
    port.measure = [] { return std::string(); };
    Pass(11);
    Require(!observer.Now().verdict.safe, "it is unsafe after a silence");
  }

 private:
  void Pass(int seconds) {
    for (int i = 0; i < seconds; ++i) {
      Tick(true);
      Check(observer.Now());
    }
  }

  std::string Answer() {
    std::string answer(input_.Until('\n'));
    switch (answer.empty() ? 'x' : answer[0]) {
      case 0:
        loop.Sleep(std::chrono::milliseconds(answer.size() > 1 ? 100 * static_cast<unsigned char>(answer[1]) : 0));
        return answer.substr(1);
      case 1:
        loop.CallAfter(std::chrono::milliseconds(1), [this] { port.PullOut("the adapter vanished"); });
        return answer.substr(1);
      case 2:
        port.Send(answer.substr(1));  // without being asked
        return test::LiveFrame();
      case 3:
        port.greeting = answer.substr(1);
        return test::LiveFrame();
      default:
        return answer;
    }
  }

  void Check(const Observation& now) const {
    const SafetyVerdict& verdict = now.verdict;
    Require(verdict.safe == verdict.reasons.empty(), "it is safe exactly without reasons");
    if (now.source == ReadingSource::kNone) {
      for (const ObservedValue& row : ObservedValueTable()) {
        Require(!(now.values.*row.member).has_value(), "there are no values without a reading", row.name);
      }
    }
    if (!verdict.safe) return;
    Require(now.connected, "it is safe only while connected");
    Require(good_.has_value() && loop.TickCount() - good_at_ < 10'000, "it is safe only on a whole frame of now");
    Require((*good_)[83] == '0' && (*good_)[78] == '1', "it is safe only while the unit says so", *good_);
    Require(digit_ == 0, "it is safe only if the last complete frame does not say otherwise");
    Require(now.age && now.values.rain_counts && now.values.light_counts, "what is safe has its readings");
  }

  Input& input_;
  bool begins_safe_ = false;
  std::optional<std::string> good_;  ///< the last whole frame
  std::int64_t good_at_ = 0;
  std::int32_t digit_ = WeatherState::kNoVerdict;  ///< of the last complete one, whole or not
};

}  // namespace
}  // namespace orvalis

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  orvalis::fuzz::Input input(data, size);
  orvalis::Line line(input);
  line.Run();
  return 0;
}
