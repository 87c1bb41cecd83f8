#include "ui/controls/flow_layout.h"

#include <algorithm>

namespace orvalis {

void FlowLayout::addItem(QLayoutItem* item) { items_.emplace_back(item); }

int FlowLayout::count() const { return static_cast<int>(items_.size()); }

QLayoutItem* FlowLayout::itemAt(int index) const {
  return index >= 0 && index < count() ? items_[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index) {
  if (index < 0 || index >= count()) return nullptr;
  QLayoutItem* item = items_[static_cast<std::size_t>(index)].release();
  items_.erase(items_.begin() + index);
  return item;
}

int FlowLayout::heightForWidth(int width) const { return Arrange(QRect(0, 0, width, 0), false); }

QSize FlowLayout::sizeHint() const {
  int width = 0;
  int height = 0;
  for (const auto& item : items_) {
    width += item->sizeHint().width() + (width > 0 ? spacing() : 0);
    height = std::max(height, item->sizeHint().height());
  }
  return {width, height};
}

QSize FlowLayout::minimumSize() const {
  QSize size;
  for (const auto& item : items_) size = size.expandedTo(item->minimumSize());
  return size;
}

void FlowLayout::setGeometry(const QRect& area) {
  QLayout::setGeometry(area);
  Arrange(area, true);
}

int FlowLayout::Arrange(const QRect& area, bool move) const {
  int x = area.x();
  int y = area.y();
  int row_height = 0;
  for (const auto& item : items_) {
    const QSize size = item->sizeHint().boundedTo({std::max(area.width(), 1), QLAYOUTSIZE_MAX});
    if (x > area.x() && x + size.width() > area.x() + area.width()) {
      x = area.x();
      y += row_height + spacing();
      row_height = 0;
    }
    if (move) item->setGeometry({{x, y}, size});
    x += size.width() + spacing();
    row_height = std::max(row_height, size.height());
  }
  return y + row_height - area.y();
}

}  // namespace orvalis
