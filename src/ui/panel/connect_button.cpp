#include "ui/panel/connect_button.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>
#include <QStyle>
#include <algorithm>
#include <climits>
#include <cmath>

#include "ui/controls/text_fit.h"
#include "ui/controls/words.h"

namespace orvalis {
namespace {

// In units of the ordinary letters' size.
constexpr double kPadding = 0.6;
constexpr double kLamp = 0.75;
constexpr double kRadius = 0.45;

constexpr const char* kLongestCaption = "AutoConnect Enabled Will attempt reconnect in 120 secs";

/// The first "c" of the caption is its mnemonic: every caption that the program sets has one, so that the key stays
/// the same whatever the button says.
QString WithMnemonic(QString caption) {
  const qsizetype position = caption.indexOf('c', 0, Qt::CaseInsensitive);
  const qsizetype escaped_before = position < 0 ? 0 : caption.left(position).count('&');
  caption.replace('&', "&&");
  if (position >= 0) caption.insert(position + escaped_before, '&');
  return caption;
}

}  // namespace

ConnectButton::ConnectButton(QWidget* parent) : QPushButton(parent) {
  setCheckable(true);
  setCursor(Qt::PointingHandCursor);
  setAttribute(Qt::WA_Hover);
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

void ConnectButton::Show(const Content& content) {
  if (content == content_) return;
  const int old_height = heightForWidth(width());
  const bool other_caption = content.caption != content_.caption;
  content_ = content;
  if (other_caption) {
    setText(WithMnemonic(content_.caption));
    setAccessibleName(content_.caption);
  }
  setChecked(content_.on);
  setEnabled(content_.enabled);
  if (heightForWidth(width()) != old_height) updateGeometry();
  update();
}

double ConnectButton::LeftOfText() const { return (2 * kPadding + kLamp) * PixelSize(font()); }

QRectF ConnectButton::TextArea() const {
  const double padding = kPadding * PixelSize(font());
  return QRectF(rect()).adjusted(LeftOfText(), padding / 2, -padding, -padding / 2);
}

QSize ConnectButton::sizeHint() const {
  const double width = LeftOfText() + QFontMetricsF(font()).horizontalAdvance(Fixed("Attempting to connect")) +
                       2 * kPadding * PixelSize(font());
  return {static_cast<int>(std::ceil(width)), heightForWidth(static_cast<int>(width))};
}

QSize ConnectButton::minimumSizeHint() const {
  return {static_cast<int>(10 * PixelSize(font())), heightForWidth(INT_MAX / 2)};
}

int ConnectButton::heightForWidth(int width) const {
  const double padding = kPadding * PixelSize(font());
  const QFontMetricsF metrics(font());
  const QRectF room(0, 0, std::max(1.0, width - LeftOfText() - padding), 10000);
  const auto height_of = [&](const QString& caption) {
    return metrics.boundingRect(room, Qt::TextWordWrap | Qt::TextShowMnemonic, caption).height();
  };
  const double needed = std::max(height_of(text()), height_of(kLongestCaption));
  return static_cast<int>(std::ceil(std::max(needed, metrics.height() * 1.4) + padding));
}

void ConnectButton::paintEvent(QPaintEvent*) {
  const double size = PixelSize(font());
  Tone tone = content_.tone;
  if (isEnabled() && tone.fill.isValid()) {
    if (isDown()) {
      tone.fill = Mix(tone.fill, tone.ink, 0.18);
    } else if (underMouse()) {
      tone.fill = Mix(tone.fill, tone.ink, 0.07);
    }
  }
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const double inset = std::max(0.5, tone.outline_width / 2);
  const QColor outline = tone.outline.isValid() ? tone.outline : Mix(tone.fill, tone.ink, 0.25);
  painter.setBrush(tone.fill);
  painter.setPen(QPen(outline, tone.outline_width, isEnabled() ? Qt::SolidLine : Qt::DashLine));
  painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), kRadius * size, kRadius * size);
  if (hasFocus()) {
    const double ring = inset + 2.5;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(tone.ink, 1.2, Qt::DotLine));
    painter.drawRoundedRect(QRectF(rect()).adjusted(ring, ring, -ring, -ring), kRadius * size, kRadius * size);
  }

  // Filled when on, a ring when off: some users cannot tell green from yellow.
  const double lamp = kLamp * size;
  painter.setPen(QPen(tone.ink, 1.5));
  painter.setBrush(content_.on ? QBrush(tone.ink) : QBrush(Qt::NoBrush));
  painter.drawEllipse(QRectF(kPadding * 1.3 * size, (height() - lamp) / 2, lamp, lamp));

  const bool underline = style()->styleHint(QStyle::SH_UnderlineShortcut, nullptr, this) != 0;
  painter.setPen(tone.ink);
  painter.drawText(
      TextArea(),
      Qt::AlignVCenter | Qt::AlignLeft | Qt::TextWordWrap | (underline ? Qt::TextShowMnemonic : Qt::TextHideMnemonic),
      text());
}

void ConnectButton::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange) updateGeometry();
  QPushButton::changeEvent(event);
}

}  // namespace orvalis
