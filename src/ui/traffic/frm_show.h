#pragma once

#include <QTimer>
#include <QWidget>

#include "server/traffic.h"

class QPlainTextEdit;
class QPushButton;

namespace orvalis {

/// The traffic window: the calls of automation clients and the requests of the network, with their answers, live.
/// Closing deletes it and its text.
class frmShow : public QWidget {
  Q_OBJECT
 public:
  explicit frmShow(QWidget* parent);

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
  /// Puts the text box below the controls, whose height depends on the font.
  void Arrange();
  void FitText();
  void ShowText();

  Traffic traffic_;
  QTimer refresh_;  ///< a flood of calls is drawn a few times a second, not call by call
  int text_offset_ = 0;
  QWidget* controls_ = nullptr;
  QPlainTextEdit* text_ = nullptr;
};

}  // namespace orvalis
