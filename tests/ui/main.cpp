#include <gtest/gtest.h>

#include <QApplication>
#include <QLocale>

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();  // needs no display
#ifndef _WIN32
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
#endif
  QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);  // which no test can answer
  const QApplication application(argc, argv);
  QLocale::setDefault(QLocale::c());  // texts are the same on every machine
  QApplication::setStyle("Fusion");
  QApplication::setCursorFlashTime(0);
  return RUN_ALL_TESTS();
}
