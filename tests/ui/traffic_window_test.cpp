#include <QtCore/qtestsupport_core.h>
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QClipboard>
#include <QFontInfo>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTableView>

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

TEST(TrafficWindow, ListsCallsBoundedAndCopiesThem) {
  frmShow window(nullptr, {.time = [](const CivilTime&) { return std::string("21:04"); }});
  auto* table = window.findChild<QTableView*>("tblCalls");
  const int text_width = window.width();
  window.findChild<QTabBar*>()->setCurrentIndex(1);
  EXPECT_GT(window.width(), text_width);
  window.traffic().Enter("first", "Safe", "", std::chrono::seconds(0));
  const auto rows = [&] { return table->model()->rowCount(); };
  EXPECT_TRUE(QTest::qWaitFor([&] { return rows() == 1; }));
  for (int i = 0; i < 999; ++i) window.traffic().Enter("127.0.0.1", "GET /", "200 OK", std::chrono::microseconds(40));
  window.traffic().Enter("D-Bus :1.7", "Connected = True", " went wrong", std::chrono::milliseconds(4000));
  EXPECT_TRUE(QTest::qWaitFor([&] { return rows() == 1000; }));
  table->clearSelection();
  table->selectRow(999);
  table->selectionModel()->select(table->model()->index(0, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
  table->actions().front()->trigger();
  EXPECT_EQ(QGuiApplication::clipboard()->text(),
            "21:04\t127.0.0.1\tGET /\t200 OK\t0.04 ms\n21:04\tD-Bus :1.7\tConnected = True\twent wrong\t4.0 s\n");
  window.findChild<QPushButton*>("cmdClear")->click();
  EXPECT_EQ(rows(), 0);
  window.findChild<QTabBar*>()->setCurrentIndex(0);
  EXPECT_EQ(window.width(), text_width);
}

}  // namespace
}  // namespace orvalis
