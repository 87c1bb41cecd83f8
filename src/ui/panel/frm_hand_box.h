#pragma once

#include <QKeySequence>
#include <QList>
#include <QWidget>
#include <vector>

#include "panel/panel_model.h"
#include "ui/controls/theme.h"
#include "ui/panel/value_row.h"
#include "ui/panel/word_card.h"

class QAction;
class QBoxLayout;
class QLabel;
class QLineEdit;
class QMenu;
class QMenuBar;
class QPushButton;
class QScrollArea;
class QToolButton;

namespace orvalis {

class ConnectButton;
class LogoButton;
class StandingNotices;
class StatusText;

/// The main panel: the verdict and the sky word readable from a distance, and every value with its unit. It shows
/// a PanelModel, passes clicks on as signals, and decides nothing.
class frmHandBox : public QWidget {
  Q_OBJECT
 public:
  /// `model` must outlive the window, which writes one field of it: the humidity selector, as the user types it.
  explicit frmHandBox(PanelModel& model, QWidget* parent = nullptr);

  /// Updates the window from the model. Unchanged parts are not repainted, so it may be called at any rate.
  void Refresh();

  /// Grows until nothing has to be scrolled, as far as the screen allows. For a window that is shown.
  void ShowWhole();

  /// Black and red, or the desktop's colours. Does not signal.
  void SetNightTheme(bool on);
  /// Keeps the window's position and whether it is shown.
  void SetAlwaysOnTop(bool on);

  /// A place in the menus: before the panel's own entries, or at the end of a menu.
  enum class Menu { kProgram, kProgramEnd, kView, kViewEnd, kHelp };
  /// Adds an entry, after the others of its place. `keys` work in the whole window, and may be none.
  QAction* AddEntry(Menu menu, const char* name, const QString& text, const QKeySequence& keys);
  /// What a person can do to the verdict.
  [[nodiscard]] QList<QAction*> VerdictEntries() const;
  /// The setup's button triggers `entry`, which is in a menu too.
  void SetSetupEntry(QAction* entry);

  [[nodiscard]] const Theme& theme() const { return theme_; }

 signals:
  /// The user asks to connect (`on`) or disconnect. What the button shows changes only with the model.
  void ConnectToggled(bool on);
  /// The user chose a theme, which has been applied.
  void NightThemeToggled(bool on);
  /// The user acknowledged a standing message, which stays until the model says otherwise.
  void Acknowledged(StandingMessage::Cause cause);
  /// The user wants it unsafe, or releases that. What the menu shows changes only with the model.
  void ForceUnsafeToggled(bool on);
  /// The user starts or ends a test that it is unsafe.
  void TestUnsafeClicked();
  /// The window is being closed.
  void Closing();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] QSize InitialSize() const;
  void BuildHero();
  void BuildBody();
  void BuildBar();
  /// The menu of what a person can do to the verdict, in the bar and on the banner.
  void BuildVerdictMenu(QMenu* menu);
  /// The lines of text below the values.
  void BuildLines(QBoxLayout* body);
  void BuildHumidityCurve(QBoxLayout* body);
  void BuildFooter();
  void SetTabOrder();

  void ApplyTheme();
  void ShowWords();
  void ShowVerdict();
  void ShowValues();
  void ShowControls();
  void ShowTile(WordCard* tile, const Word& word, const std::string& value, const QString& unit, const QString& hint);
  void ShowSwitch(WordCard* strip, const Word& sign);
  /// A line without a text takes no room.
  static void ShowLine(QLabel* line, const std::string& text);
  /// `value`, or nothing before the first reading: the model then holds numbers that were never measured.
  [[nodiscard]] std::string Measured(const std::string& value) const;
  void ShowRow(ValueRow* row, const QString& label, const std::string& value, const QString& unit,
               const QString& meaning, Colour background = Colour::kWhite);

  /// Places the parts side by side or one above the other, and scales the font with the window.
  void Arrange();
  void ArrangeValues();
  void PlaceSetup(bool narrow);
  void FitBar(double letter_size);
  void ShowHumidityCurve(bool shown);

  PanelModel& model_;
  Theme theme_;
  bool is_night_ = false;
  bool applying_theme_ = false;
  bool typing_ = false;  ///< the humidity selector is being edited

  QWidget* content_ = nullptr;  ///< everything; its font is the window's, grown
  QBoxLayout* bar_ = nullptr;
  QMenuBar* menus_ = nullptr;
  QMenu* program_menu_ = nullptr;
  QMenu* verdict_menu_ = nullptr;
  QMenu* view_menu_ = nullptr;
  QMenu* help_menu_ = nullptr;
  QAction* program_tail_ = nullptr;  ///< before the panel's own entries
  QAction* view_tail_ = nullptr;
  QAction* force_unsafe_ = nullptr;
  QAction* test_unsafe_ = nullptr;
  QAction* night_ = nullptr;
  QAction* curve_ = nullptr;
  QToolButton* night_button_ = nullptr;
  std::vector<LogoButton*> logos_;
  WordCard* demo_ = nullptr;
  StandingNotices* notices_ = nullptr;
  QBoxLayout* main_ = nullptr;  ///< the hero and the body
  QWidget* hero_ = nullptr;
  QBoxLayout* hero_layout_ = nullptr;
  WordCard* verdict_ = nullptr;
  WordCard* sky_word_ = nullptr;

  QScrollArea* scroll_ = nullptr;
  WordCard* wind_word_ = nullptr;
  WordCard* rain_word_ = nullptr;
  WordCard* light_word_ = nullptr;
  WordCard* heater_ = nullptr;
  WordCard* relay_ = nullptr;

  QBoxLayout* switches_ = nullptr;  ///< heater and relay
  QBoxLayout* values_ = nullptr;    ///< the two groups of rows
  QBoxLayout* temperatures_ = nullptr;
  QBoxLayout* quantities_ = nullptr;
  ValueRow* ambient_ = nullptr;
  ValueRow* body_ = nullptr;
  ValueRow* dew_point_ = nullptr;
  ValueRow* sky_ = nullptr;
  ValueRow* clear_sky_ = nullptr;
  ValueRow* difference_ = nullptr;
  ValueRow* humidity_ = nullptr;
  ValueRow* wind_ = nullptr;
  ValueRow* wind_average_ = nullptr;
  ValueRow* wind_gust_ = nullptr;
  ValueRow* rain_ = nullptr;
  ValueRow* light_ = nullptr;

  QLabel* sun_ = nullptr;
  QLabel* averaging_ = nullptr;
  QWidget* humidity_line_ = nullptr;  ///< folded away at first
  QLineEdit* humidity_selector_ = nullptr;

  QBoxLayout* footer_ = nullptr;
  QBoxLayout* buttons_ = nullptr;
  ConnectButton* connect_ = nullptr;
  QPushButton* setup_ = nullptr;
  bool setup_is_above_ = false;  ///< in the bar
  StatusText* status_ = nullptr;
};

}  // namespace orvalis
