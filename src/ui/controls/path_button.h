#pragma once

#include <QPushButton>
#include <string>

namespace orvalis {

/// Shows the chosen file or folder, elided to fit, with the full path in its tool tip; click to choose another one.
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

}  // namespace orvalis
