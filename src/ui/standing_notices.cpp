#include "ui/standing_notices.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPalette>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/panel_texts.h"

namespace orvalis {
namespace {

/// A path has no blanks to break it at, and the window must stay as narrow as the user makes it.
QString Breakable(QString text) {
  const QChar break_here(0x200B);
  return text.replace("/", QString("/") + break_here).replace("\\", QString("\\") + break_here);
}

}  // namespace

StandingNotices::StandingNotices(QWidget* parent) : QWidget(parent), column_(new QVBoxLayout(this)) {
  column_->setContentsMargins(0, 0, 0, 0);
  hide();
}

void StandingNotices::Show(const std::vector<StandingMessage>& messages, const Tone& tone) {
  if (messages == shown_ && tone == tone_) return;
  shown_ = messages;
  tone_ = tone;
  while (QLayoutItem* item = column_->takeAt(0)) {
    item->widget()->hide();
    item->widget()->deleteLater();  // the click on its button may be under way
    delete item;
  }
  for (const StandingMessage& message : messages) AddRow(message, tone);
  setVisible(!messages.empty());
}

void StandingNotices::AddRow(const StandingMessage& message, const Tone& tone) {
  auto* row = new QFrame(this);
  row->setObjectName("standingNotice");
  row->setAutoFillBackground(true);
  QPalette colours = row->palette();
  colours.setColor(QPalette::Window, tone.fill.isValid() ? tone.fill : colours.color(QPalette::Window));
  colours.setColor(QPalette::WindowText, tone.ink);
  row->setPalette(colours);
  row->setFrameShape(QFrame::Box);

  auto* text = new QLabel(Breakable(ToQString(message.text)), row);
  text->setTextFormat(Qt::PlainText);
  text->setWordWrap(true);
  text->setTextInteractionFlags(Qt::TextSelectableByMouse);
  text->setAccessibleName(ToQString(message.text));
  auto* line = new QHBoxLayout(row);
  line->addWidget(text, 1);
  if (message.to_acknowledge) {
    auto* button = new QPushButton("&Acknowledge", row);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, cause = message.cause] { emit Acknowledged(cause); });
    line->addWidget(button, 0, Qt::AlignTop);
  }
  column_->addWidget(row);
}

}  // namespace orvalis
