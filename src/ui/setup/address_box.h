#pragma once

#include <string>

#include "ui/controls/quiet_combo_box.h"

namespace orvalis {

/// Which of the machine's addresses to serve on: itself alone, all, or one that is typed.
class AddressBox : public QuietComboBox {
 public:
  explicit AddressBox(QWidget* parent = nullptr);

  void SetAddress(const std::string& address);
  [[nodiscard]] std::string address() const;
  /// Who can read then, or that it is no address.
  [[nodiscard]] QString Meaning() const;
};

}  // namespace orvalis
