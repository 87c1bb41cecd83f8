#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "app/safety_alerts.h"
#include "app/verdict_records.h"
#include "history/history_recorder.h"
#include "logs/verdict_log.h"
#include "network/alpaca/alpaca_server.h"
#include "network/curves.h"
#include "network/mqtt/mqtt_publisher.h"
#include "network/readings.h"
#include "platform/sqlite/sqlite_history.h"
#include "simulator/sensor_unit.h"
#include "tests/support/link_world.h"

namespace orvalis::test {

/// A broker that takes everything, and goes away when it is told to.
class PatientBroker : public network::MqttClient {
 public:
  explicit PatientBroker(EventLoop& loop) : loop_(loop) {}

  void Connect(const network::MqttAccess& /*access*/, User& user) override {
    user_ = &user;
    Later([](User& told) { told.Connected(); });
  }
  void Subscribe(const std::string& /*topic*/) override {}
  void Send(const network::MqttMessage& message) override { bytes += message.payload.size(); }
  void Ask() override {
    Later([](User& told) { told.Answered(); });
  }
  void Close() override { user_ = nullptr; }
  void Abort() override { user_ = nullptr; }

  void GoAway() {
    Later([this](User& told) {
      user_ = nullptr;
      told.Failed({.failure = network::MqttFailure::kClosed});
    });
  }

  std::uint64_t bytes = 0;

 private:
  void Later(std::function<void(User& user)> tell) {
    loop_.CallAfter(std::chrono::milliseconds(1), [this, tell = std::move(tell)] {
      if (user_ != nullptr) tell(*user_);
    });
  }

  EventLoop& loop_;
  User* user_ = nullptr;
};

/// Somebody who reads the stream of readings.
class StreamReader : public network::EventChannel::Reader {
 public:
  void Push(std::string_view pushed) override { bytes += pushed.size(); }
  std::uint64_t bytes = 0;
};

/// The whole program without its windows and its sockets, on one end of a made-up line, and the simulated unit on the
/// other. Its files are real.
class YearWorld : public LinkWorld {
 public:
  YearWorld(std::filesystem::path folder, std::vector<orvalis_unit::FaultRule> faults);

  /// One tick of the timers and of the clock, `seconds` apart, with what the line brought meanwhile.
  void Pass(std::int64_t seconds);
  /// The machine sleeps: its clock goes on, and nothing else.
  void SleepFor(std::chrono::seconds duration) { loop.Sleep(duration); }
  /// The unit's power is gone for so long.
  void SwitchOff(std::chrono::seconds duration);
  void SetClockAhead(std::chrono::seconds by) { clock_ahead_ += by; }

  /// As a client of the HTTP front asks. Returns the answer's text.
  std::string Ask(std::string_view path, std::string_view query = "");

  /// Somebody reads the stream and the broker takes what is published, or nobody does.
  void SetAudience(bool present);

  std::uint64_t frames = 0;        ///< that the program could use
  std::uint64_t safe_ticks = 0;    ///< at which everybody was told safe
  std::uint64_t wrongly_safe = 0;  ///< of these, while the unit's relay had been on, or nothing had come, for too long
  StreamReader reader;
  PatientBroker broker{loop};

 private:
  [[nodiscard]] orvalis_unit::Time UnitTime() const { return std::chrono::milliseconds(loop.TickCount()); }
  /// Notes what is on its way from the unit.
  std::string Watched(std::string bytes);
  /// Compares what is said with what the unit knows.
  void CheckVerdict();

  std::filesystem::path folder_;
  std::chrono::seconds clock_ahead_{0};
  std::int64_t unsafe_since_ = 0;  ///< the relay is on since then, by the loop's count; 0 when it is off
  std::int64_t sent_at_ = 0;       ///< the last frame in full length
  std::int64_t off_until_ = 0;     ///< the unit
  orvalis_unit::Recorder nowhere_;
  orvalis_unit::SensorUnit unit_;
  network::EventChannel* stream_ = nullptr;
  Station station_{.name = "Dome",
                   .uuid = "5f7b0b6e-7a37-4c0e-9d5c-3d9f3a1f2b11",
                   .observing_conditions_id = "a",
                   .safety_monitor_id = "b"};
  SqliteHistory history_store_;
  HistoryRecorder history_;
  VerdictLog verdict_log_;
  VerdictRecords verdict_records_;
  SafetyAlerts safety_alerts_;
  network::Resources resources_;
  network::AlpacaServer alpaca_;
  network::Readings readings_;
  network::Curves curves_;
  network::MqttPublisher mqtt_;
};

}  // namespace orvalis::test
