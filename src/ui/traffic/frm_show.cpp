#include "ui/traffic/frm_show.h"

#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabBar>
#include <algorithm>
#include <chrono>
#include <cmath>

#include "ui/controls/help_request.h"
#include "ui/controls/night_proof.h"
#include "ui/controls/night_style.h"
#include "ui/controls/text_fit.h"
#include "ui/controls/words.h"
#include "ui/traffic/call_table.h"

namespace orvalis {
namespace {

constexpr int kTwipsPerInch = 1440;
constexpr int kWidthTwips = 5415;
/// What the text box keeps of its height when the window is made small.
constexpr int kMinTextTwips = 400;
constexpr int kDefaultHeightTwips = 6000;
constexpr int kMargin = 8;  // pixels
constexpr std::chrono::milliseconds kRefresh{100};

int Pixels(const QWidget& widget, int twips) {
  return static_cast<int>(std::lround(static_cast<double>(twips) * widget.logicalDpiY() / kTwipsPerInch));
}

int Twips(const QWidget& widget, int pixels) { return pixels * kTwipsPerInch / widget.logicalDpiY(); }

}  // namespace

frmShow::frmShow(QWidget* parent, const TimeStyle& style) : QWidget(parent, Qt::Tool) {
  setAttribute(Qt::WA_DeleteOnClose);
  setObjectName("frmShow");
  setWindowTitle(Fixed("ASCOM API Traffic"));
  controls_ = BuildControls();
  text_ = new NightProof<QPlainTextEdit>(this);
  text_->setObjectName("txtTraffic");
  text_->setAccessibleName(tr("Traffic"));
  text_->setReadOnly(true);
  text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  text_->setTabChangesFocus(true);
  text_->setUndoRedoEnabled(false);
  text_->setPlaceholderText(tr("No calls yet."));
  text_->setFont(FixedPitchFont());
  table_ = new CallTable(style, this);
  table_->setObjectName("tblCalls");
  BuildTabs();

  refresh_.setSingleShot(true);
  refresh_.setInterval(kRefresh);
  connect(&refresh_, &QTimer::timeout, this, &frmShow::ShowTraffic);
  traffic_.OnChange([this] {
    if (!refresh_.isActive()) refresh_.start();
  });
  Arrange();
  resize(width(), Pixels(*this, kDefaultHeightTwips));
}

QWidget* frmShow::BuildControls() {
  auto* controls = new QWidget(this);
  auto* grid = new QGridLayout(controls);
  grid->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(2, 1);

  auto* disable = new QPushButton(Fixed("Disable"));
  disable->setObjectName("cmdDisable");
  grid->addWidget(disable, 0, 0);
  connect(disable, &QPushButton::clicked, this, [this, disable] {
    traffic_.TogglePaused();
    disable->setText(traffic_.paused() ? Fixed("Enable") : Fixed("Disable"));
  });

  struct Filter {
    const char* name;
    QString caption;
    TrafficCategory category;
    int row;
    int column;
  };
  for (const Filter& filter : {Filter{"chkMove", Fixed("Move / Halt"), TrafficCategory::kMove, 0, 1},
                               Filter{"chkOther", Fixed("Other Calls"), TrafficCategory::kOther, 0, 2},
                               Filter{"chkTemp", Fixed("Temp Related"), TrafficCategory::kTemp, 1, 1},
                               Filter{"chkMoving", Fixed("IsMoving"), TrafficCategory::kMoving, 1, 2},
                               Filter{"chkNetwork", tr("Network requests"), TrafficCategory::kNetwork, 2, 1}}) {
    auto* box = new QCheckBox(filter.caption);
    box->setObjectName(filter.name);
    box->setChecked(traffic_.Wants(filter.category));
    // The last one has a row of its own.
    grid->addWidget(box, filter.row, filter.column, 1, filter.row == 2 ? 2 : 1);
    connect(box, &QCheckBox::toggled, this,
            [this, category = filter.category](bool on) { traffic_.SetWanted(category, on); });
  }

  grid->addWidget(ForHelp(new QPushButton(tr("Help"))), 2, 0);
  //: On a button: empty the text and the table.
  auto* clear = new QPushButton(tr("Clear"));
  clear->setObjectName("cmdClear");
  grid->addWidget(clear, 1, 0);
  connect(clear, &QPushButton::clicked, this, [this] {
    traffic_.Clear();
    table_->Clear();
  });
  return controls;
}

void frmShow::BuildTabs() {
  tabs_ = new QTabBar(this);
  tabs_->setObjectName("tabView");
  //: The choice between text and table.
  tabs_->setAccessibleName(tr("View"));
  tabs_->addTab(tr("Te&xt"));
  tabs_->addTab(tr("Ta&ble"));
  tabs_->setDrawBase(false);
  tabs_->setExpanding(false);
  table_->hide();
  setTabOrder(tabs_, text_);
  setTabOrder(text_, table_);
  connect(tabs_, &QTabBar::currentChanged, this, [this](int tab) {
    if (tab == 0) table_width_ = width();
    text_->setVisible(tab == 0);
    table_->setVisible(tab == 1);
    FitWidth();
  });
}

void frmShow::Arrange() {
  FitWidth();
  controls_->setGeometry(0, 0, minimumWidth(), controls_->sizeHint().height());
  tabs_->setGeometry(kMargin, controls_->height(), minimumWidth() - 2 * kMargin, tabs_->sizeHint().height());
  const int top = tabs_->geometry().bottom() + 1;
  setMinimumHeight(top + Pixels(*this, kMinTextTwips) + kMargin);
  SetTextOffset(Twips(*this, top + kMargin));
}

void frmShow::FitWidth() {
  const int text_width = std::max(Pixels(*this, kWidthTwips), controls_->sizeHint().width());
  if (tabs_->currentIndex() == 0) {
    setFixedWidth(text_width);
    return;
  }
  setMinimumWidth(text_width);
  setMaximumWidth(QWIDGETSIZE_MAX);
  constexpr int kTableShare = 2;
  resize(std::max({width(), table_width_, table_width_ == 0 ? kTableShare * text_width : 0}), height());
}

void frmShow::SetTextOffset(int twips) {
  text_offset_ = twips;
  FitText();
}

void frmShow::FitText() {
  const int height = this->height() - Pixels(*this, text_offset_);
  const QRect place(kMargin, tabs_->geometry().bottom() + 1, width() - 2 * kMargin, height);
  text_->setGeometry(place);
  table_->setGeometry(place);
}

void frmShow::ShowTraffic() {
  table_->Append(traffic_.TakeCalls());
  text_->setPlainText(QString::fromUtf8(traffic_.text()));
  text_->moveCursor(QTextCursor::End);
}

void frmShow::SetNightTheme(bool on) {
  DressWindow(*this, on);
  QFont font = text_->font();
  font.setBold(on);  // thin letters in red on black are hard to read
  text_->setFont(font);
  Arrange();
}

void frmShow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  FitText();
}

void frmShow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange && text_ != nullptr) Arrange();
}

}  // namespace orvalis
