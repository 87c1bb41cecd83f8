#pragma once

#include <QWidget>
#include <vector>

#include "panel/panel_model.h"
#include "ui/controls/theme.h"

class QVBoxLayout;

namespace orvalis {

/// The panel's standing messages, one row each, some with a button; taking no space while there are none. A long one
/// scrolls.
class StandingNotices : public QWidget {
  Q_OBJECT
 public:
  explicit StandingNotices(QWidget* parent);

  /// Does nothing if unchanged, so that a button is not replaced under the pointer.
  void Show(const std::vector<StandingMessage>& messages, const Theme& theme);

 signals:
  void Acknowledged(StandingMessage::Cause cause);

 private:
  void AddRow(const StandingMessage& message, const Theme& theme);

  QVBoxLayout* column_;
  std::vector<StandingMessage> shown_;
  Tone tone_;
};

}  // namespace orvalis
