#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv) {
  // Needs no display, also when CTest only asks for the names of the tests.
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  QApplication::setStyle("Fusion");
  QApplication::setCursorFlashTime(0);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
