#pragma once

#include <QPointer>
#include <memory>
#include <optional>
#include <string_view>

#include "app/setup_requests.h"
#include "app/setup_routine.h"
#include "base/error_boundary.h"
#include "core.h"
#include "ui/graphs/graph_files.h"
#include "ui/graphs/graph_windows.h"
#include "ui/help/help.h"
#include "ui/panel/frm_hand_box.h"
#include "ui/publishing/frm_form_submit.h"
#include "ui/setup/frm_setup.h"
#include "ui/traffic/frm_show.h"

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
  [[nodiscard]] bool LeavesThread() const override { return IsSaving(); }

 private:
  /// Runs the work of a click and refreshes the windows.
  template <typename Work>
  void Click(std::string_view doing, Work work) {
    parts_.boundary.RunToEnd(doing, work);
    core_.Refresh();
  }
  void BuildPanel();
  void BuildSetup();
  void BuildWebPublishing();
  /// The graphs' buttons; their windows are made when they are pressed.
  void BuildGraphs();
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
  Help help_;
};

}  // namespace orvalis
