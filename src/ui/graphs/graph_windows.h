#pragma once

#include <memory>

#include "ui/graphs/frm_graph.h"

namespace orvalis {

/// The graph windows, created when first opened.
class GraphWindows {
 public:
  explicit GraphWindows(frmGraph::Parts parts) : parts_(std::move(parts)) {}

  void OpenTemperatures() { Open(temperatures_, TemperatureGraph()); }
  void OpenWind() { Open(wind_, WindGraph()); }
  void OpenRain() { Open(rain_, RainGraph()); }

  void SetNightTheme(bool on) {
    night_ = on;
    ForEach([&](frmGraph& window) { window.SetNightTheme(on); });
  }
  void UpdateSettings() {
    ForEach([](frmGraph& window) { window.UpdateSettings(); });
  }
  void ShowDefaultRange() {
    ForEach([](frmGraph& window) { window.ShowDefaultRange(); });
  }

 private:
  void Open(std::unique_ptr<frmGraph>& window, const GraphKind& kind) {
    if (!window) {
      window = std::make_unique<frmGraph>(kind, parts_);
      window->SetNightTheme(night_);
    }
    if (!window->isVisible()) window->setWindowFlag(Qt::WindowStaysOnTopHint, parts_.on_top());
    window->showNormal();
    window->raise();
    window->activateWindow();
  }
  template <typename Do>
  void ForEach(Do action) {
    for (frmGraph* window : {temperatures_.get(), wind_.get(), rain_.get()}) {
      if (window != nullptr) action(*window);
    }
  }

  frmGraph::Parts parts_;
  bool night_ = false;
  std::unique_ptr<frmGraph> temperatures_;
  std::unique_ptr<frmGraph> wind_;
  std::unique_ptr<frmGraph> rain_;
};

}  // namespace orvalis
