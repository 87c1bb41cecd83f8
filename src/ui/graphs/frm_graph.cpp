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
#include <utility>

#include "history/history_csv.h"
#include "history/update_rate.h"
#include "ui/controls/file_pickers.h"
#include "ui/controls/help_request.h"
#include "ui/controls/night_style.h"
#include "ui/controls/panel_texts.h"
#include "ui/controls/text_fit.h"
#include "ui/graphs/graph_files.h"
#include "ui/graphs/history_plot.h"
#include "ui/graphs/local_time_ticker.h"

namespace orvalis {
namespace {

constexpr QSizeF kInitialSize(68, 38);  ///< in units of the letters' size
constexpr int kInitialRate = 10;
constexpr double kZoomStep = 1.5;
constexpr double kPanStep = 0.2;
constexpr const char* kPictureFilter = "PNG Pictures (*.png)|*.png|PDF Documents (*.pdf)|*.pdf";
constexpr const char* kValuesFilter = "Comma-separated Values (*.csv)|*.csv";

/// In the name of a file.
const char* KindName(const GraphKind& kind) {
  return kind.curves.front().quantity == Quantity::kWind ? "wind" : "temperatures";
}

LocalTimeOf LocalTimeIn(const QTimeZone& zone) {
  return [zone](std::int64_t moment) { return LocalTime(moment, zone); };
}

}  // namespace

frmGraph::frmGraph(const GraphKind& kind, Parts parts, QWidget* parent)
    : QWidget(parent), kind_(kind), parts_(std::move(parts)), theme_(Theme::ForDesktop(palette())) {
  setObjectName(kind.object_name);
  setWindowTitle("Orvalis " + QString(kind.title));
  plot_ = new HistoryPlot(
      kind_, {.view = [this] { return parts_.recorder.View(); }, .now = [this] { return parts_.recorder.Now(); }},
      parts_.zone, parts_.style, this);
  message_ = new QLabel;
  message_->setObjectName("lblMessage");
  message_->setTextFormat(Qt::PlainText);
  message_->setWordWrap(true);
  message_->setMargin(4);
  message_->setAutoFillBackground(true);
  message_->hide();
  auto* column = new QVBoxLayout(this);
  column->addWidget(plot_, 1);
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
  rate_->setAccessibleName("Update rate");
  rate_->setToolTip("How often the graph is updated");
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
  add("cmdAll", "Show &all", "Show the whole history; a double click on the graph does the same",
      [this] { plot_->ShowAll(); });
  add("cmdPicture", "Save &picture…", "Save this view as PNG or PDF", [this] {
    const QString path = AskForFile("Save Picture", kPictureFilter, KindName(kind_), ".png");
    if (!path.isEmpty()) SavePicture(path);
  });
  add("cmdValues", "Save &values…", "Save the values of this view as CSV", [this] {
    const QString path = AskForFile("Save Values", kValuesFilter, KindName(kind_), ".csv");
    if (!path.isEmpty()) SaveValues(path);
  });
  add("cmdVerdicts", "Save v&erdicts…", "Save the verdicts of this view, with their reasons, as CSV", [this] {
    const QString path = AskForFile("Save Verdicts", kValuesFilter, "verdicts", ".csv");
    if (!path.isEmpty()) SaveVerdicts(path);
  });
  row->addWidget(ForHelp(new QPushButton("Help")));
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

void frmGraph::UpdateUnits() {
  if (isVisible()) plot_->SetCentigrade(parts_.centigrade());
}

void frmGraph::ShowDefaultRange() {
  if (isVisible()) plot_->ShowDefaultRange();
}

void frmGraph::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (event->spontaneous()) return;
  plot_->SetCentigrade(parts_.centigrade());
  plot_->ShowDefaultRange();
  RunTimer();
}

void frmGraph::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  message_->hide();
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
  switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      plot_->Zoom(1 / kZoomStep);
      return;
    case Qt::Key_Minus:
      plot_->Zoom(kZoomStep);
      return;
    case Qt::Key_Left:
      plot_->Pan(-kPanStep);
      return;
    case Qt::Key_Right:
      plot_->Pan(kPanStep);
      return;
    case Qt::Key_Home:
      plot_->ShowAll();
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

QString frmGraph::AskForFile(const QString& title, const char* filter, const char* what, const char* suffix) {
  message_->hide();
  if (folder_.isEmpty()) folder_ = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  const QDateTime from = QDateTime::fromMSecsSinceEpoch(plot_->Shown().from, parts_.zone);
  const QString name = QString("orvalis-") + what + "-" + from.toString("yyyy-MM-dd-HHmm") + suffix;
  const std::optional<std::string> path = PickSaveFile(this, title, filter, folder_ + "/" + name);
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
  Save(path, [history = parts_.recorder.Shown(), verdicts = parts_.recorder.Verdicts(),
              demo = parts_.recorder.demo_shown(), range = plot_->Shown(), quantities = kind_.Quantities(),
              centigrade = parts_.centigrade(), local_time = LocalTimeIn(parts_.zone)] {
    const HistoryView view{.history = history, .verdicts = verdicts, .demo = demo};
    return QByteArray::fromStdString(HistoryCsv(view, range, quantities, centigrade, local_time));
  });
}

void frmGraph::SaveVerdicts(const QString& path) {
  Save(path, [verdicts = parts_.recorder.Verdicts(), range = plot_->Shown(), local_time = LocalTimeIn(parts_.zone)] {
    return QByteArray::fromStdString(VerdictCsv(verdicts, range, local_time));
  });
}

void frmGraph::Save(const QString& path, FileContent content) {
  Say("Saving " + path + "…", Colour::kGreen);
  SaveInBackground(this, path, std::move(content), [this, path](const QString& failure) {
    if (failure.isEmpty()) {
      Say("Saved as " + path, Colour::kGreen);
      return;
    }
    const QString text = "Cannot save " + path + ": " + failure;
    Say(text, Colour::kRed);
    parts_.report(text.toStdString());
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
