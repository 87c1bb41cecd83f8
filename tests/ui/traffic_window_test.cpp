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
  traffic.TrafficLine("lost");
  disable->click();
  traffic.TrafficLine("kept");
  EXPECT_TRUE(shows("Halt (done)\nkept\n"));
  clear->click();
  EXPECT_TRUE(shows(""));

  for (const auto& [name, category] : {std::pair{"chkMove", TrafficCategory::kMove},
                                       {"chkOther", TrafficCategory::kOther},
                                       {"chkTemp", TrafficCategory::kTemp}}) {
    window.findChild<QCheckBox*>(name)->click();
    EXPECT_FALSE(traffic.Wants(category)) << name;
  }
  EXPECT_FALSE(traffic.Wants(TrafficCategory::kNetwork));
  window.findChild<QCheckBox*>("chkNetwork")->click();
  EXPECT_TRUE(traffic.Wants(TrafficCategory::kNetwork));
  EXPECT_TRUE(QFontInfo(text->font()).fixedPitch()) << QFontInfo(text->font()).family().toStdString();
}

}  // namespace
}  // namespace orvalis
