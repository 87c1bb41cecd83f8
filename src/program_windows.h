#pragma once

#include <QPointer>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>

#include "app/setup_requests.h"
#include "app/setup_routine.h"
#include "base/error_boundary.h"
#include "base/message.h"
#include "core.h"
#include "ui/controls/file_saving.h"
#include "ui/controls/words.h"
#include "ui/graphs/graph_windows.h"
#include "ui/help/help.h"
#include "ui/panel/frm_events.h"
#include "ui/panel/frm_hand_box.h"
#include "ui/panel/frm_place.h"
#include "ui/panel/tray_icon.h"
#include "ui/publishing/frm_form_submit.h"
#include "ui/setup/frm_setup.h"
#include "ui/traffic/frm_show.h"

class QAction;

namespace orvalis {

/// Every window, connected to the core.
class ProgramWindows : public Front {
 public:
  /// `core` must outlive the windows. They are built hidden.
  explicit ProgramWindows(Core& core);
  ~ProgramWindows() override;

  [[nodiscard]] PanelWindow& panel_window() override { return *panel_window_; }
  void ShowSettings() override;
  void Refresh() override;
  void RunSetup(Weather::Done closed) override { requests_->RunFor(std::move(closed)); }
  void Started() override;
  void BringToFront() override;
  [[nodiscard]] const Language& language() const override { return WindowLanguage(); }
  [[nodiscard]] bool LeavesThread() const override { return IsSaving(); }

 private:
  /// Runs the work of a click and refreshes the windows.
  template <typename Work>
  void Click(Phrase doing, Work work) {
    parts_.boundary.RunToEnd(doing, work);
    core_.Refresh();
  }
  void BuildPanel();
  void BuildSetup();
  /// The place and the tray's messages.
  void BuildProgramMenu();
  void BuildEvents();
  void BuildTray();
  void AskForPlace();
  void SetPlace(const std::optional<Place>& place);
  void BuildWebPublishing();
  /// The graphs' buttons; their windows are made when they are pressed.
  void BuildGraphs();
  /// An entry of the panel's menus; `keys` may be "".
  QAction* AddEntry(frmHandBox::Menu menu, const char* name, const QString& text, const char* keys,
                    std::function<void()> work);
  void OpenTraffic();
  void ApplyTheme();
  /// Ends the program with a picture of the panel after the first reading, or without one after a time-out.
  void TakePictureSoon();
  void TakePicture();

  Core& core_;
  Core::Parts parts_;
  std::unique_ptr<frmHandBox> panel_;
  std::unique_ptr<PanelWindow> panel_window_;
  std::unique_ptr<frmSetup> setup_;
  std::optional<SetupRoutine> routine_;
  std::optional<SetupRequests> requests_;
  std::unique_ptr<GraphWindows> graphs_;
  std::unique_ptr<frmFormSubmit> submit_;
  QPointer<frmShow> show_;
  QPointer<frmPlace> place_;
  std::unique_ptr<frmEvents> events_;
  QAction* tray_messages_ = nullptr;
  std::unique_ptr<TrayIcon> tray_;
  Help help_;
};

}  // namespace orvalis
