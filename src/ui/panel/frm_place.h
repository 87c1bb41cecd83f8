#pragma once

#include <QDialog>
#include <functional>
#include <optional>

#include "base/text.h"
#include "panel/sun_text.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace orvalis {

/// Asks for the place of the observatory, for dusk and dawn. It says what it makes of the texts while they are typed,
/// and can be confirmed when it understands them.
class frmPlace : public QDialog {
  Q_OBJECT
 public:
  using Describe = std::function<SunText(const Place& place)>;
  /// `describe` gives the sun of now.
  frmPlace(const std::optional<Place>& current, NumberLocale locale, Describe describe, QWidget* parent);

 signals:
  /// OK: this place, or none when both boxes are empty.
  void Chosen(const std::optional<Place>& place);

 private:
  QLineEdit* AddBox(const char* name, const QString& text, const QString& tip);
  /// Shows what was understood, and whether OK may be pressed.
  void Check();
  void accept() override;

  Describe describe_;
  std::optional<Place> place_;
  QLineEdit* latitude_ = nullptr;
  QLineEdit* longitude_ = nullptr;
  QLabel* advice_ = nullptr;
  QPushButton* ok_ = nullptr;
};

}  // namespace orvalis
