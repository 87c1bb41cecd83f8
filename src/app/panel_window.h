#pragma once

namespace orvalis {

/// The main panel's window, as start-up and shutdown use it. Edges are in screen pixels.
class PanelWindow {
 public:
  virtual ~PanelWindow() = default;
  virtual void Place(int left, int top) = 0;
  virtual void SetAlwaysOnTop(bool on) = 0;
  virtual void Show() = 0;
  [[nodiscard]] virtual int Left() const = 0;
  [[nodiscard]] virtual int Top() const = 0;
};

}  // namespace orvalis
