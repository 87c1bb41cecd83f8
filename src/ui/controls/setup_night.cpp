#include "ui/controls/setup_night.h"

#include <QWidget>

namespace orvalis {

QString SetupNightStyleSheet() {
  return QStringLiteral(R"(
QTabWidget::pane { border: 1px solid #500000; }
QTabBar::tab { background: black; color: #ff0000; border: 1px solid #500000; padding: 6px 14px; }
QTabBar::tab:selected { border: 2px solid #ff0000; padding: 5px 13px; }
QTabBar::tab:focus { text-decoration: underline; }
QGroupBox { color: #ff0000; border: 1px solid #500000; margin-top: 2ex; padding-top: 4px; }
QGroupBox[flat="true"] { border: none; margin-top: 0; padding-top: 0; }
QGroupBox::title { subcontrol-origin: margin; subcontrol-position: top left; left: 8px; padding: 0 3px; }
QCheckBox, QRadioButton { color: #ff0000; }
QCheckBox:disabled, QRadioButton:disabled, QLabel:disabled, QLineEdit:disabled { color: #960000; }
QCheckBox::indicator, QRadioButton::indicator { width: 12px; height: 12px; border: 1px solid #b40000;
  background: black; }
QRadioButton::indicator { border-radius: 6px; }
QCheckBox::indicator:checked, QRadioButton::indicator:checked { background: #ff0000; }
QCheckBox::indicator:disabled, QRadioButton::indicator:disabled { border-color: #500000; }
QCheckBox::indicator:checked:disabled { background: #780000; }
QCheckBox:focus, QRadioButton:focus { text-decoration: underline; }
QComboBox { background: black; color: #ff0000; border: 1px solid #8c0000; border-radius: 3px; padding: 1px; }
QComboBox:focus { border-color: #ff0000; }
QComboBox QLineEdit { border: none; padding: 1px; }
QComboBox::drop-down { border: none; border-left: 1px solid #8c0000; width: 22px; }
QComboBox::down-arrow { image: none; width: 0; height: 0; border-left: 5px solid black; border-right: 5px solid black;
  border-top: 6px solid #ff0000; }
QAbstractItemView { background: black; color: #ff0000; border: 1px solid #8c0000;
  selection-background-color: #ff0000; selection-color: black; }
QHeaderView, QHeaderView::section { background: black; color: #ff0000; border: 1px solid #500000; }
QSplitter::handle { background: black; }
QDialogButtonBox { dialogbuttonbox-buttons-have-icons: 0; }
)");
}

void DressWindow(QWidget& window, const Theme& theme) {
  const bool night = theme.kind() == Theme::Kind::kNight;
  window.setStyleSheet({});
  window.setPalette(night ? theme.palette() : QPalette());
  if (!night) return;
  window.setStyleSheet(theme.StyleSheet() + SetupNightStyleSheet());
  // Once more: a style sheet brings back the palette that a former one found.
  window.setPalette(theme.palette());
}

}  // namespace orvalis
