#include "ui/panel/tray_icon.h"

#include <QAction>
#include <QIcon>
#include <QMenu>
#include <QPainter>
#include <QPixmap>
#include <QSystemTrayIcon>

#include "ui/controls/panel_texts.h"
#include "ui/controls/words.h"

namespace orvalis {
namespace {

/// The colour of the verdict and a sign of its own for each, because some users cannot tell green from red: a tick, a
/// cross, and three dots while it is a matter of seconds or of simulated values.
QPixmap Picture(VerdictBanner::State state, const Tone& tone, int side) {
  QPixmap picture(side, side);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  constexpr double kGrid = 16;
  painter.scale(side / kGrid, side / kGrid);
  painter.setBrush(tone.fill);
  painter.setPen(QPen(tone.outline.isValid() ? tone.outline : tone.fill, 1));
  painter.drawRoundedRect(QRectF(0.5, 0.5, 15, 15), 3.5, 3.5);
  painter.setPen(QPen(tone.ink, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  switch (state) {
    case VerdictBanner::State::kSafe:
      painter.drawPolyline(QPolygonF{{4, 8.5}, {7, 11.5}, {12, 5}});
      break;
    case VerdictBanner::State::kSafeDemo:
    case VerdictBanner::State::kSafeSoon:
      for (const double x : {4.2, 8.0, 11.8}) painter.drawPoint(QPointF(x, 8));
      break;
    case VerdictBanner::State::kUnsafe:
      painter.drawLine(QPointF(5, 5), QPointF(11, 11));
      painter.drawLine(QPointF(11, 5), QPointF(5, 11));
      break;
  }
  return picture;
}

QIcon IconOf(VerdictBanner::State state, const Tone& tone) {
  QIcon icon;
  for (const int side : {16, 22, 24, 32, 48, 64}) icon.addPixmap(Picture(state, tone, side));
  return icon;
}

}  // namespace

TrayIcon::TrayIcon(const QList<QAction*>& entries) : menu_(std::make_unique<QMenu>()) { menu_->addActions(entries); }

TrayIcon::~TrayIcon() = default;

void TrayIcon::ShowWhenThereIsATray() {
  // A panel of the desktop may start later than this program, or again. Asking costs a round trip to the display.
  constexpr int kLooksBetween = 10;
  if (icon_ || --until_next_look_ > 0) return;
  until_next_look_ = kLooksBetween;
  if (!QSystemTrayIcon::isSystemTrayAvailable()) return;
  icon_ = std::make_unique<QSystemTrayIcon>(IconOf(state_, tone_));
  icon_->setToolTip(tip_);
  icon_->setContextMenu(menu_.get());
  connect(icon_.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
    if (reason != QSystemTrayIcon::Context) emit Clicked();
  });
  connect(icon_.get(), &QSystemTrayIcon::messageClicked, this, &TrayIcon::Clicked);
  icon_->show();
}

void TrayIcon::Show(const VerdictBanner& banner, const Theme& theme, bool messages) {
  const std::optional<TrayMessage> message = model_.Take(banner, WindowLanguage());
  const Tone tone = theme.Strong(ColourOf(banner.state));
  const QString tip = ToQString(TrayTip(banner));
  if (tone != tone_ || banner.state != state_) {
    tone_ = tone;
    state_ = banner.state;
    if (icon_) icon_->setIcon(IconOf(state_, tone_));
  }
  if (tip != tip_) {
    tip_ = tip;
    if (icon_) icon_->setToolTip(tip_);
  }
  ShowWhenThereIsATray();
  if (!message || !icon_ || !messages || theme.kind() == Theme::Kind::kNight) return;
  icon_->showMessage(ToQString(message->title), ToQString(message->text),
                     message->safe ? QSystemTrayIcon::Information : QSystemTrayIcon::Warning);
}

}  // namespace orvalis
