// The parts of the main panel and their places. What they show is in frm_hand_box.cpp.

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QToolButton>
#include <algorithm>
#include <cmath>

#include "ui/controls/logo_button.h"
#include "ui/controls/night_proof.h"
#include "ui/controls/screen_place.h"
#include "ui/controls/text_fit.h"
#include "ui/controls/words.h"
#include "ui/panel/connect_button.h"
#include "ui/panel/frm_hand_box.h"
#include "ui/panel/standing_notices.h"
#include "ui/panel/status_text.h"

namespace orvalis {
namespace {

// Lengths in units of the font size, so that the window follows the desktop's font.
constexpr QSizeF kInitialSize(36, 56);
constexpr QSizeF kUprightSize(36, 57);  ///< in larger windows the letters grow
constexpr QSizeF kWideSize(60, 36);
constexpr QSizeF kInitialWideSize(60, 34);
constexpr double kShareOfScreen = 0.9;
constexpr double kMinWideWidth = 54;
constexpr double kMinStackedHeight = 46;
constexpr double kMargin = 0.8;
constexpr double kGap = 0.6;
constexpr double kMaxGrowth = 5;
constexpr double kLogo = 2.2;
constexpr double kNarrow = 26;

/// Scrolls when it must, and asks for as much height as its contents need.
class BodyScroll : public QScrollArea {
 public:
  using QScrollArea::QScrollArea;

