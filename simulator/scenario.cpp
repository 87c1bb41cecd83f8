#include "scenario.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <fstream>
#include <iterator>
#include <utility>

#include "text.h"

namespace orvalis_unit {

// Reads the lines of one file, tracking the line number for messages.
class Scenario::Reader {
 public:
  explicit Reader(std::string name) : name_(std::move(name)) {}

  Scenario Read(std::string_view text) {
    int line = 0;
    while (!text.empty()) {
      ++line;
      const auto end = std::min(text.find('\n'), text.size());
      ReadLine(text.substr(0, end), line);
      text.remove_prefix(std::min(end + 1, text.size()));
    }
    Complete();
    return std::move(scenario_);
  }

 private:
  [[noreturn]] void Fail(int line, const std::string& message) const {
    throw ScenarioError(name_ + ":" + std::to_string(line) + ": " + message);
  }

  double TimeOf(std::string_view word, int line) const {
    const auto time = ParseTime(word);
    if (!time) Fail(line, Quoted(word) + " is not a time; write H:MM, H:MM:SS or a number of seconds");
    return *time;
  }

  void ReadLine(std::string_view text, int line) {
    const auto words = Words(text.substr(0, text.find('#')));
    if (words.empty()) return;
    if (words[0] == "period") {
      ReadPeriod(words, line);
    } else {
      ReadPoint(words, line);
    }
  }

  void ReadPeriod(const std::vector<std::string_view>& words, int line) {
    if (words.size() != 2) Fail(line, "period takes one time");
    if (period_line_ != 0) Fail(line, "period was given in line " + std::to_string(period_line_));
    scenario_.period_ = TimeOf(words[1], line);
    if (scenario_.period_ <= 0.0) Fail(line, "period must be longer than 0");
    period_line_ = line;
  }

  void ReadPoint(const std::vector<std::string_view>& words, int line) {
    if (words.size() != 3) Fail(line, "expected: time field value");
    const double time = TimeOf(words[0], line);
    const auto field = FieldByName(words[1]);
    if (!field) Fail(line, "unknown field " + Quoted(words[1]));
    Point point{time, std::nullopt, line};
    const bool is_auto = RowOf(*field).kind == FieldKind::kFlag && words[2] == "auto";
    if (!is_auto) {
      try {
        point.value = ParseFieldValue(*field, words[2]);
      } catch (const std::invalid_argument& error) {
        Fail(line, error.what());
      }
    }
    scenario_.tracks_[Index(*field)].push_back(point);
  }

  // Checks that need all lines.
  void Complete() {
    double last_time = 0.0;
    for (const FieldRow& row : FieldTable()) {
      Track& track = scenario_.tracks_[Index(row.field)];
      std::ranges::stable_sort(track, {}, &Point::time);
      const auto twice = std::ranges::adjacent_find(track, {}, &Point::time);
      if (twice != track.end()) {
        Fail(std::next(twice)->line,
             std::string(row.name) + " was given for the same time in line " + std::to_string(twice->line));
      }
      if (track.empty()) continue;
      last_time = std::max(last_time, track.back().time);
      if (period_line_ != 0 && track.back().time > scenario_.period_) {
        Fail(track.back().line, "this is after the end of the period, " + TimeText(scenario_.period_));
      }
    }
    if (period_line_ == 0) scenario_.period_ = last_time;
  }

  std::string name_;
  Scenario scenario_;
  int period_line_ = 0;  // 0: not given yet
};

Scenario Scenario::Parse(std::string_view text, const std::string& name) { return Reader(name).Read(text); }

Scenario Scenario::Load(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  const bool is_open = file.is_open();
  std::string text;
  for (std::string line; std::getline(file, line);) text += line + '\n';
  if (!is_open || file.bad()) throw ScenarioError(path + ": " + std::strerror(errno));
  return Parse(text, path);
}

double Scenario::Fold(double seconds) const { return period_ > 0.0 ? std::fmod(seconds, period_) : 0.0; }

std::optional<double> Scenario::At(Field field, double seconds) const {
  const Track& track = tracks_[Index(field)];
  if (track.empty()) return {};
  const double time = Fold(seconds);
  const auto after = std::ranges::upper_bound(track, time, {}, &Point::time);
  const bool is_flag = RowOf(field).kind == FieldKind::kFlag;
  if (after == track.begin()) return is_flag ? std::nullopt : after->value;
  const Point& left = *std::prev(after);
  if (after == track.end() || is_flag) return left.value;

  // No interpolation to or from a missing reading.
  if (left.value == kNoReading || after->value == kNoReading) return left.value;
  const double share = (time - left.time) / (after->time - left.time);
  return *left.value + share * (*after->value - *left.value);
}

}  // namespace orvalis_unit
