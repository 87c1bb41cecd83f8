#include "ui/controls/screen_place.h"

#include <QScreen>
#include <QWidget>
#include <algorithm>

namespace orvalis {
namespace {

/// What stays free at the edges: some systems count a part of the frame as invisible, and leave it out.
constexpr int kMargin = 8;

QRect Space(const QScreen& screen) { return screen.availableGeometry().adjusted(kMargin, kMargin, -kMargin, -kMargin); }

}  // namespace

void MoveOntoScreen(QWidget& window) {
  const QScreen* screen = window.screen();
  if (screen == nullptr) return;
  const QRect space = Space(*screen);
  const QRect frame = window.frameGeometry();
  const QPoint place(std::max(space.left(), std::min(frame.left(), space.right() + 1 - frame.width())),
                     std::max(space.top(), std::min(frame.top(), space.bottom() + 1 - frame.height())));
  if (place != frame.topLeft()) window.move(place);
}

void PlaceBeside(QWidget& window, const QWidget* other, QSizeF usual, double least_width) {
  const QScreen* screen = other != nullptr ? other->screen() : window.screen();
  if (screen == nullptr) return window.resize(usual.toSize());
  const QRect space = Space(*screen);
  constexpr int kTitle = 32;  // of the window's frame, which is not known yet
  const int height = std::min(static_cast<int>(usual.height()), space.height() - kTitle);
  const int least = std::min(static_cast<int>(least_width), space.width());
  if (other == nullptr || !other->isVisible()) {
    return window.resize(std::min(static_cast<int>(usual.width()), space.width()), height);
  }
  const QRect taken = other->frameGeometry();
  const int right = space.right() - taken.right() - kMargin;
  const int left = taken.left() - space.left() - kMargin;
  const int width = std::clamp(std::max(left, right), least, std::max(least, static_cast<int>(usual.width())));
  window.resize(width, height);
  const int beside = right >= left ? std::min(taken.right() + 1 + kMargin, space.right() + 1 - width)
                                   : std::max(taken.left() - kMargin - width, space.left());
  window.move(beside, std::clamp(taken.top(), space.top(), std::max(space.top(), space.bottom() - kTitle - height)));
}

int RoomBelow(const QWidget& window) {
  const QScreen* screen = window.screen();
  return screen == nullptr ? 0 : std::max(0, Space(*screen).bottom() - window.frameGeometry().bottom());
}

}  // namespace orvalis
