#include <QtCore/qtestsupport_core.h>
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QFontInfo>
#include <QPlainTextEdit>
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

  disable->click();
  EXPECT_EQ(disable->text(), "Enable");
  traffic.TrafficLine("lost");
  disable->click();
  traffic.TrafficLine("kept");
  EXPECT_TRUE(shows("Halt (done)\nkept\n"));
  clear->click();
  EXPECT_TRUE(shows(""));

  for (const auto& [name, category] : {std::pair{"chkMove", TrafficCategory::kMove},
                                       {"chkOther", TrafficCategory::kOther},
                                       {"chkTemp", TrafficCategory::kTemp}}) {
    EXPECT_TRUE(traffic.Wants(category)) << name;
    window.findChild<QCheckBox*>(name)->click();
    EXPECT_FALSE(traffic.Wants(category)) << name;
  }
  EXPECT_TRUE(QFontInfo(text->font()).fixedPitch()) << QFontInfo(text->font()).family().toStdString();
  window.resize(900, 500);
  EXPECT_EQ(window.width(), 361);  // 5415 twips at 96 pixels to the inch
}

}  // namespace
}  // namespace orvalis
