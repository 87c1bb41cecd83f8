#pragma once

#include <QWidget>
#include <vector>

#include "base/event_list.h"
#include "panel/panel_model.h"
#include "ui/controls/theme.h"
#include "ui/panel/value_row.h"
#include "ui/panel/word_card.h"

class QAction;
class QBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QScrollArea;
class QToolButton;

namespace orvalis {

class ConnectButton;
class EventView;
class FlowLayout;
class LogoButton;
class StandingNotices;
class StatusText;

/// The main panel: the verdict and the sky word readable from a distance, and every value with its unit. It shows
/// a PanelModel, passes clicks on as signals, and decides nothing.
class frmHandBox : public QWidget {
  Q_OBJECT
 public:
  /// `model` must outlive the window, which writes one field of it: the humidity selector, as the user types it.
  /// `style` is that of the times shown.
  explicit frmHandBox(PanelModel& model, const TimeStyle& style = {}, QWidget* parent = nullptr);

  /// Updates the window from the model. Unchanged parts are not repainted, so it may be called at any rate.
  void Refresh();
  /// Adds a line to the event list.
  void AppendEvent(const Event& event);

  /// Grows until nothing has to be scrolled, as far as the screen allows. For a window that is shown, when all of its
  /// buttons are there. The list of events may be scrolled: while that is open, nothing is done.
  void ShowWhole();

  /// Black and red, or the desktop's colours. Does not signal.
  void SetNightTheme(bool on);
  /// Keeps the window's position and whether it is shown.
  void SetAlwaysOnTop(bool on);

  /// Adds a button to the row below the values; the window owns it.
  QPushButton* AddToolButton(const QString& text);

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
  void BuildHero();
  void BuildBody();
  void BuildTools(QBoxLayout* body);
  /// The menu of what a person can do to the verdict, on a button and on the banner.
  void BuildVerdictMenu();
  void BuildFooter();
  void SetTabOrder();

  void ApplyTheme();
  void ShowWords();
  void ShowVerdict();
  void ShowValues();
  void ShowControls();
  void ShowTile(WordCard* tile, const Word& word, const std::string& value, const QString& unit,
                const QString& meaning);
  void ShowSwitch(WordCard* strip, const Word& sign);
  void ShowRow(ValueRow* row, const QString& label, const std::string& value, const QString& unit,
               const QString& meaning, Colour background = Colour::kWhite);

  /// Places the parts side by side or one above the other, and scales the font with the window.
  void Arrange();
  void ArrangeValues();
  void FitToolButtons(double letter_size);
  void ShowEvents(bool open);
  void ShowHumidityCurve(bool open);

  PanelModel& model_;
  TimeStyle style_;
  Theme theme_;
  bool night_ = false;
  bool applying_theme_ = false;
  bool typing_ = false;  ///< the humidity selector is being edited

  QWidget* content_ = nullptr;  ///< everything; its font is the window's, grown
  WordCard* demo_ = nullptr;
  StandingNotices* notices_ = nullptr;
  QBoxLayout* main_ = nullptr;  ///< the hero and the body
  QWidget* hero_ = nullptr;
  QBoxLayout* hero_layout_ = nullptr;
  WordCard* verdict_ = nullptr;
  QAction* force_unsafe_ = nullptr;
  QAction* test_unsafe_ = nullptr;
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

  QLabel* averaging_ = nullptr;
  QToolButton* humidity_button_ = nullptr;
  QLineEdit* humidity_selector_ = nullptr;
  FlowLayout* tools_ = nullptr;
  QPushButton* night_button_ = nullptr;
  QPushButton* last_tool_ = nullptr;
  QWidget* logo_pair_ = nullptr;  ///< after the tool buttons
  std::vector<LogoButton*> logos_;
  QToolButton* events_button_ = nullptr;
  EventView* events_ = nullptr;

  QBoxLayout* footer_ = nullptr;
  ConnectButton* connect_ = nullptr;
  StatusText* status_ = nullptr;
};

}  // namespace orvalis
