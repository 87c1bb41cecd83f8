#include "ui/setup/frm_setup.h"

#include <QApplication>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <chrono>
#include <utility>

#include "app/setup_advice.h"
#include "ui/controls/form_section.h"
#include "ui/controls/help_request.h"
#include "ui/controls/logo_button.h"
#include "ui/controls/message_box.h"
#include "ui/controls/night_style.h"
#include "ui/controls/panel_texts.h"
#include "ui/controls/screen_place.h"
#include "ui/controls/text_fit.h"
#include "ui/controls/web_page.h"
#include "ui/controls/words.h"

namespace orvalis {
namespace {

// In units of the font size, so that the dialog follows the desktop's font.
constexpr QSizeF kUsualSize(62, 52);
constexpr double kLeastWidth = 48;

}  // namespace

frmSetup::frmSetup(Parts parts, QWidget* parent) : QDialog(parent), parts_(std::move(parts)) {
  setObjectName("frmSetup");
  setWindowTitle(tr("Orvalis Setup"));
  pages_ = new QTabWidget;
  pages_->setObjectName("pages");
  pages_->setAccessibleName(windowTitle());
  pages_->addTab(BuildConnectionPage(), tr("&Connection"));
  pages_->addTab(BuildPanelPage(), tr("&Panel"));
  pages_->addTab(BuildUnitPage(), tr("&Unit alarms"));
  pages_->addTab(BuildSafetyPage(), tr("Sa&fety"));
  pages_->addTab(BuildAlertsPage(), tr("&Alerts"));
  pages_->addTab(BuildNetworkPage(), tr("&Network"));
  pages_->addTab(BuildMqttPage(), tr("M&QTT"));
  leftovers_page_ = BuildLeftoversPage();
  pages_->addTab(leftovers_page_, tr("&Leftovers"));
  auto* column = new QVBoxLayout(this);
  column->addWidget(pages_, 1);
  column->addLayout(BuildFooter());
  CollectControls();
  ConnectControls();
  ConnectSwitches();
  SetAdvanced(false);
  SyncSwitches();
  UpdateControls();
  port_->setFocus();
}

QBoxLayout* frmSetup::BuildFooter() {
  auto* row = new QHBoxLayout;
  for (LogoButton* logo : MakeLogoButtons(this)) row->addWidget(logo);
  auto* info = new QLabel(Fixed("Orvalis Version ") + parts_.version);
  info->setObjectName("lblDriverInfo");
  row->addWidget(info);
  row->addStretch(1);

  const auto add = [row](const char* name, const QString& text) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setAutoDefault(false);
    row->addWidget(button);
    return button;
  };
  ForHelp(add("cmdHelp", tr("Help")));
  advanced_button_ = add("cmdAdvanced", {});
  connect(advanced_button_, &QPushButton::clicked, this, [this] { SetAdvanced(!advanced_); });
  auto* ok = add("cmdOK", tr("OK"));
  ok->setDefault(true);
  connect(ok, &QPushButton::clicked, this, [this] {
    bad_field_.reset();
    accept();
  });
  connect(add("cmdCancel", tr("Cancel")), &QPushButton::clicked, this, &QDialog::reject);
  connect(this, &QDialog::rejected, this, [this] { bad_field_.reset(); });
  return row;
}

void frmSetup::CollectControls() {
  for (const SetupField& field : SetupFields()) {
    fields_.push_back(Find<QLineEdit>(field.name));
    advice_.push_back(Find<QLabel>(std::string(field.name) + FormSection::kAdviceEnd));
  }
  for (const SetupFlag& flag : SetupFlags()) {
    flags_.push_back(flag.name == "AdvancedMode" ? nullptr : Find<QAbstractButton>(flag.name));
  }
  for (const SetupChoice& choice : SetupChoices()) choices_.push_back(Find<QComboBox>(choice.name));
  for (const SetupText& text : SetupTexts()) {
    plain_texts_.push_back(text.name == "NetworkAddress" ? nullptr : Find<QLineEdit>(text.name));
  }
  for (const SetupFile& file : SetupFiles()) {
    files_.push_back(Find<PathButton>(file.name));
    results_.push_back(Find<QLabel>(std::string(file.name) + FormSection::kResultEnd));
  }
  for (const SetupUnitOption& option : SetupUnitOptions()) {
    unit_options_.push_back(Find<QCheckBox>(option.name));
    unit_tips_.push_back(unit_options_.back()->toolTip());
  }
}

