#pragma once

#include <QPushButton>
#include <string>

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

}  // namespace orvalis
