#include "ui/controls/path_button.h"

#include <QPainter>
#include <QStyleOptionButton>

#include "base/text.h"
#include "ui/controls/panel_texts.h"
#include "ui/controls/words.h"

namespace orvalis {

PathButton::PathButton(Shows shows, QWidget* parent) : QPushButton(parent), shows_(shows) {
  setAutoDefault(false);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  SetPath({});
}

void PathButton::SetPath(const std::string& path) {
  path_ = path;
  const std::string_view shown = shows_ == Shows::kName ? FileName(path_) : std::string_view(path_);
  setText(shown.empty() ? Words::tr("Choose…") : ToQString(shown).replace("&", "&&"));
  setToolTip(path_.empty() ? Words::tr("Nothing is chosen yet") : ToQString(path_));
  update();
}

QSize PathButton::sizeHint() const {
  constexpr int kDefaultCharacters = 20;
  return {fontMetrics().averageCharWidth() * kDefaultCharacters, QPushButton::sizeHint().height()};
}

QSize PathButton::minimumSizeHint() const {
  constexpr int kAroundText = 20;
  return {fontMetrics().horizontalAdvance(Words::tr("Choose…")) + kAroundText, QPushButton::minimumSizeHint().height()};
}

void PathButton::paintEvent(QPaintEvent* /*event*/) {
  QStyleOptionButton option;
  initStyleOption(&option);
  const QRect contents = style()->subElementRect(QStyle::SE_PushButtonContents, &option, this);
  constexpr int kMargin = 4;
  // The end of a path tells the most, and both ends of a name.
  option.text = fontMetrics().elidedText(option.text, shows_ == Shows::kName ? Qt::ElideMiddle : Qt::ElideLeft,
                                         contents.width() - 2 * kMargin, Qt::TextShowMnemonic);
  QPainter painter(this);
  style()->drawControl(QStyle::CE_PushButton, &option, &painter, this);
}

}  // namespace orvalis
