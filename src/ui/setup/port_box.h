#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ui/controls/quiet_combo_box.h"
#include "unit/serial_port_entry.h"

namespace orvalis {

/// A list of the machine's serial ports with their devices; any other port can be typed.
class PortBox : public QuietComboBox {
 public:
  /// Called each time the list is opened: adapters come and go.
  using Ports = std::function<std::vector<SerialPortEntry>()>;
  explicit PortBox(Ports ports, QWidget* parent = nullptr);

  /// Refreshes the list and keeps the text; a text that is not one of the machine's ports becomes an entry too.
  void Refill();
  void SetPort(const std::string& port);
  [[nodiscard]] std::string port() const;
  /// The device on the selected port.
  [[nodiscard]] QString Description() const;

  void showPopup() override;

 private:
  Ports ports_;
};

}  // namespace orvalis
