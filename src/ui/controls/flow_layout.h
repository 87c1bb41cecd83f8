#pragma once

#include <QLayout>
#include <memory>
#include <vector>

namespace orvalis {

/// Places its items side by side, wrapping to a new row when the width is used up.
class FlowLayout : public QLayout {
 public:
  explicit FlowLayout(QWidget* parent = nullptr) : QLayout(parent) {}

  void addItem(QLayoutItem* item) override;
  [[nodiscard]] int count() const override;
  [[nodiscard]] QLayoutItem* itemAt(int index) const override;
  QLayoutItem* takeAt(int index) override;

  [[nodiscard]] Qt::Orientations expandingDirections() const override { return {}; }
  [[nodiscard]] bool hasHeightForWidth() const override { return true; }
  [[nodiscard]] int heightForWidth(int width) const override;
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSize() const override;
  void setGeometry(const QRect& area) override;

 private:
  /// Returns the height used; moves the items only if `move` is set.
  int Arrange(const QRect& area, bool move) const;

  std::vector<std::unique_ptr<QLayoutItem>> items_;
};

}  // namespace orvalis
