#pragma once

#include <QComboBox>
#include <QPushButton>
#include <functional>
#include <string>
#include <vector>

#include "ui/controls/night_proof.h"
#include "unit/serial_port_entry.h"

namespace orvalis {

/// Shows which file or folder is set, as much of it as fits, with the whole path in its tool tip; a click asks for
/// another one.
class PathButton : public QPushButton {
 public:
  enum class Shows { kName, kPath };
  explicit PathButton(Shows shows, QWidget* parent = nullptr);

  void SetPath(const std::string& path);
  [[nodiscard]] const std::string& path() const { return path_; }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Shows shows_;
  std::string path_;
};

/// The serial ports of the machine to choose from, with what is plugged in there; any other may be typed.
class PortBox : public NightProof<QComboBox> {
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

 protected:
  void wheelEvent(QWheelEvent* event) override;

 private:
  Ports ports_;
};

}  // namespace orvalis
