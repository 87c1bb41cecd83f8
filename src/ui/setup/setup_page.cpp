#include "ui/setup/setup_page.h"

#include <QApplication>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QScrollArea>
#include <algorithm>

namespace orvalis {
namespace {

/// The tab already shows the title and the border.
class PageFrame : public QGroupBox {
 protected:
  void paintEvent(QPaintEvent* /*event*/) override {}
};

/// Puts two columns below each other rather than have them scroll sideways.
class PageScroll : public QScrollArea {
 public:
  explicit PageScroll(QBoxLayout* columns) : columns_(columns) {
    // The tabulator key scrolls by itself, the letter of a label does not.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* /*before*/, QWidget* now) {
      if (now != nullptr && widget()->isAncestorOf(now)) ensureWidgetVisible(now);
    });
  }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    int widest = 0;
    for (int i = 0; i < columns_->count(); ++i) widest = std::max(widest, columns_->itemAt(i)->minimumSize().width());
    const QMargins margins = columns_->contentsMargins();
    const int needed = 2 * widest + columns_->spacing() + margins.left() + margins.right();
    columns_->setDirection(needed <= viewport()->width() ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    QScrollArea::resizeEvent(event);
  }

 private:
  QBoxLayout* columns_;
};

}  // namespace

SetupPage MakeSetupPage(const char* frame_name, const QString& title, SetupPage::Columns columns) {
  auto* frame = new PageFrame;
  auto* row = new QHBoxLayout(frame);
  auto* scroll = new PageScroll(row);
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setFocusPolicy(Qt::NoFocus);
  frame->setObjectName(frame_name);
  frame->setAccessibleName(title);
  frame->setFlat(true);
  auto* left = new QVBoxLayout;
  auto* right = columns == SetupPage::Columns::kTwo ? new QVBoxLayout : nullptr;
  row->addLayout(left, 1);
  if (right != nullptr) row->addLayout(right, 1);
  scroll->setWidget(frame);
  return {scroll, left, right};
}

void SetupPage::Finish() const {
  if (right != nullptr) right->addStretch(1);
  left->addStretch(1);
}

}  // namespace orvalis
