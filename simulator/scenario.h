#pragma once

#include <array>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "field.h"

namespace orvalis_unit {

// An invalid scenario; what() begins with the file and the line.
class ScenarioError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The weather over one period, which repeats. docs/simulator.md describes the file format.
class Scenario {
 public:
  // `name` identifies the text in messages. Throws ScenarioError.
  static Scenario Parse(std::string_view text, const std::string& name);

  // As Parse, from a file; an unreadable file is also a ScenarioError.
  static Scenario Load(const std::string& path);

  // The value of `field` at `seconds` (0 or more) from the start, in the field's plain unit; nothing when the scenario
  // leaves the field to the unit.
  std::optional<double> At(Field field, double seconds) const;

  // `seconds` modulo the period: at least 0 and less than Period(), or 0 when the scenario is constant.
  double Fold(double seconds) const;

  // Seconds.
  double Period() const { return period_; }

 private:
  struct Point {
    double time;
    std::optional<double> value;  // nothing: "auto"
    int line;
  };
  using Track = std::vector<Point>;

  class Reader;

  std::array<Track, kFieldCount> tracks_;
  double period_ = 0.0;
};

}  // namespace orvalis_unit
