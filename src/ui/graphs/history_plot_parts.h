#pragma once

#include <qcustomplot.h>

#include <QString>
#include <array>
#include <optional>
#include <vector>

#include "history/curve.h"
#include "history/history.h"
#include "ui/graphs/graph_kind.h"

namespace orvalis {

/// A curve with markers at intervals.
class CurveGraph : public QCPGraph {
 public:
  CurveGraph(QCPAxis* time_axis, QCPAxis* value_axis, const CurveKind& kind, int place);

  [[nodiscard]] const CurveKind& kind() const { return kind_; }
  void SetColours(const QColor& line, const QColor& ground);
  /// Uses a finer line for a curve that goes up and down in every column: much faster, with the same look. Call when
  /// the data or the axes have changed.
  void FitLine();
  void DrawMarker(QCPPainter* painter, QPointF place) const;

 protected:
  void draw(QCPPainter* painter) override;
  void drawLegendIcon(QCPPainter* painter, const QRectF& rect) const override;

 private:
  const CurveKind& kind_;
  int place_;  ///< among the curves, so that the markers of two do not cover each other
  QCPScatterStyle marker_;
};

/// The conditions and the verdict, in the background.
class ConditionLayer : public QCPLayerable {
 public:
  explicit ConditionLayer(QCPAxisRect* rect);

  void SetTheme(Theme::Kind theme) { theme_ = theme; }
  void SetBands(Band band, std::vector<TimeRange> places) {
    places_[static_cast<std::size_t>(band)] = std::move(places);
  }
  [[nodiscard]] const std::vector<TimeRange>& places(Band band) const {
    return places_[static_cast<std::size_t>(band)];
  }

  /// Fills `rect` with `look`.
  static void Paint(QCPPainter* painter, const QRectF& rect, const BandLook& look);

 protected:
  void applyDefaultAntialiasingHint(QCPPainter* painter) const override { painter->setAntialiasing(false); }
  void draw(QCPPainter* painter) override;
  [[nodiscard]] QRect clipRect() const override { return rect_->rect(); }

 private:
  QCPAxisRect* rect_;
  Theme::Kind theme_ = Theme::Kind::kLight;
  std::array<std::vector<TimeRange>, kBands> places_;
};

/// Where the panel's words change: thin lines, each with its text.
class LimitLayer : public QCPLayerable {
 public:
  struct Line {
    QString text;
    bool text_below = false;  ///< there is another line close above
    bool on_right = false;    ///< the text is at the right end
    QCPAxis* axis = nullptr;
    std::vector<CurvePoint> points;  ///< times in milliseconds; a value that is no number interrupts the line
  };

  explicit LimitLayer(QCPAxisRect* rect);

  void SetColours(const QColor& ink, const QColor& ground) {
    ink_ = ink;
    ground_ = ground;
  }
  void SetLines(std::vector<Line> lines) { lines_ = std::move(lines); }
  [[nodiscard]] const std::vector<Line>& lines() const { return lines_; }

 protected:
  void applyDefaultAntialiasingHint(QCPPainter* painter) const override { painter->setAntialiasing(false); }
  void draw(QCPPainter* painter) override;
  [[nodiscard]] QRect clipRect() const override { return rect_->rect(); }

 private:
  void DrawText(QCPPainter* painter, const Line& line, QPointF begin) const;

  QCPAxisRect* rect_;
  std::vector<Line> lines_;
  QColor ink_;
  QColor ground_;
};

/// A condition or verdict in the legend.
class ConditionLegendItem : public QCPAbstractLegendItem {
 public:
  ConditionLegendItem(QCPLegend* parent, Band band);

  void SetTheme(Theme::Kind theme) { theme_ = theme; }

 protected:
  void draw(QCPPainter* painter) override;
  [[nodiscard]] QSize minimumOuterSizeHint() const override;

 private:
  [[nodiscard]] QSize TextSize() const;

  Band band_;
  QString text_;
  Theme::Kind theme_ = Theme::Kind::kLight;
};

/// The values at the pointer: a line at their time, a dot on each curve and a box with the figures. It has its own
/// layer, which is painted without the rest.
class Readout : public QCPLayerable {
 public:
  struct Row {
    QString text;
    const CurveGraph* curve = nullptr;  ///< none: the row applies to all of them
    std::optional<QPointF> dot;
  };

  explicit Readout(QCPAxisRect* rect);

  void SetColours(const QColor& ink, const QColor& ground) {
    ink_ = ink;
    ground_ = ground;
  }
  /// `x` is the position of the line, in pixels.
  void Show(double x, std::vector<Row> rows) {
    x_ = x;
    rows_ = std::move(rows);
  }
  void Hide() { rows_.clear(); }
  [[nodiscard]] bool shown() const { return !rows_.empty(); }
  [[nodiscard]] const std::vector<Row>& rows() const { return rows_; }

 protected:
  void applyDefaultAntialiasingHint(QCPPainter* painter) const override { painter->setAntialiasing(true); }
  void draw(QCPPainter* painter) override;

 private:
  QCPAxisRect* rect_;
  double x_ = 0;
  std::vector<Row> rows_;
  QColor ink_;
  QColor ground_;
};

}  // namespace orvalis
