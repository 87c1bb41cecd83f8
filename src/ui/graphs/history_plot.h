#pragma once

#include <qcustomplot.h>

#include <QTimeZone>
#include <array>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <vector>

#include "base/clock.h"
#include "history/history.h"
#include "history/long_history.h"
#include "history/past_reader.h"
#include "history/verdict_bands.h"
#include "history/word_limits.h"
#include "ui/controls/theme.h"
#include "ui/graphs/graph_kind.h"
#include "ui/graphs/history_plot_parts.h"

namespace orvalis {

/// The curves of one graph over local time, with the conditions and the verdict in the background, the limits of the
/// panel's words as thin lines and the values at the pointer. The wheel zooms, dragging pans, a double click shows all;
/// the value axes always fit the visible values. While its end is visible it scrolls with the time.
class HistoryPlot : public QCustomPlot {
  Q_OBJECT
 public:
  struct Source {
    std::function<HistoryView()> view;  ///< of the last 48 hours
    std::function<std::int64_t()> now;
    PastReader::Parts store;  ///< with what is older
  };
  /// For `ShowLast`: as much as there is.
  static constexpr double kAll = std::numeric_limits<double>::infinity();

  HistoryPlot(const GraphKind& kind, Source source, const QTimeZone& zone, const TimeStyle& style,
              QWidget* parent = nullptr);

  void SetTheme(const Theme& theme);
  void SetUnits(const DisplayUnits& units);
  void SetLimits(const WordLimits& limits);

  /// Takes new values from the history; repaints only if that changes the picture.
  void Update();
  /// Recalculates everything, after a change of history or units.
  void Rebuild();
  /// The last twelve hours, or as much as there is.
  void ShowDefaultRange();
  void ShowAll() { ShowLast(kAll); }
  /// The last so many seconds, or as much of them as there is; it goes on to show them while the time passes.
  void ShowLast(double seconds);
  /// The seconds asked for, until the user zooms or moves.
  [[nodiscard]] std::optional<double> chosen() const { return chosen_; }
  /// Shows `factor` times as much time, around the middle.
  void Zoom(double factor);
  /// Moves by this share of the visible range; positive is later.
  void Pan(double share);
  /// Moves the line with the values by so many hundredths of the width, from the right end at first.
  void MoveReadout(int steps);
  void HideReadout();
  /// Frees what was read of the past, for a window that is hidden.
  void ForgetPast() { history_.Forget(); }

  /// The visible range.
  [[nodiscard]] TimeRange Shown() const;
  [[nodiscard]] const Readout& readout() const { return *readout_; }
  [[nodiscard]] const LimitLayer& limits() const { return *limit_layer_; }
  /// What is shown. Of the past it has one span a column.
  [[nodiscard]] HistoryView View() const { return history_.View(); }
  /// Whether the range reaches beyond what is in memory.
  [[nodiscard]] bool shows_past() const { return history_.past_in_view(); }
  [[nodiscard]] bool reading() const { return history_.reading(); }

 signals:
  /// `chosen` has changed.
  void ChosenChanged();
  /// The store cannot be read, and why.
  void Failed(const QString& text);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  struct Legend {
    QCPLegend* legend = nullptr;
    std::vector<QCPAbstractLegendItem*> items;
  };

  void BuildLegends();
  /// The longest range that can be shown.
  [[nodiscard]] QCPRange FullRange() const;
  void LimitRange(const QCPRange& wanted);
  void SetShown(QCPRange range);
  /// Sets the range by hand.
  void Choose(std::optional<double> seconds);
  /// The range to be shown now: the one chosen, or the present one moved on with the time.
  [[nodiscard]] QCPRange WantedRange() const;
  void TakePast();
  void Recalculate();
  /// Where everything is drawn that depends on the values.
  [[nodiscard]] std::vector<QPoint> Pixels() const;
  /// Incremented by every change of what is shown.
  [[nodiscard]] std::uint64_t Revision() const;
  void SetLimitLines(const HistoryView& view, TimeRange range, int columns);
  void FitValueAxis(QCPAxis* axis);
  void ShowTitle();
  void WrapLegends();
  /// The values at the pointer, or nothing where there are none.
  void ShowReadout();
  /// "2026-11-21 21:04:05 to 21:05:03"
  [[nodiscard]] QString TimesText(TimeRange times) const;
  [[nodiscard]] Readout::Row ReadoutRow(const CurveGraph& curve, const Span& span, double x) const;
  /// `seconds` since 1970-01-01 UTC, as the time axis counts, in the plot's zone.
  [[nodiscard]] CivilTime Local(double seconds) const;
  /// Adds the values and the conditions of `span` to `rows`, with the dots at `x`.
  void AddValues(const Span& span, double x, std::vector<Readout::Row>& rows) const;
  [[nodiscard]] int Columns() const;

  const GraphKind& kind_;
  Source source_;
  LongHistory history_;
  QTimeZone zone_;
  TimeStyle style_;
  DisplayUnits units_;
  Theme theme_;
  WordLimits limits_{};
  std::optional<double> chosen_;
  bool follows_ = true;     ///< its end is that of the history
  bool adjusting_ = false;  ///< the range is being set from here
  std::uint64_t revision_ = 0;
  std::optional<QPointF> pointer_;

  QCPTextElement* title_ = nullptr;
  std::array<Legend, 2> legends_;  ///< of the curves and of the conditions
  ConditionLayer* conditions_ = nullptr;
  LimitLayer* limit_layer_ = nullptr;
  Readout* readout_ = nullptr;
  std::vector<CurveGraph*> curves_;
  std::vector<ConditionLegendItem*> condition_items_;
};

}  // namespace orvalis
