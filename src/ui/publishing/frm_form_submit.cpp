#include "ui/publishing/frm_form_submit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSplitter>
#include <QTabWidget>
#include <QVBoxLayout>

#include "ui/controls/form_section.h"
#include "ui/controls/help_request.h"
#include "ui/controls/message_box.h"
#include "ui/controls/night_style.h"
#include "ui/controls/panel_texts.h"
#include "ui/controls/quiet_combo_box.h"
#include "ui/controls/text_fit.h"
#include "ui/controls/words.h"
#include "ui/publishing/rows_editor.h"

namespace orvalis {
namespace {

// The places of the controls in the tables of submit_fields.h.
constexpr std::size_t kStationText = 0;
constexpr std::size_t kWebcamText = 1;
constexpr std::size_t kPasswordText = 2;
constexpr std::size_t kUrlText = 3;
constexpr std::size_t kServerText = 4;
constexpr std::size_t kWebcamPasswordText = 5;
constexpr std::size_t kReadings = 0;  ///< of the switches and of the intervals
constexpr std::size_t kPicture = 1;
constexpr std::size_t kBuiltInSwitch = 2;

constexpr std::chrono::milliseconds kRefreshDelay{250};

/// A page that scrolls if needed, on the window's background.
QScrollArea* MakeScroll(QWidget* page) {
  auto* scroll = new QScrollArea;
  scroll->setWidgetResizable(true);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setFocusPolicy(Qt::NoFocus);
  scroll->setWidget(page);
  scroll->viewport()->setAutoFillBackground(false);
  page->setAutoFillBackground(false);
  return scroll;
}

/// Shows `text`, unless part of the box is selected for copying. Returns whether it is shown.
[[nodiscard]] bool ShowText(QPlainTextEdit* box, const QString& text) {
  if (box->toPlainText() == text) return true;
  if (box->textCursor().hasSelection()) return false;
  box->setPlainText(text);
  return true;
}

QString Readable(std::string_view bytes) {
  QString text = ToQString(bytes);
  text.replace("\r\n", "\n");
  for (QChar& c : text) {
    if (c < u' ' && c != u'\n' && c != u'\t') c = QChar(0xfffd);
  }
  return text;
}

}  // namespace

frmFormSubmit::frmFormSubmit(WebPublisher& publisher, std::function<QPixmap()> grab_panel, QWidget* parent)
    // A dialog stays above the panel, which may be kept above everything else.
    : QDialog(parent, Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      publisher_(publisher),
      grab_panel_(std::move(grab_panel)) {
  setObjectName("frmFormSubmit");
  setWindowTitle(tr("Orvalis Web Publishing"));
  auto* pages = new QTabWidget;
  pages->setObjectName("pages");
  pages->setAccessibleName(tr("Request"));
  pages->addTab(BuildExchange(), tr("&Request"));
  pages->addTab(BuildComposer(), tr("Variables and &headers"));
  pages->setCornerWidget(ForHelp(new QPushButton(tr("Help"))));
  auto* upper = new QSplitter(Qt::Horizontal);
  upper->setChildrenCollapsible(false);
  upper->addWidget(BuildSettings());
  upper->addWidget(pages);
  upper->setStretchFactor(0, 4);
  upper->setStretchFactor(1, 5);
  auto* both = new QSplitter(Qt::Vertical);
  both->setChildrenCollapsible(false);
  both->addWidget(upper);
  both->addWidget(BuildErrors());
  both->setStretchFactor(0, 5);
  both->setStretchFactor(1, 1);
  auto* column = new QVBoxLayout(this);
  column->addWidget(both);
  constexpr QSize kDefaultSize(960, 720);
  const QScreen* on = screen();
  resize(on != nullptr ? kDefaultSize.boundedTo(on->availableSize() * 0.95) : kDefaultSize);

  refresh_.setSingleShot(true);
  refresh_.setInterval(kRefreshDelay);
  connect(&refresh_, &QTimer::timeout, this, &frmFormSubmit::Refresh);
  publisher_.boxes().OnChanged([this] { ScheduleRefresh(); });
  publisher_.readings().SetMessageBoxes(this);
  publisher_.webcam().SetPicture(this);
  ShowTargets();
}

frmFormSubmit::~frmFormSubmit() {
  for (QLineEdit* text : texts_) text->disconnect(this);  // they lose the focus, and say so, after this object has gone
  publisher_.boxes().OnChanged({});
  publisher_.readings().SetMessageBoxes(nullptr);
  publisher_.webcam().SetPicture(nullptr);
}

QWidget* frmFormSubmit::BuildSettings() {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);

  FormSection account(Fixed("Station ID and Password"), column);
  const auto row = [&](const QString& label, std::size_t index, const QString& tip) {
    account.Control(label, MakeText(index), tip);
    remarks_[index] = account.Note({});
    remarks_[index]->setObjectName("lblRemark" + QString::number(index));
    remarks_[index]->setWordWrap(true);
    remarks_[index]->setTextFormat(Qt::PlainText);
    remarks_[index]->hide();
  };
  row(tr("Station &ID:"), kStationText, {});
  row(tr("&Password:"), kPasswordText, tr("Used for both readings and picture"));
  row(tr("Webcam &name:"), kWebcamText, {});
  row(tr("Webcam pass&word:"), kWebcamPasswordText, tr("Same as the password above"));
  for (const std::size_t index : {kPasswordText, kWebcamPasswordText}) texts_[index]->setEchoMode(QLineEdit::Password);

  FormSection readings(tr("Readings"), column);
  readings.Control(tr("&URL:"), MakeText(kUrlText), {});
  readings.Row({BuildInterval(kReadings, Fixed("Allow PWS Upload  Interval ="))});
  send_ = new QPushButton(Fixed("&Test Server"));
  send_->setObjectName("cmdSend");
  send_->setAutoDefault(false);
  readings.Row({send_});
  targets_[kReadings] = MakeTarget(readings, "lblReadingsTarget", send_);
  connect(send_, &QPushButton::clicked, this,
          [this] { Send(kReadings, [this](Permission permission) { publisher_.TestServer(permission); }); });

  FormSection picture(tr("Panel picture"), column);
  picture.Control(tr("Webcam ser&ver:"), MakeText(kServerText), tr("FTP server, with a folder if there is one"));
  picture.Row({BuildInterval(kPicture, Fixed("Allow Web   Upload Interval ="))});
  switches_[kBuiltInSwitch] =
      picture.Check("chkWebcamBuiltIn", tr("Use &built-in FTP"),
                    tr("Otherwise two external programs for Windows convert and send the picture"));
  connect(switches_[kBuiltInSwitch], &QCheckBox::clicked, this, [this](bool on) {
    publisher_.SetSwitch(kSubmitSwitches[kBuiltInSwitch], on);
    ShowTargets();
  });
  capture_ = new QPushButton(Fixed("Capture"));
  capture_->setObjectName("Command1");
  capture_->setAutoDefault(false);
  picture.Row({capture_});
  targets_[kPicture] = MakeTarget(picture, "lblPictureTarget", capture_);
  connect(capture_, &QPushButton::clicked, this,
          [this] { Send(kPicture, [this](Permission permission) { publisher_.Capture(permission); }); });
  picture_ = new NightProof<PictureView>;
  picture_->setObjectName("Picture1");
  picture_->setAccessibleName(tr("Last captured panel picture"));
  column->addWidget(picture_, 1);
  QScrollArea* scroll = MakeScroll(page);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll->setMinimumWidth(page->minimumSizeHint().width());
  return scroll;
}

QLineEdit* frmFormSubmit::MakeText(std::size_t index) {
  auto* box = new NightProof<QLineEdit>;
  box->setObjectName(ToQString(kSubmitTexts[index].control));
  connect(box, &QLineEdit::textEdited, this, [this, index](const QString& text) { StoreText(index, text); });
  connect(box, &QLineEdit::editingFinished, this, [this] { publisher_.EndEdit(); });
  texts_[index] = box;
  return box;
}

void frmFormSubmit::StoreText(std::size_t index, const QString& text) {
  publisher_.SetText(kSubmitTexts[index], text.toStdString());
  for (std::size_t i = 0; i < texts_.size(); ++i) {
    if (i != index && kSubmitTexts[i].member == kSubmitTexts[index].member) texts_[i]->setText(text);
  }
  ShowRemarks();
  ShowTargets();
}

void frmFormSubmit::ShowRemarks() {
  for (std::size_t i = 0; i < texts_.size(); ++i) {
    if (remarks_[i] == nullptr) continue;
    const QString remark = Translated(Remark(kSubmitTexts[i], texts_[i]->text().toStdString()));
    remarks_[i]->setText(remark);
    remarks_[i]->setVisible(!remark.isEmpty());
    texts_[i]->setAccessibleDescription(remark);
  }
}

QWidget* frmFormSubmit::BuildInterval(std::size_t index, const QString& text) {
  auto* box = new QCheckBox(text);
  box->setObjectName(ToQString(kSubmitSwitches[index].control));
  connect(box, &QCheckBox::clicked, this, [this, index](bool on) {
    publisher_.SetSwitch(kSubmitSwitches[index], on);
    ShowTargets();
  });
  switches_[index] = box;

  auto* list = new QuietComboBox;
  list->setObjectName(ToQString(kSubmitIntervals[index].control));
  //: A list of intervals to a screen reader: the text of the check box, and the unit.
  list->setAccessibleName(tr("%1 seconds").arg(text));
  list->setAccessibleDescription(list->accessibleName());  // on some systems a list has its row for a name
  for (const UploadInterval& interval : kUploadIntervals) list->addItem(ToQString(interval.text), interval.item_value);
  list->setPlaceholderText(ToQString(UploadIntervalText(-1)));
  list->setCurrentIndex(-1);
  connect(list, &QComboBox::activated, this,
          [this, index](int row) { publisher_.SetInterval(kSubmitIntervals[index], row); });
  intervals_[index] = list;

  auto* both = new QWidget;
  auto* row = new QHBoxLayout(both);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(box);
  row->addWidget(list);
  //: Seconds.
  row->addWidget(new QLabel(tr("s")));
  return both;
}

QPlainTextEdit* frmFormSubmit::MakeBox(const char* name) {
  auto* box = new NightProof<QPlainTextEdit>;
  box->setObjectName(name);
  box->setReadOnly(true);
  box->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  box->setWordWrapMode(QTextOption::WrapAnywhere);
  box->setTabChangesFocus(true);
  box->setUndoRedoEnabled(false);
  box->setFont(FixedPitchFont());
  constexpr int kMinLines = 3;
  box->setMinimumHeight(box->fontMetrics().lineSpacing() * (kMinLines + 1));
  connect(box, &QPlainTextEdit::selectionChanged, this, [this, box] {
    if (!box->textCursor().hasSelection()) ScheduleRefresh();
  });
  return box;
}

QWidget* frmFormSubmit::BuildExchange() {
  const auto titled = [](QLabel* title, QPlainTextEdit* box) {
    auto* part = new QWidget;
    auto* column = new QVBoxLayout(part);
    column->setContentsMargins(0, 0, 0, 0);
    title->setBuddy(box);
    column->addWidget(title);
    column->addWidget(box, 1);
    return part;
  };
  request_caption_ = new QLabel;
  request_caption_->setObjectName("lblRequest");
  request_caption_->setWordWrap(true);
  request_caption_->setTextFormat(Qt::PlainText);
  request_ = MakeBox("txtRequest");
  request_->setAccessibleName(tr("Request"));
  response_ = MakeBox("txtResponse");
  response_->setPlaceholderText(tr("No response yet."));
  auto* parts = new QSplitter(Qt::Vertical);
  parts->setChildrenCollapsible(false);
  parts->addWidget(titled(request_caption_, request_));
  parts->addWidget(titled(new QLabel(tr("Resp&onse:")), response_));
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->addWidget(parts);
  return page;
}

QWidget* frmFormSubmit::BuildComposer() {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  FormSection request(tr("Request"), column);
  method_ = new QuietComboBox;
  method_->setObjectName("cboRequestMethod");
  for (const std::string_view method : kRequestMethods) method_->addItem(ToQString(method));
  request.Control(tr("&Method:"), method_, tr("GET sends the values in the URL, the others in the body"));
  connect(method_, &QComboBox::activated, this, &frmFormSubmit::ReadComposition);

  const auto rows = [&](const QString& title, const char* name, const RowsEditor::Texts& texts) {
    auto* group = new QGroupBox(title);
    auto* inside = new QVBoxLayout(group);
    auto* editor = new RowsEditor(name, texts);
    connect(editor, &RowsEditor::Changed, this, &frmFormSubmit::ReadComposition);
    inside->addWidget(editor);
    column->addWidget(group);
    return editor;
  };
  variables_ = rows(tr("Additional variables"), "Variable",
                    {.add = tr("&Add variable"), .name = tr("Variable name"), .value = tr("Variable value")});
  headers_ = rows(tr("Additional headers"), "Header",
                  {.add = tr("A&dd header"), .name = tr("Header name"), .value = tr("Header value")});
  auto* note = new QLabel(tr("Kept until the program ends."));
  note->setWordWrap(true);
  column->addWidget(note);
  column->addStretch(1);
  return MakeScroll(page);
}

QWidget* frmFormSubmit::BuildErrors() {
  auto* part = new QWidget;
  auto* column = new QVBoxLayout(part);
  column->setContentsMargins(0, 0, 0, 0);
  errors_ = MakeBox("errsWinsock");
  errors_->setPlaceholderText(tr("No errors."));
  auto* title = new QLabel(tr("&Errors:"));
  title->setBuddy(errors_);
  column->addWidget(title);
  column->addWidget(errors_, 1);
  return part;
}

void frmFormSubmit::Load() {
  const Settings& settings = publisher_.settings();
  for (std::size_t i = 0; i < texts_.size(); ++i) {
    texts_[i]->setText(ToQString(settings.*kSubmitTexts[i].member));
    texts_[i]->setCursorPosition(0);
  }
  ShowRemarks();
  for (std::size_t i = 0; i < switches_.size(); ++i) {
    switches_[i]->setChecked(settings.*kSubmitSwitches[i].member == 1);
  }
  for (std::size_t i = 0; i < intervals_.size(); ++i) {
    const std::int32_t row = settings.*kSubmitIntervals[i].row;
    intervals_[i]->setCurrentIndex(row >= 0 && row < intervals_[i]->count() ? row : -1);
  }
  ShowTargets();
  publisher_.webcam().WriteScript();
}

void frmFormSubmit::HideBuiltIn() { switches_[kBuiltInSwitch]->hide(); }

void frmFormSubmit::ShowInFront() {
  showNormal();
  raise();
  activateWindow();
}

void frmFormSubmit::RefreshPreview() {
  if (isVisible()) publisher_.readings().Preview();
}

QLabel* frmFormSubmit::MakeTarget(FormSection& section, const char* name, QPushButton* button) {
  QLabel* target = section.Note({});
  target->setObjectName(name);
  target->setWordWrap(true);
  target->setTextFormat(Qt::PlainText);
  target->setBuddy(button);
  return target;
}

void frmFormSubmit::ShowTargets() {
  struct Row {
    std::size_t index;
    WebPublisher::Target target;
    QPushButton* button;
    QString tip;
  };
  const Row rows[] = {
      {kReadings, publisher_.ReadingsTarget(), send_, tr("Sends the readings now")},
      {kPicture, publisher_.PictureTarget(), capture_, tr("Captures a picture of the panel and sends it now")}};
  for (const Row& row : rows) {
    QString text = Translated(row.target.text);
    if (row.target.usable && !switches_[row.index]->isChecked()) {
      //: Follows the sentences on account and server, which are %1.
      text = tr("%1 Uploads are off: the button asks, and sends once.").arg(text);
    }
    targets_[row.index]->setText(text);
    row.button->setToolTip(row.tip);
    row.button->setAccessibleDescription(text);
  }
}

void frmFormSubmit::Send(std::size_t index, const std::function<void(Permission)>& send) {
  if (switches_[index]->isChecked()) return send(Permission::kBySetting);
  const bool readings = index == kReadings;
  const auto [target, usable] = readings ? publisher_.ReadingsTarget() : publisher_.PictureTarget();
  const QString reason = readings ? tr("The readings are not sent, because that is not allowed above.")
                                  : tr("Pictures are not sent, because that is not allowed above.");
  const QString question = readings ? tr("The readings are not sent, because that is not allowed above. Send once?")
                                    : tr("Pictures are not sent, because that is not allowed above. Send once?");
  auto* box = new MessageBox(usable ? QMessageBox::Question : QMessageBox::Information, Fixed("Orvalis"),
                             (usable ? question : reason) + "\n\n" + Translated(target),
                             usable ? QMessageBox::Cancel : QMessageBox::Ok, this);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setDefaultButton(QMessageBox::Cancel);
  if (usable) {
    connect(box->AddButton(tr("&Send once"), QMessageBox::AcceptRole), &QAbstractButton::clicked, this,
            [send] { send(Permission::kOnce); });
  }
  box->open();
}

void frmFormSubmit::ReadComposition() {
  RequestComposition& composition = publisher_.readings().composition();
  composition.method = kRequestMethods[static_cast<std::size_t>(method_->currentIndex())];
  composition.variables = variables_->Rows();
  composition.headers = headers_->Rows();
  publisher_.readings().Edited();
}

void frmFormSubmit::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  publisher_.readings().Preview();
  Refresh();
}

