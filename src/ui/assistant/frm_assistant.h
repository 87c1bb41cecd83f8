#pragma once

#include <QDialog>
#include <QTimer>
#include <functional>
#include <string>
#include <vector>

#include "app/assistant_choices.h"
#include "app/unit_search.h"
#include "unit/link_state.h"
#include "unit/serial_port_entry.h"
#include "verdict/observation.h"

class QBoxLayout;
class QButtonGroup;
class QCheckBox;
class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QStackedWidget;

namespace orvalis {

class LiveNote;
class PortBox;
class PortList;

/// The assistant of the first start: which unit, which units of measurement, what is unsafe, who is told. It is open
/// beside the panel, which goes on working. Everything in it is in the setup dialog too; nothing is stored before the
/// last page, and nothing at all when it is skipped.
class frmAssistant : public QDialog {
  Q_OBJECT
 public:
  /// The connection to the unit.
  struct Link {
    LinkState state = LinkState::kDisconnected;
    std::string port;
    Message failure;    ///< why the last attempt failed, or ""
    bool demo = false;  ///< values are simulated now, and no port is opened
  };
  struct Parts {
    AssistantChoices& choices;
    UnitSearch& search;
    std::function<std::vector<SerialPortEntry>()> ports;
    std::function<Link()> link;
    std::function<const Observation&()> now;
    /// Stores the choices and puts them into force. Returns why that failed, or "".
    std::function<Message()> finish;
    NumberLocale locale = {};
    QString simulator;       ///< what starts the simulated unit in a terminal; "" where there is none
    QString simulated_port;  ///< and the port that it has then
  };
  /// The parts must outlive it. It deletes itself when it is closed.
  explicit frmAssistant(Parts parts, QWidget* parent = nullptr);
  ~frmAssistant() override;

  /// Shows it beside its parent.
  void ShowInFront();
  /// Black and red, or the desktop's colours.
  void SetNightTheme(bool on);
  /// The search has changed.
  void ShowSearch();
  /// Settings, readings or the link may have changed.
  void Refresh();

 signals:
  /// The user wants to be connected to the unit at `port` now.
  void ConnectWanted(const QString& port);
  /// The user wants the page of the setup whose frame is called `frame`.
  void SetupWanted(const char* frame);
  /// It was closed, and everything is to stay as it is.
  void Skipped();

 protected:
  void reject() override;

 private:
  enum class Source { kUnit, kSimulated, kDemo };

  QWidget* BuildUnitPage();
  void BuildSources(QBoxLayout* column);
  void BuildSearch(QBoxLayout* column);
  void BuildPort(QBoxLayout* column);
  QWidget* BuildUnitsPage();
  QWidget* BuildSafetyPage();
  QWidget* BuildClientsPage();
  QBoxLayout* BuildFooter();

  void ShowPage(int page);
  void Next();
  void ShowChoices();
  void SetSource(Source source);
  [[nodiscard]] Source source() const;
  void UpdateUnitPage();
  void ListPorts();
  /// Which port may be searched although the machine does not list it.
  void TakeTypedPort();
  void ToggleSearch();
  void ShowLink();
  void ShowReadings();

  Parts parts_;
  QTimer timer_;
  Source shown_source_ = Source::kUnit;
  QString typed_port_;      ///< while the simulated unit's is shown
  std::string ready_port_;  ///< in the box, and not being typed
  std::string last_port_;   ///< in the box when the ports were listed last

  QLabel* title_ = nullptr;
  QLabel* step_ = nullptr;
  QStackedWidget* pages_ = nullptr;
  LiveNote* link_ = nullptr;
  QPushButton* back_ = nullptr;
  QPushButton* next_ = nullptr;

  QButtonGroup* sources_ = nullptr;
  QGroupBox* search_box_ = nullptr;
  QGroupBox* simulator_box_ = nullptr;
  QGroupBox* port_box_ = nullptr;
  PortList* port_list_ = nullptr;
  QPushButton* search_ = nullptr;
  LiveNote* search_result_ = nullptr;
  PortBox* port_ = nullptr;
  QCheckBox* connect_ = nullptr;
  QCheckBox* auto_connect_ = nullptr;
  bool searched_ = false;  ///< since it was opened

  QButtonGroup* temperatures_ = nullptr;
  QButtonGroup* winds_ = nullptr;
  LiveNote* example_ = nullptr;
  struct Reason {
    QCheckBox* box;
    LiveNote* note;
    const char* meaning;  ///< the name of its live value
    std::int32_t Settings::*member;
  };
  std::vector<Reason> reasons_;
  QCheckBox* network_ = nullptr;
  QCheckBox* on_top_ = nullptr;
};

}  // namespace orvalis
