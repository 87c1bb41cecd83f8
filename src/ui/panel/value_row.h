#pragma once

#include <QLabel>
#include <QString>

#include "history/trend.h"
#include "ui/controls/theme.h"

namespace orvalis {

/// One line of the values: a label, a number aligned to the right and its unit. It draws itself, for the same reasons
/// as WordCard.
class ValueRow : public QLabel {
  Q_OBJECT
 public:
  struct Content {
    QString label;
    QString value;
    QString unit;
    QString meaning;  ///< for the tool tip and screen readers
    Tone tone;
    QColor label_ink;
    QColor hairline;  ///< the line below; not valid: none

    bool operator==(const Content&) const = default;
  };

  explicit ValueRow(QWidget* parent);

  /// Repaints only when `content` has changed.
  void Show(const Content& content);
  [[nodiscard]] const Content& content() const { return content_; }

  /// Draws an arrow before the number, or none. Nothing moves for it.
  void ShowTrend(Trend trend);
  [[nodiscard]] Trend trend() const { return trend_; }

  /// Sets the width of the unit column to that of `widest`, the same for all rows whose numbers are to line up.
  void SetWidestUnit(const QString& widest);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  [[nodiscard]] double UnitWidth() const;
  [[nodiscard]] double ValueWidth() const;
  [[nodiscard]] QFont ValueFont() const;

  void Describe();
  void PaintTrend(QPainter& painter, const QRectF& area) const;

  Content content_;
  Trend trend_ = Trend::kNone;
  QString widest_unit_;
};

}  // namespace orvalis
