#pragma once

#include <functional>
#include <string>
#include <vector>

#include "ui/controls/quiet_combo_box.h"
#include "unit/serial_port_entry.h"

namespace orvalis {

/// The serial ports of the machine to choose from, with what is plugged in there; any other may be typed.
class PortBox : public QuietComboBox {
 public:
  /// Asked again each time that the list is opened: adapters come and go.
  using Ports = std::function<std::vector<SerialPortEntry>()>;
  explicit PortBox(Ports ports, QWidget* parent = nullptr);

  /// The list anew, with the text as it is; a text that is no port of the machine becomes an entry too.
  void Refill();
  void SetPort(const std::string& port);
  [[nodiscard]] std::string port() const;
  /// What is plugged in at the port in the box.
  [[nodiscard]] QString Description() const;

  void showPopup() override;

 private:
  Ports ports_;
};

}  // namespace orvalis
