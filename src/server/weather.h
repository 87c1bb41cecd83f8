#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "app/program_flags.h"
#include "base/text.h"
#include "config/settings.h"
#include "logs/log_writer.h"
#include "panel/panel_model.h"
#include "reading/weather_state.h"
#include "server/error_constants.h"
#include "server/traffic.h"
#include "unit/connector.h"
#include "unit/sensor_link.h"

namespace orvalis {

/// The members of the automation object, in the order of its interface.
enum class WeatherMember {
  kSafe,
  kAmbientTemperature,
  kBarometricPressure,
  kClouds,
  kDewPoint,
  kInsideTemperature,
  kName,
  kPrecipitation,
  kRelativeHumidity,
  kWindDirection,
  kWindVelocity,
  kConnected,
  kWindSpeedCloseD,
  kWindSpeedWarn,
  kTemperature,
  kHalt,
  kSetupDialog,
};

enum class WeatherType { kNone, kBoolean, kLong, kSingle, kDouble, kString };

/// One member as the systems that put it on the wire see it.
struct WeatherMemberInfo {
  WeatherMember member;
  std::string_view name;
  WeatherType type;  ///< none: a method without arguments and result
  bool writable = false;
};

/// Every member, in the order of the interface.
[[nodiscard]] std::span<const WeatherMemberInfo> WeatherMembers();

/// A property's value; the alternative in use is that of its type.
using WeatherValue = std::variant<bool, std::int32_t, float, double, std::string>;

/// The automation object: one for each client. It has no data of its own; it answers with what the last working cycle
/// left behind, and every call and answer goes to the traffic window while that is open.
///
/// Creating and destroying it counts the clients of a program that was started for them; the end of the last one ends
/// the program. A program that a person started is not touched.
///
/// Members throw AutomationError where they cannot serve, and RunTimeError where something fails; both are for the
/// client.
class Weather {
 public:
  /// Gets what the call throws, or nothing.
  using Done = std::function<void(const std::exception_ptr& error)>;

  struct Parts {
    ProgramFlags& flags;
    const Settings& settings;
    const WeatherState& weather;
    const PanelModel& panel;
    SensorLink& link;
    Connector& connector;
    LogWriter& logs;
    Traffic* const& traffic;  ///< the traffic window's text; null while that window is closed
    NumberLocale locale;
    std::function<bool()> demo_mode;
    /// Takes the verdict in `weather` back when it is too old. Asked for before each answer to `Safe`: after the
    /// machine slept, the first call may come before the first tick.
    std::function<void()> judge_age;
    /// Runs the setup dialog, or brings the one that is open to the front; `closed` is called when it is closed, or
    /// with the reason why it could not be shown.
    std::function<void(Done closed)> run_setup;
    std::function<void()> end_program;
  };

  /// `parts` must outlive the object. Throws RunTimeError kOverflow when there are 32767 clients.
  explicit Weather(const Parts& parts);
  Weather(const Weather&) = delete;
  Weather& operator=(const Weather&) = delete;
  ~Weather();

  /// The value of a property. Throws std::logic_error for a method.
  [[nodiscard]] WeatherValue Get(WeatherMember property) const;

  /// Connects, or gives the connection up where nobody else needs it. `done` is called once, when the link is open or
  /// is known not to be: perhaps before this returns, and never after the object has gone. It gets `ErrNotConnected`
  /// when the link is not open then, which is so after a disconnect too.
  void SetConnected(bool value, const Done& done);

  void Halt();
  /// `done` is called when the dialog is closed, or with what kept it from being shown; never after the object has
  /// gone.
  void SetupDialog(const Done& done);

 private:
  /// The writes of the traffic window that members use.
  enum class Piece { kLine, kStart, kEnd };

  void Write(TrafficCategory category, Piece piece, std::string_view text) const;
  [[nodiscard]] std::string ValueText(const WeatherValue& value) const;
  /// Throws what the gate of `member` says, unless it is open.
  void PassGate(WeatherMember member) const;
  void FinishConnected(const Done& done);

  const Parts& parts_;
  std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);  ///< watched by what outlives a call
};

}  // namespace orvalis
