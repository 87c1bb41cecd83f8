#include <QtCore/qtestsupport_core.h>
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QFontInfo>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>

#include "ui/traffic/frm_show.h"

namespace orvalis {
namespace {

TEST(TrafficWindow, ShowsPausesClearsAndFilters) {
  frmShow window(nullptr);
  Traffic& traffic = window.traffic();
  auto* text = window.findChild<QPlainTextEdit*>("txtTraffic");
  auto* disable = window.findChild<QPushButton*>("cmdDisable");
  auto* clear = window.findChild<QPushButton*>("cmdClear");
  const auto shows = [&](const QString& expected) {
    return QTest::qWaitFor([&] { return text->toPlainText() == expected; });
  };
  traffic.TrafficStart("Halt");
  traffic.TrafficEnd(" (done)");
  EXPECT_TRUE(shows("Halt (done)\n"));
  EXPECT_TRUE(text->textCursor().atEnd());

  EXPECT_EQ(disable->text(), "Disable");
  disable->click();
  EXPECT_EQ(disable->text(), "Enable");
  traffic.TrafficLine("lost");
  disable->click();
  EXPECT_EQ(disable->text(), "Disable");
  traffic.TrafficLine("kept");
  EXPECT_TRUE(shows("Halt (done)\nkept\n"));
  clear->click();
  EXPECT_TRUE(shows(""));

  const std::tuple<const char*, const char*, TrafficCategory, bool> rows[] = {
      {"chkMove", "Move / Halt", TrafficCategory::kMove, true},
      {"chkOther", "Other Calls", TrafficCategory::kOther, true},
      {"chkTemp", "Temp Related", TrafficCategory::kTemp, true},
      {"chkMoving", "IsMoving", TrafficCategory::kMoving, false}};
  for (const auto& [name, caption, category, ticked] : rows) {
    auto* box = window.findChild<QCheckBox*>(name);
    EXPECT_EQ(box->text(), caption);
    EXPECT_EQ(box->isChecked(), ticked) << name;
    box->click();
    EXPECT_EQ(traffic.Wants(category), !ticked) << name;
  }
}

TEST(TrafficWindow, KeepsItsWidthAndFitsTheText) {
  frmShow window(nullptr);
  window.show();
  auto* text = window.findChild<QPlainTextEdit*>("txtTraffic");
  EXPECT_TRUE(QFontInfo(text->font()).fixedPitch()) << QFontInfo(text->font()).family().toStdString();
  window.resize(900, 500);
  EXPECT_EQ(window.width(), 361);  // 5415 twips at 96 pixels to the inch
  window.SetTextOffset(1500);
  EXPECT_EQ(text->height(), 400);
  window.resize(361, 10);
  EXPECT_GE(window.height(), text->y() + 26);  // 400 twips
}

}  // namespace
}  // namespace orvalis
