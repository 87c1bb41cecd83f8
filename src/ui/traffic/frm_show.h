#pragma once

#include <QTimer>
#include <QWidget>

#include "base/clock.h"
#include "server/traffic.h"

class QPlainTextEdit;
class QTabBar;

namespace orvalis {

class CallTable;

/// The traffic window: the calls of automation clients and the requests of the network, with their answers, live, as
/// running text or as a table. Closing deletes it and what it shows.
class frmShow : public QWidget {
  Q_OBJECT
 public:
  /// `style` is that of the times shown.
  explicit frmShow(QWidget* parent, const TimeStyle& style = {});

  /// What the window shows. It lives as long as the window.
  [[nodiscard]] Traffic& traffic() { return traffic_; }

  /// How much of the window's inner height is not used by the text box, in twips (1440 to the inch).
  void SetTextOffset(int twips);
  /// Black and red, or the desktop's colours.
  void SetNightTheme(bool on);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  /// The buttons and the check boxes of the categories, above the text.
  QWidget* BuildControls();
  /// The choice between text and table, below the controls.
  void BuildTabs();
  /// Puts text box and table below the controls, whose height depends on the font.
  void Arrange();
  void FitText();
  /// The text's width is fixed, the table's is the user's.
  void FitWidth();
  void ShowTraffic();

  Traffic traffic_;
  QTimer refresh_;  ///< a flood of calls is drawn a few times a second, not call by call
  int text_offset_ = 0;
  int table_width_ = 0;  ///< of the window, while the table was shown last
  QWidget* controls_ = nullptr;
  QTabBar* tabs_ = nullptr;
  QPlainTextEdit* text_ = nullptr;
  CallTable* table_ = nullptr;
};

}  // namespace orvalis
