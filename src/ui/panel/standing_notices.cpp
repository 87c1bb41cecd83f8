#include "ui/panel/standing_notices.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QPalette>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/controls/panel_texts.h"
#include "ui/controls/words.h"
#include "ui/panel/status_text.h"

namespace orvalis {

StandingNotices::StandingNotices(QWidget* parent) : QWidget(parent), column_(new QVBoxLayout(this)) {
  column_->setContentsMargins(0, 0, 0, 0);
  hide();
}

void StandingNotices::Show(const std::vector<StandingMessage>& messages, const Theme& theme) {
  const Tone tone = theme.Strong(Colour::kYellow);
  if (messages == shown_ && tone == tone_) return;
  shown_ = messages;
  tone_ = tone;
  while (QLayoutItem* item = column_->takeAt(0)) {
    item->widget()->hide();
    item->widget()->deleteLater();  // the click on its button may be under way
    delete item;
  }
  for (const StandingMessage& message : messages) AddRow(message, theme);
  setVisible(!messages.empty());
}

void StandingNotices::AddRow(const StandingMessage& message, const Theme& theme) {
  auto* row = new QFrame(this);
  row->setAutoFillBackground(true);
  row->setFrameShape(QFrame::Box);
  QPalette colours = row->palette();
  if (tone_.fill.isValid()) colours.setColor(QPalette::Window, tone_.fill);
  colours.setColor(QPalette::WindowText, tone_.ink);
  row->setPalette(colours);

  auto* text = new StatusText(row);
  colours.setColor(QPalette::Text, tone_.ink);
  text->setPalette(colours);
  text->SetNight(theme.kind() == Theme::Kind::kNight);
  text->setAccessibleName(tr("Notice"));
  text->Show(Translated(message.text));
  auto* line = new QHBoxLayout(row);
  line->addWidget(text, 1);
  if (message.to_acknowledge) {
    auto* button = new QPushButton(tr("&Acknowledge"), row);
    button->setObjectName("cmdAcknowledge");
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, cause = message.cause] { emit Acknowledged(cause); });
    line->addWidget(button, 0, Qt::AlignTop);
  }
  column_->addWidget(row);
}

}  // namespace orvalis
