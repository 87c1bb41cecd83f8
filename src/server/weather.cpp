#include "server/weather.h"

#include <array>
#include <limits>
#include <stdexcept>
#include <utility>

#include "base/run_time_error.h"
#include "reading/conversions.h"

namespace orvalis {
namespace {

constexpr std::string_view kName = "Orvalis";
constexpr double kKnotsPerMph = 0.8689762;

/// How a member appears in the traffic window, its gate, and how its value is read.
struct Row {
  enum class Style {
    kCallAndAnswer,   ///< one line before the value is read and one with the value
    kAnswer,          ///< one line with the value
    kStartAndEnd,     ///< one line, begun before the gate check and ended with the value
    kNotImplemented,  ///< a line, and an error
  };

  WeatherMemberInfo info;
  TrafficCategory traffic = TrafficCategory::kOther;
  Style style = Style::kCallAndAnswer;
  std::string_view call = {};
  std::string_view answer = {};  ///< before the value; for a method, its end text
  bool Settings::*gate = nullptr;
  std::string_view label = {};  ///< before the text of a closed gate
  WeatherValue (*read)(const Weather::Parts&) = nullptr;
};

/// The link as clients see it: open, or being opened for a client. In demo mode there is no link to open.
bool Connected(const Weather::Parts& parts) {
  const bool stands_in = parts.demo_mode() || parts.link.connecting();
  return parts.link.Connected() || (parts.flags.connected && stands_in);
}

/// The outcome of a client's request.
enum class Outcome { kConnect, kIgnoredForUser, kIgnoredForOthers, kDisconnect };

Outcome OutcomeOf(bool connect, const ProgramFlags& flags) {
  if (connect) return Outcome::kConnect;
  if (flags.started_by_user) return Outcome::kIgnoredForUser;
  return flags.client_count >= 2 ? Outcome::kIgnoredForOthers : Outcome::kDisconnect;
}

constexpr std::array<std::string_view, 4> kOutcomeTexts = {" Connected True (done)", " (ignored, not auto launch)",
                                                           " (ignored, not last user)", "Connected False (done)"};

/// The value of the last cycle. With an invalid averaging count there is none.
double AmbientCelsius(const Weather::Parts& parts) {
  const Message complaint = AveragingCountComplaint(parts.settings.TempsAvgCount);
  if (!complaint.empty()) throw RunTimeError(RunTimeError::kSubscriptOutOfRange, complaint);
  return parts.weather.ambient_celsius;
}

float Narrow(double value) { return static_cast<float>(value); }

using M = WeatherMember;
using T = WeatherType;
using Parts = Weather::Parts;
constexpr auto kMove = TrafficCategory::kMove;
constexpr auto kOther = TrafficCategory::kOther;
constexpr auto kTemp = TrafficCategory::kTemp;
constexpr auto kAnswer = Row::Style::kAnswer;
constexpr auto kStartAndEnd = Row::Style::kStartAndEnd;
constexpr auto kNotImplemented = Row::Style::kNotImplemented;

/// In the order of the interface. Clients know these lines: the spelling and the seemingly swapped gates are intended.
const std::array kRows = {
    Row{.info = {M::kSafe, "Safe", T::kBoolean},
        .call = "COM .Safe invoked",
        .answer = "Safe: ",
        .read = [](const Parts& p) -> WeatherValue {
          p.expire_verdict();
          return p.weather.unsafe_indicator == 0;
        }},
    Row{.info = {M::kAmbientTemperature, "AmbientTemperature", T::kSingle},
        .call = "AmbientTemperature invoked",
        .answer = "AmbientTemperature: ",
        .read = [](const Parts& p) -> WeatherValue { return Narrow(AmbientCelsius(p)); }},
    Row{.info = {M::kBarometricPressure, "BarometricPressure", T::kSingle},
        .style = kNotImplemented,
        .call = "COM .BarometricPressure invoked(not implemented)"},
    Row{.info = {M::kClouds, "Clouds", T::kSingle},
        .call = "COM .Clouds invoked",
        .answer = "Cloud Coverage: ",
        .read = [](const Parts& p) -> WeatherValue { return p.weather.clouds; }},
    Row{.info = {M::kDewPoint, "DewPoint", T::kSingle},
        .style = kNotImplemented,
        .call = "COM .DewPoint invoked(not implemented)"},
    Row{.info = {M::kInsideTemperature, "InsideTemperature", T::kSingle},
        .style = kNotImplemented,
        .call = "COM .InsideTemperature invoked(not implemented)"},
    Row{.info = {M::kName, "Name", T::kString},
        .style = kAnswer,
        .answer = "Server name:",
        .read = [](const Parts&) -> WeatherValue { return std::string(kName); }},
    Row{.info = {M::kPrecipitation, "Precipitation", T::kBoolean},
        .call = "COM .Percipitation invoked",
        .answer = "Precipitation: ",
        .read = [](const Parts& p) -> WeatherValue { return p.weather.rain > p.settings.RainThreshold; }},
    Row{.info = {M::kRelativeHumidity, "RelativeHumidity", T::kSingle},
        .call = "COM .RelativeHumididty invoked",
        .answer = "RelativeHumidity: ",
        .read = [](const Parts& p) -> WeatherValue {
          if (p.panel.humidity.empty()) throw RunTimeError(RunTimeError::kTypeMismatch, "The humidity is unknown");
          return Narrow(RoundToDecimals(TextToReal(p.panel.humidity, p.locale), 0)) / 100.0F;
        }},
    Row{.info = {M::kWindDirection, "WindDirection", T::kSingle},
        .style = kNotImplemented,
        .call = "COM .WindDirection invoked(not implemented)"},
    Row{.info = {M::kWindVelocity, "WindVelocity", T::kSingle},
        .call = "COM .WindVelocity invoked",
        .answer = "WindVelocity: ",
        .read = [](const Parts& p) -> WeatherValue {
          return Narrow(TextToReal(p.panel.wind, p.locale) * kKnotsPerMph);
        }},
    Row{.info = {M::kConnected, "Connected", T::kBoolean, true},
        .style = kAnswer,
        .answer = "Connected: ",
        .read = [](const Parts& p) -> WeatherValue { return Connected(p); }},
    Row{.info = {M::kWindSpeedCloseD, "WindSpeedCloseD", T::kLong},
        .style = kAnswer,
        .answer = "WindSpeedCloseD: ",
        .read = [](const Parts& p) -> WeatherValue { return RoundToInteger(p.settings.WindSpeedCloseD); }},
    Row{.info = {M::kWindSpeedWarn, "WindSpeedWarn", T::kDouble},
        .style = kStartAndEnd,
        .call = "WindSpeedWarn: ",
        .gate = &Settings::CanTemp,
        .label = "Property WindSpeedWarn",
        .read = [](const Parts& p) -> WeatherValue { return p.settings.StepTime; }},
    Row{.info = {M::kTemperature, "Temperature", T::kDouble},
        .traffic = kTemp,
        .style = kStartAndEnd,
        .call = "Temperature: ",
        .gate = &Settings::CanTempComp,
        .label = "Property Temperature",
        .read = [](const Parts& p) -> WeatherValue { return AmbientCelsius(p); }},
    Row{.info = {M::kHalt, "Halt", T::kNone},
        .traffic = kMove,
        .style = kStartAndEnd,
        .call = "Halt",
        .answer = " (done)",
        .gate = &Settings::CanStepSize,
        .label = "Halt"},
    Row{.info = {M::kSetupDialog, "SetupDialog", T::kNone},
        .style = kStartAndEnd,
        .call = "SetupDialog",
        .answer = " (done)"},
};

const Row& RowOf(WeatherMember member) { return kRows[static_cast<std::size_t>(member)]; }

/// The end of a call without a value: `error` is null when it succeeded.
void EndCall(const CallTimer& timer, const std::exception_ptr& error) {
  if (!timer.runs()) return;
  try {
    if (error) std::rethrow_exception(error);
    timer.End("done");
  } catch (const std::exception& raised) {
    timer.End(raised.what());
  }
}

}  // namespace

std::span<const WeatherMemberInfo> WeatherMembers() {
  static const auto members = [] {
    std::array<WeatherMemberInfo, kRows.size()> infos{};
    for (std::size_t i = 0; i < kRows.size(); ++i) infos[i] = kRows[i].info;
    return infos;
  }();
  return members;
}

Weather::Weather(const Parts& parts, std::string caller) : parts_(parts), caller_(std::move(caller)) {
  if (parts_.flags.started_by_user) return;
  if (parts_.flags.client_count == std::numeric_limits<std::int16_t>::max()) {
    throw RunTimeError(RunTimeError::kOverflow, "too many clients");
  }
  ++parts_.flags.client_count;
}

Weather::~Weather() {
  if (parts_.flags.started_by_user) return;
  if (parts_.flags.client_count >= 2) {
    --parts_.flags.client_count;
    return;
  }
  parts_.logs.CloseFullLog();
  parts_.end_program();
}

CallTimer Weather::Begin(WeatherMember member, std::string_view name) const {
  return {parts_.traffic, RowOf(member).traffic, caller_, name};
}

WeatherValue Weather::Get(WeatherMember property) const {
  const CallTimer timer = Begin(property, RowOf(property).info.name);
  try {
    WeatherValue value = Read(property);
    if (timer.runs()) timer.End(ValueText(value));
    return value;
  } catch (...) {
    EndCall(timer, std::current_exception());
    throw;
  }
}

WeatherValue Weather::Read(WeatherMember property) const {
  const Row& row = RowOf(property);
  if (row.info.type == WeatherType::kNone) throw std::logic_error("a method has no value");
  if (row.style == kStartAndEnd) {
    Write(row.traffic, Piece::kStart, row.call);
    CheckGate(property);
    WeatherValue value = row.read(parts_);
    Write(row.traffic, Piece::kEnd, ValueText(value));
    return value;
  }
  if (!row.call.empty()) Write(row.traffic, Piece::kLine, row.call);
  if (row.style == kNotImplemented) throw AutomationError(ErrNotImplemented, std::string(kNotImplementedText));
  WeatherValue value = row.read(parts_);
  Write(row.traffic, Piece::kLine, std::string(row.answer) + ValueText(value));
  return value;
}

void Weather::SetConnected(bool value, const Done& answer) {
  const CallTimer timer = Begin(WeatherMember::kConnected, value ? "Connected = True" : "Connected = False");
  const Done done = [timer, answer](const std::exception_ptr& error) {
    EndCall(timer, error);
    answer(error);
  };
  Write(kOther, Piece::kStart,
        "Link: " + std::string(BooleanToText(Connected(parts_))) + " -> " + std::string(BooleanToText(value)));
  const Outcome outcome = OutcomeOf(value, parts_.flags);
  if (outcome == Outcome::kConnect) parts_.flags.connected = true;
  if (outcome == Outcome::kDisconnect) parts_.flags.connected = false;
  Write(kOther, Piece::kEnd, kOutcomeTexts[static_cast<std::size_t>(outcome)]);

  if (outcome == Outcome::kDisconnect) parts_.connector.Disconnect();
  const bool wanted = parts_.flags.connected || parts_.connector.connecting();
  if (!wanted || parts_.demo_mode()) return FinishConnected(done);
  parts_.connector.Connect([this, done, alive = std::weak_ptr(alive_)](bool /*connected*/) {
    if (!alive.expired()) FinishConnected(done);
  });
}

void Weather::FinishConnected(const Done& done) {
  if (parts_.demo_mode() || parts_.link.Connected()) return done({});
  parts_.flags.connected = false;
  done(std::make_exception_ptr(AutomationError(ErrNotConnected, std::string(kNotConnectedText))));
}

void Weather::Halt() {
  const Row& row = RowOf(WeatherMember::kHalt);
  const CallTimer timer = Begin(WeatherMember::kHalt, row.info.name);
  Write(row.traffic, Piece::kStart, row.call);
  try {
    CheckGate(WeatherMember::kHalt);
  } catch (...) {
    EndCall(timer, std::current_exception());
    throw;
  }
  parts_.flags.moving = false;
  Write(row.traffic, Piece::kEnd, row.answer);
  EndCall(timer, {});
}

void Weather::SetupDialog(const Done& done) {
  const Row& row = RowOf(WeatherMember::kSetupDialog);
  const CallTimer timer = Begin(WeatherMember::kSetupDialog, row.info.name);
  Write(row.traffic, Piece::kStart, row.call);
  parts_.run_setup([this, &row, timer, done, alive = std::weak_ptr(alive_)](const std::exception_ptr& error) {
    if (alive.expired()) return;
    if (!error) Write(row.traffic, Piece::kEnd, row.answer);
    EndCall(timer, error);
    done(error);
  });
}

void Weather::CheckGate(WeatherMember member) const {
  const Row& row = RowOf(member);
  if (row.gate == nullptr || parts_.settings.*row.gate) return;
  throw AutomationError(ErrNotImplemented, std::string(row.label) + std::string(kNotImplementedText));
}

void Weather::Write(TrafficCategory category, Piece piece, std::string_view text) const {
  Traffic* const traffic = parts_.traffic;
  if (traffic == nullptr || !traffic->Wants(category)) return;
  switch (piece) {
    case Piece::kLine:
      return traffic->TrafficLine(text);
    case Piece::kStart:
      return traffic->TrafficStart(text);
    case Piece::kEnd:
      return traffic->TrafficEnd(text);
  }
}

std::string Weather::ValueText(const WeatherValue& value) const {
  struct ToText {
    NumberLocale locale;
    std::string operator()(bool flag) const { return std::string(BooleanToText(flag)); }
    std::string operator()(std::int32_t number) const { return std::to_string(number); }
    std::string operator()(float number) const { return GeneralText(number, locale); }
    std::string operator()(double number) const { return GeneralText(number, locale); }
    std::string operator()(const std::string& text) const { return text; }
  };
  return std::visit(ToText{parts_.locale}, value);
}

}  // namespace orvalis