  [[nodiscard]] QSize sizeHint() const override {
    const int width = std::max(viewport()->width(), widget()->minimumSizeHint().width());
    const int height = widget()->layout()->hasHeightForWidth() ? widget()->layout()->heightForWidth(width)
                                                               : widget()->sizeHint().height();
    return {widget()->sizeHint().width(), height};
  }
};

template <typename Part>
Part* Named(Part* part, const char* name) {
  part->setObjectName(name);
  return part;
}

}  // namespace

frmHandBox::frmHandBox(PanelModel& model, QWidget* parent)
    : QWidget(parent), model_(model), theme_(Theme::ForDesktop(palette())) {
  setObjectName("frmHandBox");
  setWindowTitle(Fixed("Orvalis"));
  auto* outer = new QVBoxLayout(this);
  outer->setContentsMargins(0, 0, 0, 0);
  content_ = new QWidget(this);
  outer->addWidget(content_);

  auto* column = new QVBoxLayout(content_);
  BuildBar();
  column->addLayout(bar_);
  demo_ = Named(new WordCard(WordCard::Form::kStrip, {}, {}, content_), "lblDemo");
  column->addWidget(demo_);
  notices_ = new StandingNotices(content_);
  column->addWidget(notices_);
  connect(notices_, &StandingNotices::Acknowledged, this, &frmHandBox::Acknowledged);
  main_ = new QBoxLayout(QBoxLayout::TopToBottom);
  column->addLayout(main_, 1);
  BuildHero();
  BuildBody();
  main_->addWidget(hero_);
  main_->addWidget(scroll_);
  BuildFooter();
  column->addLayout(footer_);
  SetTabOrder();

  resize(InitialSize());
  ApplyTheme();
  Arrange();
}

QSize frmHandBox::InitialSize() const {
  const double unit = PixelSize(font());
  const QSize upright = (kInitialSize * unit).toSize();
  const QScreen* on = screen();
  if (on == nullptr) return upright;
  const QSize room = on->availableSize() * kShareOfScreen;
  // Large letters on a low screen: side by side all of it is seen.
  const QSize wide = (kInitialWideSize * unit).toSize();
  const bool lies_better = upright.height() > room.height() && wide.width() <= room.width();
  return (lies_better ? wide : upright).boundedTo(room);
}

void frmHandBox::BuildHero() {
  hero_ = new QWidget(content_);
  hero_layout_ = new QBoxLayout(QBoxLayout::TopToBottom, hero_);
  hero_layout_->setContentsMargins(0, 0, 0, 0);
  verdict_ = Named(new WordCard(WordCard::Form::kHero, tr("Verdict"), tr("UNSAFE"), hero_), "lblVerdict");
  sky_word_ = Named(new WordCard(WordCard::Form::kHero, tr("Sky"), Fixed("PCloudy"), hero_), "lblCloud");
  hero_layout_->addWidget(verdict_, 1);
  hero_layout_->addWidget(sky_word_, 1);
  hero_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  verdict_->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(verdict_, &QWidget::customContextMenuRequested, verdict_menu_,
          [this](const QPoint& place) { verdict_menu_->popup(verdict_->mapToGlobal(place)); });
}

void frmHandBox::BuildBody() {
  scroll_ = new BodyScroll(content_);
  scroll_->setFrameShape(QFrame::NoFrame);
  scroll_->setWidgetResizable(true);
  scroll_->setFocusPolicy(Qt::NoFocus);
  auto* body = new QWidget;
  scroll_->setWidget(body);
  // The window's background shows through.
  scroll_->viewport()->setAutoFillBackground(false);
  body->setAutoFillBackground(false);
  scroll_->viewport()->installEventFilter(this);
  auto* column = new QVBoxLayout(body);
  column->setContentsMargins(0, 0, 0, 0);

  const auto card = [body](QBoxLayout* row, WordCard::Form form, const char* name, const QString& caption,
                           const QString& longest) {
    auto* made = Named(new WordCard(form, caption, longest, body), name);
    row->addWidget(made, 1);
    return made;
  };
  auto* tiles = new QHBoxLayout;  // sized for the longest word of the three, so that all have the same font
  wind_word_ = card(tiles, WordCard::Form::kTile, "lblWindWord", tr("Wind"), Fixed("Breeze"));
  rain_word_ = card(tiles, WordCard::Form::kTile, "lblRainWord", tr("Rain"), Fixed("Breeze"));
  light_word_ = card(tiles, WordCard::Form::kTile, "lblLightWord", tr("Light"), Fixed("Breeze"));
  column->addLayout(tiles, 30);
  switches_ = new QBoxLayout(QBoxLayout::LeftToRight);
  heater_ = card(switches_, WordCard::Form::kStrip, "lblHeater", tr("Heater"), Fixed("Y"));
  relay_ = card(switches_, WordCard::Form::kStrip, "lblRelay", tr("Relay"), Fixed("Y"));
  column->addLayout(switches_);

  values_ = new QBoxLayout(QBoxLayout::LeftToRight);
  temperatures_ = new QVBoxLayout;
  quantities_ = new QVBoxLayout;
  const auto row = [body](QBoxLayout* group, const char* name) {
    auto* made = Named(new ValueRow(body), name);
    group->addWidget(made);
    return made;
  };
  ambient_ = row(temperatures_, "lblAmbient");
  body_ = row(temperatures_, "lblBody");
  dew_point_ = row(temperatures_, "lblDewPoint");
  sky_ = row(temperatures_, "lblSky");
  clear_sky_ = row(temperatures_, "lblClearSky");
  difference_ = row(temperatures_, "lblDifference");
  humidity_ = row(quantities_, "lblHumidity");
  wind_ = row(quantities_, "lblWind");
  wind_average_ = row(quantities_, "lblWindAverage");
  wind_gust_ = row(quantities_, "lblWindGust");
  rain_ = row(quantities_, "lblRain");
  light_ = row(quantities_, "lblLight");
  for (QBoxLayout* group : {temperatures_, quantities_}) {
    group->setSpacing(0);
    values_->addLayout(group, 1);
  }
  column->addLayout(values_);
  BuildLines(column);
}

void frmHandBox::BuildLines(QBoxLayout* column) {
  const auto line = [&](const char* name) {
    auto* made = Named(new QLabel(scroll_->widget()), name);
    made->setTextFormat(Qt::PlainText);
    made->setWordWrap(true);
    made->hide();
    column->addWidget(made);
    return made;
  };
  sun_ = line("lblSun");
  averaging_ = line("lblAveraging");
  averaging_->setToolTip(tr("How many readings the temperatures are averaged over"));
  BuildHumidityCurve(column);
  column->addStretch(1);
}

void frmHandBox::BuildHumidityCurve(QBoxLayout* column) {
  humidity_line_ = new QWidget(scroll_->widget());
  auto* line = new QHBoxLayout(humidity_line_);
  line->setContentsMargins(0, 0, 0, 0);
  line->addStretch(1);
  auto* label = new QLabel(tr("Hu&midity curve:"));
  line->addWidget(label);
  humidity_selector_ = Named(new NightProof<QLineEdit>, "txtHumiditySelector");
  label->setBuddy(humidity_selector_);
  humidity_selector_->setAlignment(Qt::AlignRight);
  humidity_selector_->setToolTip(tr("A value below 2 selects the humidity sensor's other temperature curve"));
  humidity_selector_->setAccessibleName(tr("Humidity curve"));
  humidity_selector_->setAccessibleDescription(humidity_selector_->toolTip());
  humidity_selector_->setValidator(
      new QRegularExpressionValidator(QRegularExpression("-?[0-9]{0,6}([.][0-9]{0,2})?"), humidity_selector_));
  connect(humidity_selector_, &QLineEdit::textEdited, this, [this](const QString& text) {
    typing_ = true;
    model_.humidity_selector = text.toStdString();
  });
  connect(humidity_selector_, &QLineEdit::editingFinished, this, [this] { typing_ = false; });
  line->addWidget(humidity_selector_);
  humidity_line_->hide();
  column->addWidget(humidity_line_);
}

void frmHandBox::ShowHumidityCurve(bool shown) {
  humidity_line_->setVisible(shown);
  scroll_->updateGeometry();
  if (!shown) return;
  humidity_selector_->setFocus();
  QTimer::singleShot(0, this, [this] {
    QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);  // it needs its place first
    scroll_->ensureWidgetVisible(humidity_line_);
  });
}

