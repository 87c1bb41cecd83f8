#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace orvalis {

class GuideView;

/// The guide inside the program.
class HelpWindow : public QWidget {
  Q_OBJECT
 public:
  HelpWindow();

  void ShowPage(const QString& page);
  void SetNightTheme(bool on);

 private:
  void BuildTools(QWidget* tools);
  void Find();

  GuideView* guide_ = nullptr;
  QLineEdit* search_ = nullptr;
  QLabel* missing_ = nullptr;
};

}  // namespace orvalis
