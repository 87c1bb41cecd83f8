#pragma once

#include <QColor>
#include <QPalette>

#include "base/colour.h"

namespace orvalis {

/// How one piece of the panel is drawn. Text in `ink` is readable on `fill`; an invalid fill lets the window show
/// through.
struct Tone {
  QColor fill;
  QColor ink;
  QColor outline;  ///< not valid: none
  double outline_width = 1.0;
  bool stale = false;  ///< the value is out of date: italic and not bold, whatever its colour

  bool operator==(const Tone&) const = default;
};

/// The colours of the panel. The model uses red, yellow, green and white; a theme maps them to what this desktop shows,
/// by day and by night.
class Theme {
 public:
  enum class Kind { kLight, kDark, kNight };

  /// Light or dark, as the window colour of `desktop` is.
  [[nodiscard]] static Theme ForDesktop(const QPalette& desktop);
  /// Black and red only, for eyes used to the dark: good is a thin outline, a warning a bold one, an alarm is inverted.
  [[nodiscard]] static Theme Night();

  [[nodiscard]] Kind kind() const { return kind_; }
  /// For the words that are read from a distance.
  [[nodiscard]] Tone Strong(Colour colour) const;
  /// For everything else: good values stay in the background, others are as strong as above.
  [[nodiscard]] Tone Quiet(Colour colour) const;
  /// As `Quiet` for a value in a line of text: white is no colour at all.
  [[nodiscard]] Tone Plain(Colour colour) const;
  /// Grey, for values that are out of date. `kCard` is for those with a shape of their own.
  enum class Shape { kCard, kText };
  [[nodiscard]] Tone Stale(Shape shape) const;

  [[nodiscard]] QColor window() const { return palette_.color(QPalette::Window); }
  [[nodiscard]] QColor text() const { return palette_.color(QPalette::WindowText); }
  [[nodiscard]] QColor hairline() const;

  [[nodiscard]] const QPalette& palette() const { return palette_; }

 private:
  Theme(Kind kind, QPalette palette) : kind_(kind), palette_(std::move(palette)) {}

  Kind kind_;
  QPalette palette_;
};

/// `first` and `second` mixed: `share` (0 to 1) of the second.
[[nodiscard]] QColor Mix(const QColor& first, const QColor& second, double share);
/// The contrast ratio of two colours, 1 to 21, after the Web Content Accessibility Guidelines.
[[nodiscard]] double ContrastRatio(const QColor& first, const QColor& second);
/// `ink`, made just dark or light enough for ordinary text to be readable on `fill`.
[[nodiscard]] QColor Readable(const QColor& ink, const QColor& fill);

}  // namespace orvalis
