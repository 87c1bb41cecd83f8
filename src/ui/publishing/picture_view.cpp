#include "ui/publishing/picture_view.h"

#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QSaveFile>

#include "base/run_time_error.h"
#include "ui/controls/panel_texts.h"
#include "ui/controls/words.h"

namespace orvalis {

PictureView::PictureView(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void PictureView::SetPicture(const QPixmap& picture) {
  picture_ = picture;
  update();
}

void PictureView::Save(const std::string& path, const char* format) const {
  constexpr int kJpegQuality = 90;  // the letters stay sharp
  QSaveFile file(ToQString(path));
  QString reason = "no picture";
  if (!picture_.isNull()) {
    file.open(QIODevice::WriteOnly);
    QImageWriter writer(&file, format);
    writer.setQuality(kJpegQuality);
    const bool written = file.isOpen() && writer.write(picture_.toImage().convertToFormat(QImage::Format_RGB32));
    if (written && file.commit()) return;
    reason = file.error() != QFileDevice::NoError ? file.errorString() : writer.errorString();
  }
  throw RunTimeError(RunTimeError::kPathFileAccess,
                     Message::Of("cannot write %1: %2").With(path, reason.toStdString()));
}

QSize PictureView::sizeHint() const {
  constexpr int kLetters = 14;
  const int side = fontMetrics().height() * kLetters;
  return {side, side};
}

QSize PictureView::minimumSizeHint() const { return sizeHint() / 2; }

void PictureView::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  // The window's palette: with a style sheet in force, a control that no rule names loses what it inherited.
  const QPalette colours = window()->palette();
  painter.fillRect(rect(), colours.color(QPalette::Base));
  painter.setPen(colours.color(QPalette::Mid));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
  const QRect inside = rect().adjusted(2, 2, -2, -2);
  if (picture_.isNull()) {
    painter.setPen(colours.color(QPalette::Text));
    painter.drawText(inside, Qt::AlignCenter | Qt::TextWordWrap, Words::tr("No picture yet"));
    return;
  }
  const QSizeF size = picture_.deviceIndependentSize().scaled(inside.size(), Qt::KeepAspectRatio);
  QRectF place(QPointF(), size);
  place.moveCenter(QRectF(inside).center());
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawPixmap(place, picture_, QRectF(picture_.rect()));
}

}  // namespace orvalis
