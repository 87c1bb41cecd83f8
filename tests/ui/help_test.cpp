#include "ui/help/help.h"

#include <QtCore/qtestsupport_core.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextTable>
#include <algorithm>

#include "ui/controls/help_request.h"
#include "ui/help/guide_view.h"

namespace orvalis {
namespace {

QTextBrowser* OpenGuide() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (auto* guide = window->findChild<QTextBrowser*>("txtGuide")) return guide;
  }
  return nullptr;
}

TEST(Help, F1AndTheButtonOpenTheGuideAtTheWindowsSection) {
  Help help;
  for (const char* name :
       {"frmHandBox", "frmSetup", "frmAssistant", "frmShow", "frmFormSubmit", "frmTempGraph", "frmWindGraph"}) {
    SCOPED_TRACE(name);
    QWidget window;
    window.setObjectName(name);
    QLineEdit box(&window);
    QPushButton button(&window);
    ForHelp(&button)->click();
    ASSERT_TRUE(OpenGuide());
    const QUrl section = OpenGuide()->source();
    QFile page(":" + section.path());
    ASSERT_TRUE(section.hasFragment() && page.open(QIODevice::ReadOnly));
    EXPECT_TRUE(page.readAll().contains(("id=\"" + section.fragment() + "\"").toUtf8())) << "the heading has gone";
    help.OpenFor(nullptr);
    QKeyEvent key(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
    QCoreApplication::sendEvent(&box, &key);
    EXPECT_EQ(OpenGuide()->source(), section);
  }
}

TEST(Help, OpensAgainAfterItWentWithAMessage) {
  Help help;
  {
    QDialog message;
    message.setModal(true);
    message.show();
    help.OpenFor(&message);
    EXPECT_EQ(OpenGuide()->window()->parentWidget(), &message);
  }
  help.OpenFor(nullptr);
  EXPECT_TRUE(OpenGuide());
}

/// Of the pictures alone: long words and commands may be wider than a narrow window.
int WidestRowOfPictures(QTextDocument& page) {
  int widest = 0;
  for (QTextBlock block = page.begin(); block.isValid(); block = block.next()) {
    const QTextTable* const table = QTextCursor(block).currentTable();
    for (auto part = block.begin(); !part.atEnd(); ++part) {
      const QTextImageFormat format = part.fragment().charFormat().toImageFormat();
      const int columns = table != nullptr ? table->columns() : 1;
      if (format.isValid()) widest = std::max(widest, columns * static_cast<int>(format.width()));
    }
  }
  return widest;
}

TEST(Help, PicturesFitTheWindowAlsoSideBySide) {
  GuideView guide(nullptr);
  guide.ShowPage("guide.html");
  for (const int width : {1200, 400}) {
    guide.resize(width, 600);
    guide.show();
    const auto widest = [&] { return WidestRowOfPictures(*guide.document()); };
    EXPECT_TRUE(QTest::qWaitFor([&] { return widest() <= guide.viewport()->width(); })) << width;
    EXPECT_GT(widest(), width / 3);
  }
}

}  // namespace
}  // namespace orvalis
