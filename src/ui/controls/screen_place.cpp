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

int RoomBelow(const QWidget& window) {
  const QScreen* screen = window.screen();
  return screen == nullptr ? 0 : std::max(0, Space(*screen).bottom() - window.frameGeometry().bottom());
}

}  // namespace orvalis