void frmSetup::ConnectControls() {
  for (const char* name :
       {"chkCanTempComp", "chkCanTemp", "chkCanStepSize", "chkSynchronous", "chkBacklashDir", "chkCentigrade"}) {
    connect(Find<QCheckBox>(name), &QCheckBox::toggled, this, &frmSetup::UpdateControls);
  }
  for (QLineEdit* field : fields_) {
    connect(field, &QLineEdit::textChanged, this, &frmSetup::ShowAdvice);
    connect(field, &QLineEdit::textChanged, this, &frmSetup::ShowMeanings);
  }
  for (QCheckBox* option : unit_options_) connect(option, &QCheckBox::toggled, this, &frmSetup::ShowMeanings);
  connect(Find<QCheckBox>("chkCentigrade"), &QCheckBox::toggled, this, &frmSetup::ShowMeanings);
  connect(wind_unit_, &QComboBox::currentIndexChanged, this, &frmSetup::ShowMeanings);
  connect(port_, &QComboBox::editTextChanged, this, &frmSetup::ShowPortNote);
  connect(address_, &QComboBox::editTextChanged, this, &frmSetup::ShowAddressNote);
  connect(network_now_, &QLabel::linkActivated, this, [this](const QString& page) { OpenWebPage(QUrl(page), this); });
  // A reading comes, a port becomes free, an adapter is plugged in.
  constexpr std::chrono::seconds kLookAgain{1};
  live_timer_.setInterval(kLookAgain);
  connect(&live_timer_, &QTimer::timeout, this, [this] {
    ShowMeanings();
    if (network_now_->isVisible()) ShowNetworkNow();
    if (mqtt_now_->isVisible()) ShowMqttNow();
  });
  connect(mqtt_test_, &QPushButton::clicked, this, &frmSetup::TryMqtt);
  for (std::size_t i = 0; i < files_.size(); ++i) {
    // Not "toggled": only the user's own click asks for a file.
    connect(Find<QCheckBox>(SetupFiles()[i].check_box), &QCheckBox::clicked, this, [this, i](bool on) {
      if (on) AskForAlertFile(i, true);
    });
    connect(files_[i], &QPushButton::clicked, this, [this, i] { AskForAlertFile(i, false); });
    connect(Find<QPushButton>(std::string(SetupFiles()[i].name) + FormSection::kTestEnd), &QPushButton::clicked, this,
            [this, i] { TryAlert(i); });
  }
}

bool frmSetup::Exec(SetupForm& form) {
  ShowForm(form);
  SyncSwitches();
  if (position_) {
    move(*position_);
  } else {
    PlaceBeside(*this, parentWidget(), kUsualSize * PixelSize(font()), LeastWidth());
  }
  // What the frame measures is known when the window is there.
  QTimer::singleShot(0, this, [this] { MoveOntoScreen(*this); });
  FocusBadField();
  live_timer_.start();
  const bool confirmed = exec() == QDialog::Accepted;
  live_timer_.stop();
  position_ = pos();
  ReadForm(form);
  return confirmed;
}

void frmSetup::ShowForm(const SetupForm& form) {
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    const QString text = ToQString(form.texts[i]);
    // Unchanged text keeps its cursor and undo history.
    if (fields_[i]->text() != text) fields_[i]->setText(text);
    fields_[i]->setCursorPosition(0);
  }
  for (std::size_t i = 0; i < flags_.size(); ++i) {
    if (flags_[i] == nullptr) {
      SetAdvanced(form.flags[i]);
    } else {
      flags_[i]->setChecked(form.flags[i]);
      // A radio button cannot be switched off; the other one has to be switched on.
      if (flags_[i]->autoExclusive() && !form.flags[i]) relative_->setChecked(true);
    }
  }
  for (std::size_t i = 0; i < choices_.size(); ++i) choices_[i]->setCurrentIndex(form.choices[i]);
  for (std::size_t i = 0; i < plain_texts_.size(); ++i) SetPlainText(i, form.plain_texts[i]);
  for (std::size_t i = 0; i < files_.size(); ++i) {
    files_[i]->SetPath(form.files[i]);
    results_[i]->hide();
    const SetupFile& file = SetupFiles()[i];
    if (file.of_verdict) Find<QCheckBox>(file.check_box)->setChecked(!form.files[i].empty());
  }
  ShowUnit(form.unit, form.unit_known);
  port_->SetPort(form.port);
  ShowPortNote();
  ShowAddressNote();
  ShowNetworkNow();
  ShowMqttNow();
  mqtt_result_->hide();
  UpdateControls();
}

