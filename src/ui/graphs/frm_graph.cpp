#include "ui/graphs/frm_graph.h"

#include <QBoxLayout>
#include <QDir>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QStandardPaths>
#include <algorithm>
#include <array>
#include <utility>
#include <variant>

#include "history/history_csv.h"
#include "history/update_rate.h"
#include "ui/controls/file_pickers.h"
#include "ui/controls/flow_layout.h"
#include "ui/controls/help_request.h"
#include "ui/controls/night_style.h"
#include "ui/controls/panel_texts.h"
#include "ui/controls/text_fit.h"
#include "ui/controls/words.h"
#include "ui/graphs/graph_files.h"
#include "ui/graphs/history_plot.h"
#include "ui/graphs/local_time_ticker.h"

namespace orvalis {
namespace {

constexpr QSizeF kInitialSize(68, 38);  ///< in units of the letters' size
constexpr int kInitialRate = 10;
constexpr double kZoomStep = 1.5;
constexpr double kPanStep = 0.2;

// For PickSaveFile: descriptions with their patterns.
QString PictureFilter() {
  return Words::tr("PNG Pictures (*.png)") + "|*.png|" + Words::tr("PDF Documents (*.pdf)") + "|*.pdf";
}
QString ValuesFilter() { return Words::tr("Comma-separated Values (*.csv)") + "|*.csv"; }

LocalTimeOf LocalTimeIn(const QTimeZone& zone) {
  return [zone](std::int64_t moment) { return LocalTime(moment, zone); };
}

}  // namespace

frmGraph::frmGraph(const GraphKind& kind, Parts parts, QWidget* parent)
    : QWidget(parent),
      kind_(kind),
      parts_(std::move(parts)),
      saved_verdicts_(parts_.recorder.Store()),
      theme_(Theme::ForDesktop(palette())) {
  setObjectName(kind.object_name);
  //: The title of a graph's window: the program, and what it shows.
  setWindowTitle(tr("Orvalis %1").arg(Words::tr(kind.title)));
  plot_ = new HistoryPlot(kind_,
                          {.view = [this] { return parts_.recorder.View(); },
                           .now = [this] { return parts_.recorder.Now(); },
                           .store = parts_.recorder.Store()},
                          parts_.zone, parts_.style, this);
  connect(plot_, &HistoryPlot::Failed, this, [this](const QString& text) { Say(text, Colour::kRed); });
  message_ = new QLabel;
  message_->setObjectName("lblMessage");
  message_->setTextFormat(Qt::PlainText);
  message_->setWordWrap(true);
  message_->setMargin(4);
  message_->setAutoFillBackground(true);
  message_->hide();
  auto* column = new QVBoxLayout(this);
  column->addWidget(plot_, 1);
  column->addWidget(BuildRanges());
  column->addWidget(message_);
  column->addWidget(BuildControls());
  connect(&update_timer_, &QTimer::timeout, plot_, &HistoryPlot::Update);
  connect(new QShortcut(QKeySequence::Close, this), &QShortcut::activated, this, &QWidget::close);
  SetUpdateRate(kInitialRate);
  QSize size = (kInitialSize * PixelSize(font())).toSize();
  if (const QScreen* on = screen()) size = size.boundedTo(on->availableSize() * 0.9);
  resize(size);
  ApplyTheme();
}

QWidget* frmGraph::BuildRanges() {
  struct Choice {
    const char* name;
    QString text;
    QString tip;
    QString spoken;  ///< to screen readers
    double hours;
  };
  constexpr double kDay = 24;
  const std::array choices{
      //: On a button: one hour.
      Choice{"cmdHour", tr("1 h"), tr("Show the last hour"), tr("Last hour"), 1},
      Choice{"cmd12Hours", tr("12 h"), tr("Show the last 12 hours"), tr("Last 12 hours"), 12},
      Choice{"cmd48Hours", tr("48 h"), tr("Show the last 48 hours"), tr("Last 48 hours"), 48},
      Choice{"cmd7Days", tr("7 days"), tr("Show the last 7 days"), tr("Last 7 days"), 7 * kDay},
      Choice{"cmd30Days", tr("30 days"), tr("Show the last 30 days"), tr("Last 30 days"), 30 * kDay},
      Choice{"cmd400Days", tr("400 days"), tr("Show the last 400 days"), tr("Last 400 days"), 400 * kDay},
  };
  constexpr double kSecondsPerHour = 3600;
  auto* ranges = new QWidget;
  auto* row = new FlowLayout(ranges);
  row->setContentsMargins(0, 0, 0, 0);
  const auto add = [&](const char* name, const QString& text, const QString& tip) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setAutoDefault(false);
    button->setToolTip(tip);
    constexpr int kAround = 22;
    QFont bold = font();
    bold.setBold(true);
    button->setMinimumWidth(QFontMetrics(bold).horizontalAdvance(text) + kAround);
    row->addWidget(button);
    return button;
  };
  const auto add_zoom = [&](const char* name, const QString& text, const QString& words, const QString& key,
                            double factor) {
    //: A tool tip: what a button does, and the key for it.
    QPushButton* button = add(name, text, tr("%1 (%2)").arg(words, key));
    button->setAccessibleName(words);
    connect(button, &QPushButton::clicked, this, [this, factor] { plot_->Zoom(factor); });
  };
  add_zoom("cmdZoomOut", "−", tr("Zoom out"), "-", kZoomStep);
  add_zoom("cmdZoomIn", "+", tr("Zoom in"), "+", 1 / kZoomStep);
  const auto add_range = [&](const char* name, const QString& text, const QString& tip, double seconds) {
    QPushButton* button = add(name, text, tip);
    button->setCheckable(true);
    connect(button, &QPushButton::clicked, this, [this, seconds] {
      message_->hide();
      plot_->ShowLast(seconds);
      ShowChosen();
    });
    ranges_.emplace_back(button, seconds);
    return button;
  };
  for (const Choice& choice : choices) {
    add_range(choice.name, choice.text, choice.tip, choice.hours * kSecondsPerHour)->setAccessibleName(choice.spoken);
  }
  add_range("cmdAll", tr("Show &all"), tr("Show the whole history; a double click on the graph does the same"),
            HistoryPlot::kAll);
  connect(plot_, &HistoryPlot::ChosenChanged, this, &frmGraph::ShowChosen);
  return ranges;
}

