#pragma once

#include <QObject>
#include <QPointer>

#include "ui/help/help_window.h"

namespace orvalis {

/// Shows the guide at the section of the window that asks, by F1 or its button for help. It listens to the whole
/// application.
class Help : public QObject {
  Q_OBJECT
 public:
  Help();
  ~Help() override;

  /// Opens the guide for `asking`, or at its beginning for null.
  void OpenFor(QWidget* asking);
  void SetNightTheme(bool on);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QPointer<HelpWindow> window_;  ///< from the first use on; it ends with the modal dialog that it belongs to
  bool night_ = false;
};

/// The page and section of the guide for the window of `widget`; its beginning for one without a section.
[[nodiscard]] QString HelpTopic(const QWidget* widget);

}  // namespace orvalis