void frmFormSubmit::ScheduleRefresh() {
  if (isVisible() && !refresh_.isActive()) refresh_.start();
}

void frmFormSubmit::Refresh() {
  const SubmitBoxes& boxes = publisher_.boxes();
  request_caption_->setText(Translated(boxes.request_caption()));
  // What cannot be shown now is shown when the selection is cleared.
  static_cast<void>(ShowText(request_, Readable(boxes.request())));
  if (boxes.response_version() != response_shown_ && ShowText(response_, Readable(boxes.Response()))) {
    response_shown_ = boxes.response_version();
    response_->verticalScrollBar()->setValue(response_->verticalScrollBar()->maximum());
  }
  if (boxes.errors_version() != errors_shown_ && ShowText(errors_, Readable(boxes.Errors()).trimmed())) {
    errors_shown_ = boxes.errors_version();
    errors_->verticalScrollBar()->setValue(errors_->verticalScrollBar()->maximum());
  }
}

void frmFormSubmit::ShowMessage(std::string_view text, std::string_view title) {
  if (!message_) {
    message_ = new MessageBox(QMessageBox::Warning, {}, {}, QMessageBox::Ok, this);
    message_->setAttribute(Qt::WA_DeleteOnClose);
    message_->setStyleSheet("#qt_msgbox_label { min-width: 240px; }");  // wide enough for its title
    message_->open();
  }
  message_->setWindowTitle(ToQString(title));
  message_->setText(ToQString(text));
}

void frmFormSubmit::SetNightTheme(bool on) { DressWindow(*this, on); }

}  // namespace orvalis