void frmGraph::ShowChosen() {
  for (const auto& [button, seconds] : ranges_) {
    const bool chosen = plot_->chosen() == seconds;
    button->setChecked(chosen);
    // Some styles hardly show which one is down.
    QFont letters = font();
    letters.setBold(chosen);
    button->setFont(letters);
  }
}

QWidget* frmGraph::BuildControls() {
  auto* controls = new QWidget;
  auto* row = new QHBoxLayout(controls);
  row->setContentsMargins(0, 0, 0, 0);
  rate_label_ = new QLabel;
  rate_label_->setObjectName("lblUpdate");
  rate_label_->setTextFormat(Qt::PlainText);
  int widest = 0;
  for (int position = 0; position <= UpdateRate::kLastPosition; ++position) {
    const QString label = ToQString(UpdateRate(position).Label());
    widest = std::max(widest, QFontMetrics(rate_label_->font()).horizontalAdvance(label));
  }
  rate_label_->setMinimumWidth(widest + 2);
  row->addWidget(rate_label_);
  rate_ = new QScrollBar(Qt::Horizontal);
  rate_->setObjectName("hsbUpdate");
  rate_->setRange(0, UpdateRate::kLastPosition);
  rate_->setPageStep(10);
  rate_->setValue(kInitialRate);
  rate_->setInvertedControls(false);  // or the arrow to the right would go to the left
  rate_->setFocusPolicy(Qt::StrongFocus);
  rate_->setAccessibleName(tr("Update rate"));
  rate_->setToolTip(tr("How often the graph is updated"));
  rate_->setMinimumWidth(60);
  rate_->setMaximumWidth(480);
  connect(rate_, &QScrollBar::valueChanged, this, &frmGraph::SetUpdateRate);
  row->addWidget(rate_, 1);
  row->addStretch(0);
  const auto add = [&](const char* name, const QString& text, const QString& tip, auto action) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setAutoDefault(false);
    button->setToolTip(tip);
    connect(button, &QPushButton::clicked, this, action);
    row->addWidget(button);
  };
  add("cmdPicture", tr("Save &picture…"), tr("Save this view as PNG or PDF"), [this] {
    const QString path = AskForFile(tr("Save Picture"), PictureFilter(), kind_.file_name, ".png");
    if (!path.isEmpty()) SavePicture(path);
  });
  add("cmdValues", tr("Save &values…"), tr("Save the values of this view as CSV"), [this] {
    const QString path = AskForFile(tr("Save Values"), ValuesFilter(), kind_.file_name, ".csv");
    if (!path.isEmpty()) SaveValues(path);
  });
  add("cmdVerdicts", tr("Save v&erdicts…"), tr("Save the verdicts of this view, with their reasons, as CSV"), [this] {
    const QString path = AskForFile(tr("Save Verdicts"), ValuesFilter(), "verdicts", ".csv");
    if (!path.isEmpty()) SaveVerdicts(path);
  });
  row->addWidget(ForHelp(new QPushButton(tr("Help"))));
  return controls;
}

void frmGraph::SetUpdateRate(int position) {
  const UpdateRate rate(position);
  const QString label = ToQString(rate.Label());
  rate_label_->setText(label);
  rate_->setAccessibleDescription(label);
  RunTimer();
}

void frmGraph::RunTimer() {
  const auto interval = UpdateRate(rate_->value()).Interval();
  if (!interval || !isVisible() || isMinimized()) {
    update_timer_.stop();
    return;
  }
  update_timer_.start(*interval);
}

void frmGraph::SetNightTheme(bool on) {
  night_ = on;
  ApplyTheme();
}

void frmGraph::ApplyTheme() {
  if (applying_theme_) return;
  applying_theme_ = true;
  theme_ = DressWindow(*this, night_);
  message_->hide();
  plot_->SetTheme(theme_);
  applying_theme_ = false;
}

