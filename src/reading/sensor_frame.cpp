#include "reading/sensor_frame.h"

#include <array>

#include "base/text.h"

namespace orvalis {
namespace {

/// The position of a field, counted from 1, its width in characters, and the text before it.
struct Place {
  std::size_t position;
  std::size_t width;
  std::string_view name;
};

// In the order of SensorFrame::Field.
constexpr std::array<Place, 14> kPlaces{{
    {5, 4, "HUM="},
    {14, 4, " LGT="},
    {21, 4, " R="},
    {30, 4, " WND="},
    {38, 6, " TP="},
    {49, 6, " TTP="},
    {59, 6, " TA="},
    {69, 1, " AH="},
    {74, 1, " HB="},
    {79, 1, " AR="},
    {84, 1, " RB="},
    {89, 1, " AW="},
    {94, 1, " AL="},
    {99, 1, " AC="},
}};

/// A field of this width has a sign and digits, any other digits alone.
constexpr std::size_t kSignedWidth = 6;

}  // namespace

bool SensorFrame::IsComplete() const {
  return text_.size() >= kTerminatorPosition && text_[kTerminatorPosition - 1] == kTerminator;
}

std::string_view SensorFrame::Cut(Field field) const {
  const Place place = kPlaces[static_cast<std::size_t>(field)];
  const std::string_view line = text_;
  if (place.position > line.size()) return {};
  return line.substr(place.position - 1, place.width);
}

bool SensorFrame::HasName(Field field) const {
  const Place& place = kPlaces[static_cast<std::size_t>(field)];
  const std::string_view before = text().substr(0, place.position - 1);
  return before.size() == place.position - 1 && before.ends_with(place.name);
}

bool SensorFrame::IsWhole(Field field) const {
  const std::size_t width = kPlaces[static_cast<std::size_t>(field)].width;
  std::string_view digits = Cut(field);
  if (!HasName(field) || digits.size() != width) return false;
  if (width == kSignedWidth) {
    if (digits.front() != '+' && digits.front() != '-') return false;
    digits.remove_prefix(1);
  }
  return digits.find_first_not_of("0123456789") == std::string_view::npos;
}

bool SensorFrame::IsUndamaged() const {
  for (std::size_t i = 0; i < kPlaces.size(); ++i) {
    if (!IsWhole(static_cast<Field>(i))) return false;
  }
  return true;
}

std::int32_t SensorFrame::Integer(Field field) const { return ValInteger(Cut(field)); }

double SensorFrame::Number(Field field) const { return Val(Cut(field)); }

double SensorFrame::Celsius(Field field) const { return Number(field) / 100; }

}  // namespace orvalis
