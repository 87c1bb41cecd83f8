#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <memory>

#include "panel/tray_model.h"
#include "ui/controls/theme.h"

class QAction;
class QMenu;
class QSystemTrayIcon;

namespace orvalis {

/// The verdict as an icon in the desktop's tray, where there is one, and a message at each change. A click
/// is for the panel.
class TrayIcon : public QObject {
  Q_OBJECT
 public:
  /// `entries` are those of its menu, and not its own.
  explicit TrayIcon(const QList<QAction*>& entries);
  ~TrayIcon() override;

  /// To be called whenever the panel's banner is drawn. `messages` says whether changes are told: at night never,
  /// because the desktop would show them in bright colours.
  void Show(const VerdictBanner& banner, const Theme& theme, bool messages);

 signals:
  void Clicked();

 private:
  void ShowWhenThereIsATray();

  TrayModel model_;
  std::unique_ptr<QMenu> menu_;
  std::unique_ptr<QSystemTrayIcon> icon_;
  QString tip_;
  Tone tone_;
  VerdictBanner::State state_{};
  int until_next_look_ = 0;
};

}  // namespace orvalis
