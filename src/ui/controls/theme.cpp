#include "ui/controls/theme.h"

#include <algorithm>
#include <cmath>

namespace orvalis {
namespace {

// The lowest ratio that the guidelines ask for, for text of ordinary size.
constexpr double kReadableContrast = 4.5;

// At night the red channel is all there is. Red on black reaches a ratio of 5.25 at most, so that text has hardly
// anything to be dimmed by: outlines and inversion tell the states apart.
constexpr int kNightInk = 255;
constexpr int kNightStaleInk = 238;

QColor Red(int strength) { return QColor(strength, 0, 0); }

double Luminance(const QColor& colour) {
  const auto linear = [](double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

Tone NightTone(Colour colour) {
  switch (colour) {
    case Colour::kRed:
      return {Red(kNightInk), Qt::black, Red(kNightInk), 1.0};
    case Colour::kYellow:
      return {Red(45), Red(kNightInk), Red(kNightInk), 2.5};
    case Colour::kGreen:
      return {Qt::black, Red(kNightInk), Red(140), 1.0};
    case Colour::kWhite:
      break;
  }
  return {Qt::black, Red(kNightInk), Red(80), 1.0};
}

QPalette NightPalette() {
  QPalette palette;
  for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
    const QColor ink = Red(group == QPalette::Disabled ? 150 : kNightInk);
    for (const auto role : {QPalette::Window, QPalette::Base, QPalette::AlternateBase, QPalette::Button,
                            QPalette::ToolTipBase, QPalette::Shadow, QPalette::Dark, QPalette::HighlightedText}) {
      palette.setColor(group, role, Qt::black);
    }
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::BrightText,
                            QPalette::ToolTipText, QPalette::Link, QPalette::LinkVisited, QPalette::Highlight}) {
      palette.setColor(group, role, ink);
    }
    palette.setColor(group, QPalette::PlaceholderText, Red(kNightStaleInk));
    palette.setColor(group, QPalette::Light, Red(90));
    palette.setColor(group, QPalette::Midlight, Red(70));
    palette.setColor(group, QPalette::Mid, Red(60));
  }
  return palette;
}

}  // namespace

Theme Theme::ForDesktop(const QPalette& desktop) {
  const double window = Luminance(desktop.color(QPalette::Window));
  const double text = Luminance(desktop.color(QPalette::WindowText));
  return {window < text ? Kind::kDark : Kind::kLight, desktop};
}

Theme Theme::Night() { return {Kind::kNight, NightPalette()}; }

Tone Theme::Strong(Colour colour) const {
  if (kind_ == Kind::kNight) return NightTone(colour);
  const bool dark = kind_ == Kind::kDark;
  switch (colour) {
    case Colour::kRed:
      return {dark ? QColor(0xb3, 0x2d, 0x27) : QColor(0xb4, 0x23, 0x1e), Qt::white, {}};
    case Colour::kYellow:
      return {dark ? QColor(0xd9, 0xab, 0x1e) : QColor(0xf5, 0xc8, 0x3c), QColor(0x2a, 0x20, 0x00), {}};
    case Colour::kGreen:
      return {dark ? QColor(0x1d, 0x6f, 0x3a) : QColor(0x1f, 0x7a, 0x40), Qt::white, {}};
    case Colour::kWhite:
      break;
  }
  const QColor fill = Mix(window(), text(), 0.05);
  return {fill, Readable(text(), fill), hairline()};
}

Tone Theme::Quiet(Colour colour) const {
  if (colour == Colour::kGreen && kind_ == Kind::kLight) {
    return {QColor(0xdc, 0xf0, 0xe1), QColor(0x12, 0x4d, 0x28), QColor(0x9c, 0xcf, 0xab)};
  }
  if (colour == Colour::kGreen && kind_ == Kind::kDark) {
    return {QColor(0x17, 0x3a, 0x24), QColor(0xb4, 0xe8, 0xc4), QColor(0x2f, 0x69, 0x43)};
  }
  return Strong(colour);
}

Tone Theme::Plain(Colour colour) const {
  if (colour == Colour::kWhite) return {{}, text(), {}};
  return Quiet(colour);
}

Tone Theme::Stale(Shape shape) const {
  Tone tone = shape == Shape::kCard ? Strong(Colour::kWhite) : Plain(Colour::kWhite);
  const QColor ground = tone.fill.isValid() ? tone.fill : window();
  tone.ink = kind_ == Kind::kNight ? Red(kNightStaleInk) : Readable(Mix(text(), ground, 0.4), ground);
  tone.stale = true;
  return tone;
}

QColor Theme::hairline() const { return kind_ == Kind::kNight ? Red(60) : Mix(window(), text(), 0.14); }

QColor Mix(const QColor& first, const QColor& second, double share) {
  const auto channel = [share](int from, int to) { return static_cast<int>(std::lround(from + share * (to - from))); };
  return {channel(first.red(), second.red()), channel(first.green(), second.green()),
          channel(first.blue(), second.blue())};
}

double ContrastRatio(const QColor& first, const QColor& second) {
  constexpr double kFlare = 0.05;
  const auto [darker, lighter] = std::minmax({Luminance(first), Luminance(second)});
  return (lighter + kFlare) / (darker + kFlare);
}

QColor Readable(const QColor& ink, const QColor& fill) {
  const QColor limit = ContrastRatio(Qt::black, fill) > ContrastRatio(Qt::white, fill) ? Qt::black : Qt::white;
  constexpr int kSteps = 20;
  for (int step = 0; step < kSteps; ++step) {
    const QColor candidate = Mix(ink, limit, static_cast<double>(step) / kSteps);
    if (ContrastRatio(candidate, fill) >= kReadableContrast) return candidate;
  }
  return limit;
}

}  // namespace orvalis
