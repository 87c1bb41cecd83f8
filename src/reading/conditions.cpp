#include "reading/conditions.h"

namespace orvalis {

Word CloudWord(double difference, std::int32_t part_cloudy, std::int32_t full_cloudy) {
  if (difference >= part_cloudy) return {"Clear", Colour::kGreen};
  if (difference <= full_cloudy) return {"Cloudy", Colour::kRed};
  return {"PCloudy", Colour::kYellow};
}

double CloudCoverPercent(std::string_view cloud_word) {
  if (cloud_word == "Clear") return 0;
  return cloud_word == "PCloudy" ? 50 : 100;
}

float CloudsFigure(double sky, double threshold, std::int32_t part_cloudy, std::int32_t full_cloudy) {
  const double distance = static_cast<double>(part_cloudy) - full_cloudy;
  if (sky > distance + threshold) return 1.0F;
  if (sky > threshold) return 0.5F;
  return 0.0F;
}

Word WindWord(double mph, double close, double warn) {
  if (mph > close) return {"Windy", Colour::kRed};
  if (mph > warn) return {"Breeze", Colour::kYellow};
  return {"Calm", Colour::kGreen};
}

Word RainWord(std::int32_t count, std::int32_t threshold) {
  if (count > std::int64_t{threshold} + kDampBand) return {"Rain", Colour::kRed};
  if (count > threshold) return {"Damp", Colour::kYellow};
  return {"Dry", Colour::kGreen};
}

Word LightWord(std::int32_t count, std::int32_t threshold) {
  if (count > threshold) return {"Dark", Colour::kGreen};
  if (count > kDuskAbove) return {"Dusk", Colour::kYellow};
  return {"Day", Colour::kRed};
}

Word HeaterWord(std::int32_t heater_digit) {
  if (heater_digit == 1) return {"Y", Colour::kRed};
  if (heater_digit == 2) return {"?", Colour::kYellow};
  return {"N", Colour::kGreen};
}

Word RelayWord(std::int32_t relay_digit, std::int32_t heater_digit) {
  if (relay_digit == 1) return {"Y", Colour::kRed};
  if (heater_digit == 2) return {"?", Colour::kYellow};
  return {"N", Colour::kGreen};
}

std::int32_t UnsafeIndicator(const SensorFrame& frame) {
  const std::string_view digit = frame.Cut(SensorFrame::Field::kRb);
  if (digit.size() != 1 || digit[0] < '0' || digit[0] > '9') return -1;
  // Any 117 characters with a "#" at the end are a complete line, and noise must not read as "safe".
  if (!frame.HasName(SensorFrame::Field::kRb)) return -1;
  return digit[0] - '0';
}

}  // namespace orvalis