void frmSetup::ShowUnit(const UnitOptions& unit, bool known) {
  unit_known_ = known;
  for (std::size_t i = 0; i < unit_options_.size(); ++i) {
    unit_options_[i]->setChecked(known && unit.*SetupUnitOptions()[i].member);
    unit_options_[i]->setEnabled(known);
    unit_options_[i]->setToolTip(known ? unit_tips_[i] : tr("A setting of the unit; available while it is connected"));
  }
  ShowMeanings();
  if (!isVisible()) return;
  port_->Refill();
  ShowPortNote();
}

void frmSetup::ReadForm(SetupForm& form) const {
  for (std::size_t i = 0; i < fields_.size(); ++i) form.texts[i] = fields_[i]->text().toStdString();
  for (std::size_t i = 0; i < flags_.size(); ++i) {
    form.flags[i] = flags_[i] == nullptr ? advanced_ : flags_[i]->isChecked();
  }
  for (std::size_t i = 0; i < choices_.size(); ++i) form.choices[i] = choices_[i]->currentIndex();
  for (std::size_t i = 0; i < plain_texts_.size(); ++i) form.plain_texts[i] = PlainText(i);
  for (std::size_t i = 0; i < files_.size(); ++i) {
    const SetupFile& file = SetupFiles()[i];
    const bool given = !file.of_verdict || Find<QCheckBox>(file.check_box)->isChecked();
    form.files[i] = given ? files_[i]->path() : std::string();
  }
  form.unit = UnitTyped();
  form.port = port_->port();
}

UnitOptions frmSetup::UnitTyped() const {
  UnitOptions unit;
  for (std::size_t i = 0; i < unit_options_.size(); ++i) {
    unit.*SetupUnitOptions()[i].member = unit_options_[i]->isChecked();
  }
  return unit;
}

std::vector<std::string> frmSetup::FieldTexts() const {
  std::vector<std::string> texts;
  for (const QLineEdit* field : fields_) texts.push_back(field->text().toStdString());
  return texts;
}

int frmSetup::LeastWidth() const {
  const QMargins margins = layout()->contentsMargins();
  constexpr int kFrame = 8;  // of the pages
  const int tabs = pages_->tabBar()->sizeHint().width() + margins.left() + margins.right() + kFrame;
  return std::max(static_cast<int>(kLeastWidth * PixelSize(font())), tabs);
}

void frmSetup::SetAdvanced(bool on) {
  advanced_ = on;
  advanced_button_->setText(on ? Fixed("<< Basic") : Fixed("Advanced >>"));
  pages_->setTabVisible(pages_->indexOf(leftovers_page_), on);
  if (!isVisible() || width() >= LeastWidth()) return;
  resize(std::min(LeastWidth(), screen()->availableSize().width()), height());
  MoveOntoScreen(*this);
}

void frmSetup::UpdateControls() {
  const auto checked = [this](const char* box) { return Find<QCheckBox>(box)->isChecked(); };
  const auto enable = [this](bool on, std::initializer_list<const char*> names) {
    for (const char* name : names) Find<QWidget>(name)->setEnabled(on);
  };
  enable(checked("chkCanTempComp"), {"TempMax", "TempSteps", "TempCompCB"});
  enable(checked("chkCanTemp"), {"TempCur", "TPTempOffset", "Thermistor_A", "Thermistor_B", "Thermistor_C",
                                 "ThermistorR_A", "ThermistorR_B", "ThermistorR_C"});
  enable(checked("chkCanStepSize"), {"StepTime"});
  enable(checked("chkBacklashDir"), {"BacklashComp"});
  enable(!checked("chkSynchronous"), {"AllowAsyncWindCB"});
  temperature_label_->setText(checked("chkCentigrade") ? Fixed("Temp (°C):") : Fixed("Temp (°F):"));
}

