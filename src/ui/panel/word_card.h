#pragma once

#include <QLabel>
#include <QString>

#include "ui/controls/theme.h"

namespace orvalis {

/// A coloured field with one word as large as fits, a caption above and a detail below it; or, as a strip, the caption
/// to its left and the detail to its right. It draws itself, so that a new word costs one repaint and no layout; it is
/// a label only for screen readers, which get its accessible name.
class WordCard : public QLabel {
  Q_OBJECT
 public:
  enum class Form { kHero, kTile, kStrip };

  struct Content {
    QString word;
    QString detail;
    QString meaning;  ///< for the tool tip and screen readers
    Tone tone;
    QString line = {};  ///< for tool tip and screen readers: word and detail as one line; empty: as they are

    bool operator==(const Content&) const = default;
  };

  /// `longest_word` is the widest that will be shown: the letters keep their size when the word changes.
  WordCard(Form form, QString caption, QString longest_word, QWidget* parent);

  /// Repaints only when `content` has changed.
  void Show(const Content& content);
  [[nodiscard]] const Content& content() const { return content_; }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void PaintStacked(QPainter& painter, QRectF area) const;
  void PaintStrip(QPainter& painter, QRectF area) const;
  [[nodiscard]] QSize SizeForWord(double word_size) const;
  [[nodiscard]] QFont WordFont() const;

  Form form_;
  QString caption_;
  QString longest_word_;
  Content content_;
};

}  // namespace orvalis
