#include "panel/panel_model.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvalis {

void PanelModel::Stand(StandingMessage message) {
  const auto found = std::ranges::find(standing, message.cause, &StandingMessage::cause);
  if (message.text.empty()) {
    if (found != standing.end()) standing.erase(found);
  } else if (found != standing.end()) {
    *found = std::move(message);
  } else {
    standing.push_back(std::move(message));
  }
}

Message PanelModel::StandingText(StandingMessage::Cause cause) const {
  const auto found = std::ranges::find(standing, cause, &StandingMessage::cause);
  return found != standing.end() ? found->text : Message();
}

void ShowLink(LinkState state, std::optional<std::int16_t> seconds_left, PanelModel& panel) {
  using enum LinkState;
  PanelModel::ConnectControl& control = panel.connect;
  control.checked = state == kGreeted || state == kConnected;
  control.background = control.checked ? Colour::kGreen : Colour::kYellow;
  switch (state) {
    case kConnecting:
    case kGreeted:
      control.caption = "Attempting to connect";
      break;
    case kConnected:
      control.caption = "Connected";
      break;
    case kDisconnected:
      control.caption = seconds_left
                            ? "AutoConnect Enabled Will attempt reconnect in " + std::to_string(*seconds_left) + " secs"
                            : "Click to connect";
      break;
  }
}

void ShowReadings(const WeatherState& state, const DisplayUnits& units, NumberLocale locale, PanelModel& panel) {
  const auto tenths = [&](double value) { return FormatFixed(value, 1, locale); };
  const auto temperature = [&](double celsius) { return tenths(units.Temperature(celsius)); };
  const auto known = [](bool is_known, std::string text) { return is_known ? std::move(text) : std::string(); };

  panel.units = units;
  panel.ambient = known(state.ambient_known, temperature(state.ambient_celsius));
  panel.body = known(state.body_known, temperature(state.body_celsius));
  panel.dew_point = known(state.ambient_known, temperature(state.dew_point_celsius));
  panel.clear_sky = known(state.ambient_known, temperature(state.clear_sky_celsius));
  panel.difference = known(state.ambient_known, tenths(state.difference_celsius));
  panel.humidity = known(state.ambient_known, tenths(state.humidity_percent));
  panel.sky = temperature(state.sky_celsius);
  panel.wind = tenths(state.wind_mph);
  panel.wind_average = tenths(state.wind_average_mph);
  panel.wind_gust = tenths(state.wind_gust_mph);
  panel.shown = {.difference = known(state.ambient_known, tenths(units.Difference(state.difference_celsius))),
                 .wind = tenths(units.Wind(state.wind_mph)),
                 .wind_average = tenths(units.Wind(state.wind_average_mph)),
                 .wind_gust = tenths(units.Wind(state.wind_gust_mph))};
  panel.rain = std::to_string(state.rain);
  panel.light = FormatFixed(state.light, 0, locale);
  panel.humidity_background = state.humidity_faulty ? Colour::kRed : Colour::kWhite;
  panel.sky_background = state.sky_faulty ? Colour::kRed : Colour::kWhite;

  // The sky word compares with the ambient temperature, and means nothing without one.
  panel.cloud = state.ambient_known ? state.cloud : Word{};
  panel.rain_word = state.rain_word;
  panel.wind_word = state.wind_word;
  panel.light_word = state.light_word;
  panel.heater = state.heater;
  panel.relay = state.relay;
  panel.rain_indicator = state.raining ? Colour::kRed : Colour::kGreen;
  panel.demo = state.from_demo;
}

std::string AveragingText(bool completed, std::int32_t samples_taken, std::int32_t block_size,
                          const std::string& ambient) {
  if (block_size == 1 || !BlockAverages::Allows(block_size)) return "";
  if (completed) return "Final Average " + ambient;
  return "Averageing " + std::to_string(samples_taken) + " of " + std::to_string(block_size);
}

double TakeHumiditySelector(PanelModel& panel) {
  if (panel.humidity_selector.empty()) {
    panel.humidity_selector = "200";
    return 0;
  }
  return std::nearbyint(Val(panel.humidity_selector));
}

}  // namespace orvalis