void frmSetup::ShowPortNote() {
  const QString description = port_->Description();
  port_note_->setText(description.isEmpty() ? tr("No known device on this port") : description);
}

std::string frmSetup::PlainText(std::size_t text) const {
  if (plain_texts_[text] == nullptr) return address_->address();
  const QString typed = plain_texts_[text]->text();
  const bool secret = plain_texts_[text]->echoMode() == QLineEdit::Password;
  return (secret ? typed : typed.trimmed()).toStdString();
}

void frmSetup::SetPlainText(std::size_t text, const std::string& value) {
  if (PlainText(text) == value) return;  // it keeps its cursor and undo history
  if (plain_texts_[text] == nullptr) {
    address_->SetAddress(value);
  } else {
    plain_texts_[text]->setText(ToQString(value));
  }
}

void frmSetup::ShowAddressNote() {
  address_note_->setText(address_->Meaning());
  address_->setAccessibleDescription(address_->Meaning());
}

void frmSetup::ShowNetworkNow() {
  const network::Served served = parts_.network();
  // The style sheet of the night does not reach links.
  const QPalette palette = IsNight(this) ? Theme::Night().palette() : QDialog::palette();
  const QString colour = palette.color(QPalette::Link).name();
  QString text;
  for (const std::string& page : served.pages) {
    const QString shown = ToQString(page).toHtmlEscaped();
    text += QString("<div><a href=\"%1\" style=\"color: %2\">%1</a></div>").arg(shown, colour);
  }
  if (!served.trouble.empty()) text += "<div>" + Translated(served.trouble).toHtmlEscaped() + "</div>";
  if (text.isEmpty()) text = tr("Nothing is served.");
  // Set again, it would lose the link that has the focus.
  if (network_now_->text() != text) network_now_->setText(text);
}

void frmSetup::ShowAdvice() {
  const std::vector<Message> advice = AdviceOnSetup(FieldTexts(), parts_.locale);
  for (std::size_t i = 0; i < advice_.size(); ++i) {
    const QString text = Translated(advice[i]);
    if (fields_[i]->accessibleDescription() == text) continue;
    advice_[i]->setText("↑ " + text);
    advice_[i]->setVisible(!text.isEmpty());
    fields_[i]->setAccessibleDescription(text);
  }
}

void frmSetup::FocusBadField() {
  if (!bad_field_) return;
  QLineEdit* field = fields_[*bad_field_];
  for (int page = 0; page < pages_->count(); ++page) {
    if (!pages_->widget(page)->isAncestorOf(field)) continue;
    // The user cannot correct a hidden box; showing its page does not change the chosen layout.
    pages_->setTabVisible(page, true);
    pages_->setCurrentIndex(page);
    auto* scroll = qobject_cast<QScrollArea*>(pages_->widget(page));
    // The position of the box is known only after the layout.
    QTimer::singleShot(0, this, [scroll, field] { scroll->ensureWidgetVisible(field); });
  }
  field->setEnabled(true);  // it may be disabled, and still has to be corrected
  field->setFocus();
  field->selectAll();
}

void frmSetup::ShowMessage(std::string_view text) {
  bad_field_.reset();
  for (std::size_t i = 0; i < SetupFields().size(); ++i) {
    const SetupField& field = SetupFields()[i];
    if (field.replacement == SetupReading::kSentinel &&
        (text == field.conversion_message || text == field.range_message)) {
      bad_field_ = i;
    }
  }
  MessageBox(QMessageBox::Warning, Fixed("Orvalis"), ToQString(text), QMessageBox::Ok,
             isVisible() ? this : parentWidget())
      .exec();
}

void frmSetup::BringToFront() {
  QWidget* front = QApplication::activeModalWidget();
  if (front == nullptr) front = this;
  front->showNormal();
  front->raise();
  front->activateWindow();
}

void frmSetup::ShowPage(const char* frame) {
  const auto* wanted = Find<QWidget>(frame);
  for (int page = 0; page < pages_->count(); ++page) {
    if (pages_->widget(page)->isAncestorOf(wanted)) pages_->setCurrentIndex(page);
  }
}

void frmSetup::SetNightTheme(bool on) { DressWindow(*this, on); }

}  // namespace orvalis
