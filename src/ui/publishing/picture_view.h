#pragma once

#include <QPixmap>
#include <QWidget>
#include <string>

namespace orvalis {

/// Shows a picture, as large as there is room, and writes it into files.
class PictureView : public QWidget {
 public:
  explicit PictureView(QWidget* parent = nullptr);

  void SetPicture(const QPixmap& picture);
  /// Replaces the file at `path` in one step. `format` is Qt's name: "BMP", which has 24 bits a point, or "JPG".
  /// Throws RunTimeError kPathFileAccess.
  void Save(const std::string& path, const char* format) const;

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QPixmap picture_;
};

}  // namespace orvalis