void frmHandBox::BuildFooter() {
  footer_ = new QBoxLayout(QBoxLayout::TopToBottom);
  buttons_ = new QHBoxLayout;
  connect_ = Named(new ConnectButton(content_), "cmdConnect");
  setup_ = Named(new QPushButton(tr("Setup…"), content_), "cmdSetup");
  setup_->setAutoDefault(false);
  status_ = Named(new StatusText(content_), "txtStatus");
  constexpr int kStatusLines = 2;
  status_->SetLines(kStatusLines);
  buttons_->addWidget(connect_, 1);
  buttons_->addWidget(setup_);
  footer_->addLayout(buttons_);
  footer_->addWidget(status_);
  connect(connect_, &QPushButton::clicked, this, [this] {
    emit ConnectToggled(!model_.connect.checked);
    Refresh();
  });
}

void frmHandBox::SetSetupEntry(QAction* entry) { connect(setup_, &QPushButton::clicked, entry, &QAction::trigger); }

void frmHandBox::SetTabOrder() {
  QWidget* before = connect_;
  for (QWidget* next : std::initializer_list<QWidget*>{setup_, status_, night_button_, logos_.front(), logos_.back(),
                                                       humidity_selector_}) {
    setTabOrder(before, next);
    before = next;
  }
  connect_->setFocus();
}

void frmHandBox::ShowWhole() {
  // A taller window gives the upper words more room as well, so that it takes a few steps.
  constexpr int kMostSteps = 10;
  for (int step = 0; step < kMostSteps; ++step) {
    QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    const int more = std::min(scroll_->verticalScrollBar()->maximum(), RoomBelow(*this));
    if (more <= 0) return;
    resize(width(), height() + more);
  }
}

