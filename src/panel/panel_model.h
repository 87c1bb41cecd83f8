#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/clock.h"
#include "base/colour.h"
#include "base/message.h"
#include "base/text.h"
#include "history/trend.h"
#include "panel/sun_text.h"
#include "panel/verdict_banner.h"
#include "reading/display_units.h"
#include "reading/weather_state.h"
#include "unit/link_state.h"

namespace orvalis {

/// What the panel goes on saying until its cause is gone, one message for each cause.
struct StandingMessage {
  enum class Cause { kSettingsLost, kAveragingCount, kNetwork };
  Cause cause;
  Message text;
  bool to_acknowledge = false;  ///< it stands until a person has acknowledged it

  [[nodiscard]] bool operator==(const StandingMessage& other) const = default;
};

/// What the panel shows, as texts and colours. The window draws it; clients and uploads read it too.
struct PanelModel {
  struct ConnectControl {
    std::string caption = "Click to connect";
    bool checked = false;
    bool enabled = true;
    Colour background = Colour::kYellow;
  };

  /// Of the temperatures below and of `shown`.
  DisplayUnits units;
  // Texts in the format "0.0" with the locale's separator. Empty where there is no value yet.
  std::string ambient;
  std::string body;
  std::string dew_point;
  std::string sky = "999";
  std::string clear_sky;
  std::string difference;    ///< always in degrees Celsius, as the cloud limits
  std::string humidity;      ///< percent
  std::string wind = "0.0";  ///< always miles per hour, as the two that follow: clients read them
  std::string wind_average = "0.0";
  std::string wind_gust = "0.0";
  /// In the chosen units: what the window shows in place of the texts above that have one unit for everybody.
  struct {
    std::string difference;
    std::string wind = "0.0";
    std::string wind_average = "0.0";
    std::string wind_gust = "0.0";
  } shown;
  std::string rain;   ///< counts
  std::string light;  ///< counts
  Colour humidity_background = Colour::kWhite;
  Colour sky_background = Colour::kWhite;
  std::string averaging;  ///< "Averageing 3 of 10", "Final Average 5.0"; empty while every frame is an average

  Word cloud;
  Word rain_word;
  Word wind_word;
  Word light_word;
  Word heater;
  Word relay;
  Colour rain_indicator = Colour::kWhite;
  VerdictBanner banner;
  Trends trends;  ///< none while the values are out of date
  SunText sun;    ///< empty while no place is set

  ConnectControl connect;
  Message status;  ///< what the program is doing, or what went wrong
  std::vector<StandingMessage> standing;
  bool demo = false;                  ///< the values are simulated
  bool stale = true;                  ///< the values are out of date: shown grey
  std::optional<CivilTime> fresh_at;  ///< when the values were last fresh

  /// A numeric field of the panel: below 2.0 it chooses the humidity's other temperature curve.
  std::string humidity_selector = "200";

  /// Shows `message` in the place of the one with the same cause; with an empty text there is none.
  void Stand(StandingMessage message);
  /// The text that stands for `cause`, or none.
  [[nodiscard]] Message StandingText(StandingMessage::Cause cause) const;
};

/// Brings the connect control up to the state of the link. `seconds_left` is the time until the next attempt to
/// reconnect, if one is waited for.
void ShowLink(LinkState state, std::optional<std::int16_t> seconds_left, PanelModel& panel);

/// Brings the values, words and colours of `panel` up to `state`.
void ShowReadings(const WeatherState& state, const DisplayUnits& units, NumberLocale locale, PanelModel& panel);

/// The averaging line after one frame: how far the block is, or its value when it was completed; empty where there is
/// nothing to average.
[[nodiscard]] std::string AveragingText(bool completed, std::int32_t samples_taken, std::int32_t block_size,
                                        const std::string& ambient);

/// The value of the humidity selector for one pass, rounded to a whole number, halves to the even neighbour. An empty
/// field is filled with "200" and counts as 0 once.
[[nodiscard]] double TakeHumiditySelector(PanelModel& panel);

}  // namespace orvalis
