#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTemporaryDir>
#include <cstdlib>

#include "tests/support/fake_history_store.h"
#include "tests/support/full_disk.h"
#include "tests/support/link_fixture.h"
#include "tests/support/window_tools.h"
#include "ui/graphs/frm_graph.h"
#include "ui/graphs/history_plot.h"
#include "ui/graphs/history_plot_parts.h"
#include "ui/graphs/local_time_ticker.h"

namespace orvalis::test {
namespace {

constexpr std::int64_t kHour = 3'600'000;

class GraphTest : public LinkFixture {
 protected:
  GraphTest() { Connect(4); }  // values are known: 5 degrees under a clear sky
  /// So many hours with a reading every ten seconds.
  void Pass(double hours) {
    for (int i = 0; i < static_cast<int>(hours * 360); ++i) {
      clock.now.second += 10;  // only added up
      weather.sky_celsius = -20 + i % 7;
      weather.wind_mph = weather.wind_gust_mph = i % 9;
      weather.rain = 300 + i % 3;
      weather.light = 1000;
      recorder.Note(weather, frame);
    }
  }
  frmGraph::Parts Parts() {
    return {.recorder = recorder,
            .units = [this] { return UnitsOf(settings); },
            .limits = [this] { return WordLimitsOf(settings); },
            .on_top = [] { return false; },
            .report = [this](const std::string& text) { reports.push_back(text); },
            .zone = QTimeZone("Europe/Berlin")};
  }
  static QString Message(const frmGraph& window) {
    const auto* label = window.findChild<QLabel*>("lblMessage");
    return label->isHidden() ? QString() : label->text();
  }
  /// What the window says once the file is written, or cannot be.
  static QString Outcome(const frmGraph& window) {
    while (Message(window).startsWith("Saving ")) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return Message(window);
  }
  static void PointAtTheMiddle(HistoryPlot& plot) {
    const QPointF place(plot.width() / 2.0, plot.height() / 2.0);
    QMouseEvent move(QEvent::MouseMove, place, plot.mapToGlobal(place), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&plot, &move);
  }

