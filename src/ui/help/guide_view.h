#pragma once

#include <QHash>
#include <QImage>
#include <QTextBrowser>
#include <QTimer>

#include "ui/controls/night_proof.h"

namespace orvalis {

/// Shows the pages of the guide that are a part of the program. Pictures are scaled down to the window's width.
class GuideView : public NightProof<QTextBrowser> {
  Q_OBJECT
 public:
  explicit GuideView(QWidget* parent);

  /// Shows `page`, "guide.html#setup".
  void ShowPage(const QString& page);
  /// Shows the page again in the present colours.
  void Redraw(bool night);
  /// Selects the next place of `text` after the selected one, from the top again after the last. False if there is
  /// none.
  bool FindNext(const QString& text);

 protected:
  QVariant loadResource(int type, const QUrl& name) override;
  void doSetSource(const QUrl& address, QTextDocument::ResourceType type) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void FitPictures();
  void FitAgain();
  [[nodiscard]] QString Style() const;
  [[nodiscard]] QImage Fitted(const QString& name, int room);

  bool night_ = false;
  int fitted_width_ = 0;
  QTimer fit_;  ///< while the window is being resized, pictures wait until it rests
};

}  // namespace orvalis
