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

/// One member, for the D-Bus and COM servers.
struct WeatherMemberInfo {
  WeatherMember member;
  std::string_view name;
  WeatherType type;  ///< kNone: a method without arguments and result
  bool writable = false;
};

/// Every member, in the order of the interface.
[[nodiscard]] std::span<const WeatherMemberInfo> WeatherMembers();

/// A property's value, held as the alternative of its type.
using WeatherValue = std::variant<bool, std::int32_t, float, double, std::string>;

/// The automation object, one per client. It has no data of its own: it answers with the results of the last working
/// cycle, and writes every call and answer to the traffic window while that is open.
///
/// Its instances count the clients of a program that was started for them; destroying the last one ends the program. A
/// program started by a person is unaffected.
///
/// Members throw AutomationError when they are unavailable and RunTimeError when something fails; both are passed to
/// the client.
class Weather {
 public:
  /// Receives the exception of the call, or null.
  using Done = std::function<void(const std::exception_ptr& error)>;

  struct Parts {
    ProgramFlags& flags;
    const Settings& settings;
    const WeatherState& weather;
    const PanelModel& panel;
    SensorLink& link;
    Connector& connector;
    LogWriter& logs;
    Traffic* const& traffic;  ///< the traffic window's text; null while the window is closed
    NumberLocale locale;
    std::function<bool()> demo_mode;
    /// Withdraws the verdict in `weather` when it is too old. Called before each answer to `Safe`: after sleep, the
    /// first call may arrive before the first tick.
    std::function<void()> expire_verdict;
    /// Runs the setup dialog, or brings an open one to the front; `closed` is called when it is closed, or with the
    /// reason why it could not be shown.
    std::function<void(Done closed)> run_setup;
    std::function<void()> end_program;
  };

  /// `parts` must outlive the object. `caller` is what the traffic window calls the client. Throws RunTimeError
  /// kOverflow when there are 32767 clients.
  explicit Weather(const Parts& parts, std::string caller = {});
  Weather(const Weather&) = delete;
  Weather& operator=(const Weather&) = delete;
  ~Weather();

  [[nodiscard]] const std::string& caller() const { return caller_; }

  /// The value of a property. Throws std::logic_error for a method.
  [[nodiscard]] WeatherValue Get(WeatherMember property) const;

  /// Connects, or disconnects if no other client needs the link. `done` is called once, when the link is open or known
  /// not to be: possibly before this returns, never after the object is destroyed. It receives `ErrNotConnected` when
  /// the link is not open, which includes a disconnect.
  void SetConnected(bool value, const Done& done);

  void Halt();
  /// `done` is called when the dialog is closed, or with the reason why it could not be shown; never after the object
  /// is destroyed.
  void SetupDialog(const Done& done);

 private:
  /// The traffic window operations that members use.
  enum class Piece { kLine, kStart, kEnd };

  [[nodiscard]] WeatherValue Read(WeatherMember property) const;
  /// The beginning of a call, for the table of the traffic window, which calls it `name`.
  [[nodiscard]] CallTimer Begin(WeatherMember member, std::string_view name) const;
  void Write(TrafficCategory category, Piece piece, std::string_view text) const;
  [[nodiscard]] std::string ValueText(const WeatherValue& value) const;
  /// Throws ErrNotImplemented if the gate of `member` is closed.
  void CheckGate(WeatherMember member) const;
  void FinishConnected(const Done& done);

  const Parts& parts_;
  std::string caller_;
  std::shared_ptr<const bool> alive_ =
      std::make_shared<const bool>(true);  ///< tracks the object's lifetime for callbacks
};

}  // namespace orvalis