void frmHandBox::Arrange() {
  if (!footer_) return;
  const double unit = PixelSize(font());
  const bool wide = width() >= kMinWideWidth * unit && width() > 1.2 * height();
  const QSizeF ordinary = (wide ? kWideSize : kUprightSize) * unit;
  const double growth = std::min(width() / ordinary.width(), height() / ordinary.height());
  // In steps, because each change repeats the layout.
  const double factor = std::clamp(std::floor(growth * 10) / 10, 1.0, kMaxGrowth);
  if (const QFont grown = ScaledFont(font(), factor); grown != content_->font()) content_->setFont(grown);

  const int margin = static_cast<int>(std::lround(kMargin * unit * factor));
  const int gap = static_cast<int>(std::lround(kGap * unit * factor));
  content_->layout()->setContentsMargins(margin, margin, margin, margin);
  content_->layout()->setSpacing(gap);
  main_->setSpacing(gap);
  hero_layout_->setSpacing(gap);
  footer_->setSpacing(gap);
  bar_->setSpacing(gap / 2);
  buttons_->setSpacing(gap);
  scroll_->widget()->layout()->setSpacing(gap);
  values_->setSpacing(values_->direction() == QBoxLayout::LeftToRight ? 3 * gap : 0);

  main_->setDirection(wide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
  main_->setStretch(0, wide ? 10 : 0);
  main_->setStretch(1, wide ? 14 : 0);
  const bool stacked = wide || height() >= kMinStackedHeight * unit;
  hero_layout_->setDirection(stacked ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
  hero_->setMaximumHeight(wide ? QWIDGETSIZE_MAX : static_cast<int>(height() * (stacked ? 0.45 : 0.3)));
  footer_->setDirection(wide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
  footer_->setStretch(0, wide ? 10 : 0);
  footer_->setStretch(1, wide ? 14 : 0);

  const double grown = unit * factor;
  PlaceSetup(width() < kNarrow * unit);
  FitBar(grown);
  humidity_selector_->setFixedWidth(static_cast<int>(5 * grown));
  for (WordCard* tile : {wind_word_, rain_word_, light_word_}) tile->setMaximumHeight(static_cast<int>(8 * grown));
  scroll_->setMinimumHeight(static_cast<int>(4 * unit));
  ArrangeValues();
}

void frmHandBox::PlaceSetup(bool narrow) {
  // Beside a long caption of the connect button there is no room for it.
  if (setup_is_above_ == narrow) return;
  setup_is_above_ = narrow;
  QBoxLayout* const from = narrow ? buttons_ : bar_;
  from->removeWidget(setup_);
  if (narrow) {
    bar_->insertWidget(1, setup_);
  } else {
    buttons_->addWidget(setup_);
  }
}

void frmHandBox::FitBar(double letter_size) {
  const int side = static_cast<int>(std::lround(kLogo * letter_size));
  for (LogoButton* logo : logos_) logo->setFixedSize(side, side);
  if (menus_->font() != content_->font()) menus_->setFont(content_->font());  // menus have a font of the system's
  // Styles leave the same few pixels around a text of any size.
  const QSize text = setup_->fontMetrics().size(Qt::TextShowMnemonic, setup_->text());
  setup_->setMinimumSize(text + (QSizeF(setup_is_above_ ? 0.6 : 1.6, 0.8) * letter_size).toSize());
  setup_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
}

void frmHandBox::ArrangeValues() {
  const int gap = bar_->spacing() * 2;
  QLayout* column = scroll_->widget()->layout();
  const int beside_bar = scroll_->verticalScrollBar()->isVisible() ? gap / 2 : 0;
  if (column->contentsMargins().right() != beside_bar) column->setContentsMargins(0, 0, beside_bar, 0);
  const int available = scroll_->viewport()->width() - beside_bar;
  const int both_switches = heater_->sizeHint().width() + relay_->sizeHint().width() + gap;
  switches_->setDirection(both_switches <= available ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
  const QString widest_quantity = tr("counts");
  const auto widen = [](QBoxLayout* group, const QString& unit) {
    for (int i = 0; i < group->count(); ++i) static_cast<ValueRow*>(group->itemAt(i)->widget())->SetWidestUnit(unit);
  };
  widen(quantities_, widest_quantity);
  const auto needed = [](QBoxLayout* group) {
    int width = 0;
    for (int i = 0; i < group->count(); ++i) width = std::max(width, group->itemAt(i)->widget()->sizeHint().width());
    return width;
  };
  widen(temperatures_, "°C");
  const int left = needed(temperatures_);
  const int right = needed(quantities_);
  const bool beside = left + right + 3 * gap <= available;
  values_->setStretch(0, beside ? left : 0);
  values_->setStretch(1, beside ? right : 0);
  // One above the other, the numbers of both groups line up.
  if (!beside) widen(temperatures_, widest_quantity);
  values_->setDirection(beside ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
  values_->setSpacing(beside ? 3 * gap : 0);
  scroll_->updateGeometry();
}

void frmHandBox::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Arrange();
}

bool frmHandBox::eventFilter(QObject* watched, QEvent* event) {
  if (watched == scroll_->viewport() && event->type() == QEvent::Resize && values_) ArrangeValues();
  return QWidget::eventFilter(watched, event);
}

}  // namespace orvalis