void frmGraph::UpdateSettings() {
  if (!isVisible()) return;
  plot_->SetUnits(parts_.units());
  plot_->SetLimits(parts_.limits());
}

void frmGraph::ShowDefaultRange() {
  if (isVisible()) plot_->ShowDefaultRange();
}

void frmGraph::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (event->spontaneous()) return;
  UpdateSettings();
  plot_->ShowDefaultRange();
  RunTimer();
}

void frmGraph::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  message_->hide();
  plot_->ForgetPast();
  RunTimer();
}

void frmGraph::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  switch (event->type()) {
    case QEvent::ApplicationPaletteChange:
    case QEvent::PaletteChange:
      if (!night_ && plot_ != nullptr) ApplyTheme();
      break;
    case QEvent::FontChange:
      if (!applying_theme_ && plot_ != nullptr) plot_->SetTheme(theme_);
      break;
    case QEvent::WindowStateChange:
      RunTimer();
      break;
    default:
      break;
  }
}

void frmGraph::keyPressEvent(QKeyEvent* event) {
  const bool reads = event->modifiers().testFlag(Qt::ControlModifier);
  switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      plot_->Zoom(1 / kZoomStep);
      return;
    case Qt::Key_Minus:
      plot_->Zoom(kZoomStep);
      return;
    case Qt::Key_Left:
      reads ? plot_->MoveReadout(-1) : plot_->Pan(-kPanStep);
      return;
    case Qt::Key_Right:
      reads ? plot_->MoveReadout(1) : plot_->Pan(kPanStep);
      return;
    case Qt::Key_Escape:
      plot_->HideReadout();
      return;
    case Qt::Key_Home:
      plot_->ShowAll();
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

QString frmGraph::AskForFile(const QString& title, const QString& filter, const char* what, const char* suffix) {
  message_->hide();
  if (folder_.isEmpty()) folder_ = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  const QDateTime from = QDateTime::fromMSecsSinceEpoch(plot_->Shown().from, parts_.zone);
  const QString name = QString("orvalis-") + what + "-" + from.toString("yyyy-MM-dd-HHmm") + suffix;
  const std::optional<std::string> path = PickSaveFile(this, title, filter.toStdString(), folder_ + "/" + name);
  if (!path) return {};
  folder_ = QFileInfo(ToQString(*path)).absolutePath();
  return ToQString(*path);
}

void frmGraph::SavePicture(const QString& path) {
  if (path.endsWith(".pdf", Qt::CaseInsensitive)) {
    Save(path, [content = PdfOf(*plot_)] { return content; });
  } else {
    Save(path, [image = ImageOf(*plot_)] { return PngOf(image); });
  }
}

void frmGraph::SaveValues(const QString& path) {
  const HistoryView shown = plot_->View();
  Save(path, [history = shown.history, verdicts = shown.verdicts, demo = shown.demo, range = plot_->Shown(),
              quantities = kind_.Quantities(), centigrade = parts_.units().centigrade,
              local_time = LocalTimeIn(parts_.zone)] {
    const HistoryView view{.history = history, .verdicts = verdicts, .demo = demo};
    return QByteArray::fromStdString(HistoryCsv(view, range, quantities, centigrade, local_time));
  });
}

void frmGraph::SaveVerdicts(const QString& path) {
  const TimeRange range = plot_->Shown();
  const auto save = [this, path, range](VerdictHistory verdicts) {
    Save(path, [verdicts = std::move(verdicts), range, local_time = LocalTimeIn(parts_.zone)] {
      return QByteArray::fromStdString(VerdictCsv(verdicts, range, local_time));
    });
  };
  if (!plot_->shows_past()) {
    save(parts_.recorder.Verdicts());
    return;
  }
  // What is shown is merged; the file has each of them.
  Say(tr("Reading the verdicts…"), Colour::kGreen);
  saved_verdicts_.Read({.range = range, .values = false}, [this, save](PastReader::Result result) {
    if (auto* past = std::get_if<Past>(&result)) {
      save(std::move(past->verdicts));
    } else {
      Say(ToQString(std::get<std::string>(result)), Colour::kRed);
    }
  });
}

void frmGraph::Save(const QString& path, FileContent content) {
  Say(tr("Saving %1…").arg(path), Colour::kGreen);
  SaveInBackground(this, path, std::move(content), [this, path](const QString& failure) {
    if (failure.isEmpty()) {
      Say(tr("Saved as %1").arg(path), Colour::kGreen);
      return;
    }
    Say(tr("Cannot save %1: %2").arg(path, failure), Colour::kRed);
    parts_.report(("Cannot save " + path + ": " + failure).toStdString());  // into the log, in English
  });
}

void frmGraph::Say(const QString& text, Colour colour) {
  const Tone tone = colour == Colour::kRed ? theme_.Strong(colour) : theme_.Quiet(colour);
  message_->setStyleSheet(
      QString("QLabel { background: %1; color: %2; border: 1px solid %3; border-radius: 4px; }")
          .arg(tone.fill.name(), tone.ink.name(), (tone.outline.isValid() ? tone.outline : tone.fill).name()));
  message_->setText(text);
  message_->show();
}

}  // namespace orvalis