  const SensorFrame frame{LiveFrame()};
  FakeHistoryStore history;
  std::vector<std::string> reports;
  HistoryRecorder recorder{{.loop = loop, .clock = clock, .store = history, .report = [](const std::string&) {}}};
};

TEST_F(GraphTest, NightShowsNothingButRed) {
  Pass(2);
  weather.cloud.text = "PCloudy";
  Pass(1);
  weather.cloud.text = "Cloudy";
  weather.raining = true;
  weather.unsafe_indicator = 1;
  Pass(1);
  for (const GraphKind* kind : {&TemperatureGraph(), &WindGraph(), &RainGraph()}) {
    frmGraph window(*kind, Parts());
    window.SetNightTheme(true);
    window.show();
    window.SavePicture("/nonexistent/picture.png");
    EXPECT_TRUE(Outcome(window).startsWith("Cannot save "));
    window.findChild<QScrollBar*>("hsbUpdate")->setFocus();
    Settle();
    PointAtTheMiddle(window.plot());
    Settle();
    const Light night(window.grab().toImage());
    EXPECT_EQ(night.not_red, 0) << kind->title;
    EXPECT_GT(night.bright, 1000) << kind->title;
  }
}

TEST_F(GraphTest, ValuesFollowTheUnitsAndTheTime) {
  weather.ambient_celsius = 12.45;  // as a float it is less than half a step from 12.4
  Pass(2);
  frmGraph window(TemperatureGraph(), Parts());
  window.show();
  Settle();
  HistoryPlot& plot = window.plot();
  PointAtTheMiddle(plot);
  const auto row = [&](std::size_t index) { return plot.readout().rows().at(index).text.toStdString(); };
  EXPECT_EQ(row(4), "Ambient  12.5 °C");
  EXPECT_EQ(row(1), "verdict not recorded");
  EXPECT_EQ(row(6), "clear");
  settings.Centigrade = false;
  window.UpdateSettings();
  EXPECT_EQ(row(4), "Ambient  54.4 °F");

  const std::string middle = row(0);
  plot.Pan(-0.3);
  plot.Zoom(0.25);
  EXPECT_NE(row(0), middle);  // another time is below the pointer now
  plot.ShowAll();
  EXPECT_EQ(row(0), middle);

  // The end is in sight, so it goes along; a view of the past stays.
  const std::int64_t end = plot.Shown().to;
  Pass(1);
  plot.Update();
  EXPECT_NEAR(static_cast<double>(plot.Shown().to - end), kHour, 1000);
  plot.Zoom(0.25);
  plot.Pan(-2);
  const TimeRange past = plot.Shown();
  Pass(1);
  plot.Update();
  EXPECT_EQ(plot.Shown(), past);
  plot.Zoom(1000);  // not beyond what there is
  EXPECT_NEAR(static_cast<double>(plot.Shown().to - plot.Shown().from), 4 * kHour, 30'000);
}

TEST_F(GraphTest, ShowsTheVerdictThatWasGivenAlsoWithoutReadings) {
  Pass(0.5);
  Observation now;
  now.source = ReadingSource::kUnit;
  const auto judge = [&](double hours, bool safe) {
    now.verdict.safe = safe;
    for (int i = 0; i < static_cast<int>(hours * 360); ++i) {
      clock.now.second += 10;
      now.time = UtcMilliseconds(clock.now);
      recorder.NoteVerdict(now);
    }
  };
  judge(0.5, true);
  now.verdict.reasons.Add(Reason::kUnitAlarm);
  now.verdict.reasons.Add(Reason::kRain);
  judge(1, false);  // the line is cut
  clock.now.second += 3600;
  Pass(1);
  frmGraph window(WindGraph(), Parts());
  window.show();
  Settle();
  HistoryPlot& plot = window.plot();
  const auto verdict = [&](double share) {
    plot.ShowAll();
    plot.Zoom(0.01);
    plot.Pan((share - 1) * 100 + 0.5);
    PointAtTheMiddle(plot);
    return plot.readout().shown() ? plot.readout().rows().at(1).text.toStdString() : "";
  };
  // Of four hours: half an hour with readings alone, half an hour safe, an hour unsafe, nothing, readings alone.
  EXPECT_EQ(verdict(0.06), "verdict not recorded");
  EXPECT_EQ(verdict(0.19), "safe");
  EXPECT_EQ(verdict(0.37), "UNSAFE: unit alarm, rain");
  EXPECT_EQ(verdict(0.62), "");
  EXPECT_EQ(verdict(0.9), "verdict not recorded");

  plot.ShowAll();
  const QTemporaryDir folder;
  window.SaveVerdicts(folder.filePath("a.csv"));
  EXPECT_TRUE(Outcome(window).startsWith("Saved as "));
  QFile file(folder.filePath("a.csv"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray csv = file.readAll();
  // The fake clock began at 22:04:05 in Berlin; the line at the latest ten seconds after the last look at it.
  EXPECT_TRUE(
      csv.contains("\r\n2026-11-21T22:34:15.000+01:00,2026-11-21T23:04:15.000+01:00,unit,safe,\"\",\"\"\r\n"
                   "2026-11-21T23:04:15.000+01:00,2026-11-22T00:04:05.000+01:00,unit,unsafe,\"unit_alarm "
                   "rain\","))
      << csv.toStdString();
}

TEST_F(GraphTest, DrawsTheLimitsOfThePanelsWords) {
  weather.ambient_celsius = 5;
  settings.WindSpeedCloseD = 30;  // too far away for a wind of 8
  Pass(1);
  const auto lines = [&](const GraphKind& kind) {
    frmGraph window(kind, Parts());
    window.show();
    Settle();
    std::string text;
    for (const LimitLayer::Line& line : window.plot().limits().lines()) {
      const double y = line.axis->coordToPixel(line.points.back().value);
      text += line.text.toStdString() +
              (window.plot().axisRect()->rect().contains(100, static_cast<int>(y)) ? ", " : " out of sight, ");
    }
    return text;
  };
  EXPECT_EQ(lines(WindGraph()), "windy above 30.0 out of sight, breeze above 8.0, ");
  settings.WindUnit = 2;  // 30 mph are 13.4112 m/s, 8 mph 3.5763 m/s
  EXPECT_EQ(lines(WindGraph()), "windy above 13.4 out of sight, breeze above 3.6, ");
  frmGraph wind(WindGraph(), Parts());
  wind.show();
  EXPECT_EQ(wind.plot().yAxis->label(), "Wind (m/s)");
  bool found = false;
  const double fastest = wind.plot().graph(1)->getValueRange(found).upper;
  EXPECT_NEAR(fastest, 3.57632, 1e-5);  // 8 mph
  EXPECT_EQ(lines(RainGraph()), "rain above 370, damp above 350, dark above 950, dusk above 200, ");
  frmGraph window(TemperatureGraph(), Parts());
  window.show();
  const auto cloudy = [&] { return window.plot().limits().lines().at(0).points.back().value; };
  EXPECT_EQ(cloudy(), 5 - 19);
  settings.FullCloudyDegC = 15;
  window.UpdateSettings();
  EXPECT_EQ(cloudy(), 5 - 15);
  settings.Centigrade = false;
  window.UpdateSettings();
  EXPECT_EQ(cloudy(), 14);  // -10 °C
}

TEST_F(GraphTest, ShowsTheSpanThatWasAskedForAlsoWhereTheFileAloneHasIt) {
  Pass(2);
  const std::int64_t now = UtcMilliseconds(clock.now);
  for (std::int64_t day = 9; day > 0; --day) {
    Span span = SpanOf({.time = now - day * 24 * kHour, .values = {}, .held = {}, .conditions = {}});
    span.lowest[Quantity::kWind] = span.highest[Quantity::kWind] = static_cast<float>(30 + day);
    history.kept_spans.push_back(span);
    history.kept_verdicts.push_back(
        {.first = span.first, .last = span.first + 1, .reasons = "rain", .explanation = ""});
    history.kept_verdicts.push_back(
        {.first = span.first + 1, .last = span.first + 2, .reasons = "wind", .explanation = ""});
  }
  frmGraph window(WindGraph(), Parts());
  window.resize(900, 900);  // where the strip along the top takes little of the scale, whatever the font
  window.show();
  Settle();
  HistoryPlot& plot = window.plot();
  const auto button = [&](const char* name) { return window.findChild<QPushButton*>(name); };
  const auto hours = [&] { return static_cast<double>(plot.Shown().to - plot.Shown().from) / kHour; };
  EXPECT_TRUE(button("cmd12Hours")->isChecked());
  button("cmd7Days")->click();
  loop.Advance(std::chrono::seconds(1));
  EXPECT_NEAR(hours(), 7 * 24, 0.01);
  EXPECT_TRUE(button("cmd7Days")->isChecked());
  EXPECT_FALSE(button("cmd12Hours")->isChecked());
  EXPECT_TRUE(plot.shows_past());
  EXPECT_GT(plot.yAxis->range().upper, 37);  // the oldest of the seven
  EXPECT_LT(plot.yAxis->range().upper, 42);
  button("cmd400Days")->click();
  EXPECT_NEAR(hours(), 9 * 24, 0.01);
  const QTemporaryDir folder;
  window.SaveVerdicts(folder.filePath("a.csv"));
  loop.Advance(std::chrono::seconds(1));
  EXPECT_TRUE(Outcome(window).startsWith("Saved as "));
  QFile file(folder.filePath("a.csv"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  EXPECT_EQ(file.readAll().count('\n'), 1 + 18);  // each of them, close together as they are
  clock.now.second += 24 * 3600;
  plot.Update();
  EXPECT_NEAR(hours(), 10 * 24, 0.01);  // grows until it has all
  button("cmdZoomIn")->click();
  EXPECT_FALSE(button("cmd400Days")->isChecked());
  EXPECT_NEAR(hours(), 160, 0.01);
  plot.MoveReadout(-1);
  EXPECT_FALSE(plot.accessibleDescription().isEmpty());
}

TEST_F(GraphTest, AClosedWindowDoesNothing) {
  Pass(1);
  frmGraph window(WindGraph(), Parts());
  window.show();
  auto* rate = window.findChild<QScrollBar*>("hsbUpdate");
  rate->setValue(0);
  EXPECT_FALSE(window.updating());
  QKeyEvent right(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier);
  QApplication::sendEvent(rate, &right);
  EXPECT_TRUE(window.updating());
  window.hide();
  EXPECT_FALSE(window.updating());
  rate->setValue(5);
  EXPECT_FALSE(window.updating());
  window.show();
  EXPECT_TRUE(window.updating());
}

TEST_F(GraphTest, SavesWholeFilesOrSaysWhyNot) {
  Pass(1);
  frmGraph window(TemperatureGraph(), Parts());
  window.show();
  Settle();
  const QTemporaryDir folder;
  const auto content = [&](const char* name) {
    QFile file(folder.filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  };
  const QSize seen = window.plot().size();
  for (const char* name : {"a.png", "a.PDF"}) {
    window.SavePicture(folder.filePath(name));
    EXPECT_TRUE(Outcome(window).startsWith("Saved as "));
  }
  window.SaveValues(folder.filePath("a.csv"));
  EXPECT_TRUE(Outcome(window).startsWith("Saved as "));
  EXPECT_EQ(QImage(folder.filePath("a.png")).size(), seen * 2);
  EXPECT_TRUE(content("a.PDF").startsWith("%PDF-"));
  const QByteArray csv = content("a.csv");
  EXPECT_EQ(csv.count('\n'), 1 + 360);
  // The last one: the fake clock's time and an hour, in Berlin's winter.
  EXPECT_TRUE(csv.contains("\r\n2026-11-21T23:04:05.000+01:00,")) << csv.right(300).toStdString();
  EXPECT_EQ(csv.count(",unit,reading,"), 360);

#ifndef _WIN32
  {
    const test::FullDisk full(1000);
    window.SaveValues(folder.filePath("a.csv"));
    EXPECT_TRUE(Outcome(window).startsWith("Cannot save " + folder.filePath("a.csv") + ": "));
  }
  EXPECT_EQ(content("a.csv"), csv);  // what was there stays
  EXPECT_EQ(reports.size(), 1u);
#endif
}

/// Opens the ticker to the test.
class Ticks : public LocalTimeTicker {
 public:
  using LocalTimeTicker::LocalTimeTicker;
  std::string Labels(qint64 from, double hours, int count) {
    setTickCount(count);
    QVector<double> ticks;
    QVector<QString> labels;
    const auto start = static_cast<double>(from);
    generate(QCPRange(start, start + hours * 3600), QLocale::c(), 'f', 6, ticks, nullptr, &labels);
    return QStringList(labels.begin(), labels.end()).join(" ").replace("\n", "/").toStdString();
  }
};

// The moments by date(1): the changes of summer time of Berlin and Lord Howe (half an hour) in 2026.
TEST(LocalTimeTicker, StaysAtRoundTimesThroughAChangeOfSummerTime) {
  const std::tuple<const char*, qint64, double, int, const char*> cases[] = {
      {"Europe/Berlin", 1'792'879'200, 4.5, 5,  // 2026-10-25 00:00 +02:00
       "00:00+02/2026-10-25 01:00+02 02:00+02 02:00+01 03:00+01"},
      {"Europe/Berlin", 1'792'879'200, 30, 5,  // in steps of six hours
       "00:00+02/2026-10-25 06:00+01 12:00+01 18:00+01 00:00+01/2026-10-26"},
      {"Australia/Lord_Howe", 1'775'309'400, 4, 4,  // 2026-04-05 00:30 +11:00
       "01:00+11/2026-04-05 02:00+10:30 03:00+10:30 04:00+10:30"},
      {"Europe/Berlin", 1'792'879'200, 21 * 24, 4, "2026-10-26 2026-11-02 2026-11-09"},  // Mondays
      {"Europe/Berlin", 1'792'879'200, 80 * 24, 4, "2026-11-01 2026-12-01 2027-01-01"},
  };
  for (const auto& [zone, from, hours, count, labels] : cases) {
    EXPECT_EQ(Ticks(QTimeZone(zone)).Labels(from, hours, count), labels) << zone << " " << from;
  }
}

}  // namespace
}  // namespace orvalis::test
