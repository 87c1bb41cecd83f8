#include "ui/controls/night_style.h"

#include <QWidget>

#include "ui/controls/night_proof.h"

namespace orvalis {
namespace {

constexpr const char* kNightProperty = "orvalis_night";

/// The palette is not enough: the desktop's style has highlights that would shine white.
constexpr const char* kNightRules = R"(
QLabel { color: #ff0000; }
QPushButton { background: black; color: #ff0000; border: 1px solid #8c0000; border-radius: 4px; padding: 4px 10px; }
QPushButton::menu-indicator { subcontrol-position: right center; right: 3px; }
QPushButton:hover { border-color: #ff0000; }
QPushButton:focus { border: 2px solid #ff0000; padding: 3px 9px; outline: none; }
QPushButton:pressed, QPushButton:checked { background: #ff0000; color: black; }
QPushButton:disabled { color: #960000; }
QToolButton { background: black; color: #ff0000; border: 1px solid black; border-radius: 4px; padding: 3px; }
QToolButton:hover { border-color: #8c0000; }
QToolButton:focus { border-color: #ff0000; }
QLineEdit { background: black; color: #ff0000; border: 1px solid #8c0000; border-radius: 3px; padding: 2px;
  selection-background-color: #ff0000; selection-color: black; }
QLineEdit:focus, QPlainTextEdit:focus, QTextBrowser:focus { border-color: #ff0000; }
QPlainTextEdit, QTextBrowser { background: black; color: #ff0000; border: 1px solid #500000;
  selection-background-color: #ff0000; selection-color: black; }
QPlainTextEdit[frameShape="0"] { border: none; }
QScrollArea { background: black; border: none; }
QScrollBar { background: black; border: none; }
QScrollBar:vertical { width: 12px; }
QScrollBar:horizontal { height: 12px; }
QScrollBar::handle { background: #780000; border-radius: 5px; margin: 1px; }
QScrollBar::handle:vertical { min-height: 24px; }
QScrollBar::handle:horizontal { min-width: 24px; }
QScrollBar::handle:hover { background: #b40000; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: black; }
QMenuBar { background: black; color: #ff0000; }
QMenuBar::item { background: black; color: #ff0000; padding: 4px 8px; border: 1px solid black; border-radius: 4px; }
QMenuBar::item:selected { border-color: #8c0000; }
QMenuBar::item:pressed { background: #ff0000; color: black; }
QToolButton:checked { background: #ff0000; color: black; }
QMenu { background: black; color: #ff0000; border: 1px solid #8c0000; }
QMenu::item { padding: 4px 20px; }
QMenu::item:selected { background: #ff0000; color: black; }
QMenu::item:disabled { color: #960000; }
QMenu::icon { image: none; }
QMenu::indicator { width: 12px; height: 12px; margin-left: 4px; border: 1px solid #b40000; background: black; }
QMenu::indicator:checked { background: #ff0000; }
QMenu::indicator:checked:selected { border-color: black; background: black; }
QMenu::separator { background: #500000; height: 1px; }
QToolTip { background: black; color: #ff0000; border: 1px solid #8c0000; }
QTabWidget::pane { border: 1px solid #500000; }
QTabBar::tab { background: black; color: #ff0000; border: 1px solid #500000; padding: 6px 14px; }
QTabBar::tab:selected { border: 2px solid #ff0000; padding: 5px 13px; }
QTabBar::tear { width: 0; border: none; }
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
QCheckBox:focus, QRadioButton:focus { outline: 1px solid #ff0000; }
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
QScrollBar#hsbUpdate { border: 1px solid #500000; }
QScrollBar#hsbUpdate:focus { border-color: #ff0000; }
)";

}  // namespace

Theme DressWindow(QWidget& window, bool night) {
  window.setProperty(kNightProperty, night);
  window.setStyleSheet({});  // first: a style sheet holds on to the palette that it found
  window.setPalette(night ? Theme::Night().palette() : QPalette());
  if (night) {
    window.setStyleSheet(kNightRules);
    // Once more: a style sheet brings back the palette that an earlier one found.
    window.setPalette(Theme::Night().palette());
  }
  for (QWidget* control : window.findChildren<QWidget*>()) {
    if (auto* aware = dynamic_cast<NightAware*>(control)) aware->SetNight(night);
  }
  return night ? Theme::Night() : Theme::ForDesktop(window.palette());
}

bool IsNight(const QWidget* widget) { return widget != nullptr && widget->window()->property(kNightProperty).toBool(); }

}  // namespace orvalis
