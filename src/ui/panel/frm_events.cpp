#include "ui/panel/frm_events.h"

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QClipboard>
#include <QDate>
#include <QFileInfo>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardPaths>
#include <algorithm>
#include <deque>
#include <iterator>
#include <optional>
#include <utility>

#include "panel/event_text.h"
#include "ui/controls/file_pickers.h"
#include "ui/controls/file_saving.h"
#include "ui/controls/night_proof.h"
#include "ui/controls/night_style.h"
#include "ui/controls/panel_texts.h"
#include "ui/controls/text_fit.h"
#include "ui/controls/words.h"
#include "ui/desktop.h"
#include "ui/panel/event_view.h"

namespace orvalis {
namespace {

constexpr QSizeF kInitialSize(46, 30);  ///< in units of the font size
constexpr const char* kTextFilter = QT_TRANSLATE_NOOP("orvalis::Words", "Text Files (*.txt)|*.txt");

}  // namespace

frmEvents::frmEvents(Parts parts, QWidget* parent) : QWidget(parent, Qt::Window), parts_(std::move(parts)) {
  setObjectName("frmEvents");
  setWindowTitle(tr("Orvalis Events"));
  auto* column = new QVBoxLayout(this);
  auto* row = new QHBoxLayout;
  column->addLayout(row);
  auto* label = new QLabel(tr("&Filter:"));
  row->addWidget(label);
  filter_ = new NightProof<QLineEdit>(this);
  filter_->setObjectName("txtFilter");
  filter_->setClearButtonEnabled(false);  // its picture is grey at night
  filter_->setPlaceholderText(tr("words that an event has"));
  filter_->setAccessibleName(tr("Filter"));
  label->setBuddy(filter_);
  row->addWidget(filter_, 1);
  const auto button = [&](const char* name, const QString& text, const QString& tip) {
    auto* made = new QPushButton(text, this);
    made->setObjectName(name);
    made->setAutoDefault(false);
    made->setToolTip(tip);
    row->addWidget(made);
    return made;
  };
  copy_ = button("cmdCopy", tr("&Copy"), tr("Copies what is selected, or all that is shown"));
  save_ = button("cmdSave", tr("&Save…"), tr("Saves all that is shown as a text file"));
  view_ = new EventView(parts_.style, this);
  view_->setObjectName("txtEvents");
  column->addWidget(view_, 1);
  message_ = new QLabel(this);
  message_->setObjectName("lblMessage");
  message_->setTextFormat(Qt::PlainText);
  message_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  message_->setMinimumHeight(message_->fontMetrics().height());  // nothing moves when it says something
  column->addWidget(message_);
  connect(filter_, &QLineEdit::textChanged, this, &frmEvents::Filter);
  connect(copy_, &QPushButton::clicked, this, &frmEvents::Copy);
  connect(save_, &QPushButton::clicked, this, &frmEvents::Save);
  AddKeys();
  resize((kInitialSize * PixelSize(font())).toSize());
  Filter();
}

void frmEvents::AddKeys() {
  const auto key = [this](const QKeySequence& keys, auto work) {
    auto* action = new QAction(this);
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, work);
    addAction(action);
  };
  key(QKeySequence::Find, [this] {
    filter_->setFocus();
    filter_->selectAll();
  });
  key(QKeySequence::Save, [this] { Save(); });
  key(QKeySequence("Ctrl+W"), [this] { close(); });
  key(QKeySequence("Esc"), [this] { close(); });
}

std::string frmEvents::FilterText() const { return filter_->text().toStdString(); }

void frmEvents::Append(const Event& event) {
  if (!Matches(event, FilterText())) return;
  view_->Append(event);
  copy_->setEnabled(true);
  save_->setEnabled(true);
}

void frmEvents::Filter() {
  std::deque<Event> shown;
  std::ranges::copy_if(parts_.events.events(), std::back_inserter(shown),
                       [filter = FilterText()](const Event& event) { return Matches(event, filter); });
  copy_->setEnabled(!shown.empty());
  save_->setEnabled(!shown.empty());
  view_->setPlaceholderText(parts_.events.events().empty() ? tr("No events yet.") : tr("No event has these words."));
  view_->Replace(std::move(shown));
}

void frmEvents::Copy() {
  if (view_->textCursor().hasSelection()) {
    view_->copy();
    Say(tr("Copied what is selected"));
    return;
  }
  QApplication::clipboard()->setText(QString::fromStdString(EventFile(view_->events(), parts_.style)));
  Say(tr("Copied all that is shown"));
}

void frmEvents::Save() {
  if (!save_->isEnabled()) return;
  if (folder_.isEmpty()) folder_ = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  const QString name = "orvalis-events-" + QDate::currentDate().toString(Qt::ISODate) + ".txt";
  // As it was when the user asked: events may arrive while the dialog is open.
  const std::string text = EventFile(view_->events(), parts_.style);
  const std::optional<std::string> chosen =
      PickSaveFile(this, tr("Save Events"), Words::tr(kTextFilter).toStdString(), folder_ + "/" + name);
  if (!chosen) return;
  const QString path = ToQString(*chosen);
  folder_ = QFileInfo(path).absolutePath();
  Say(tr("Saving %1…").arg(path));
  SaveInBackground(
      this, path, [text] { return QByteArray::fromStdString(text); },
      [this, path](const QString& failure) {
        if (failure.isEmpty()) return Say(tr("Saved as %1").arg(path));
        const Message trouble = Message::Of("Cannot save %1: %2").With(path.toStdString(), failure.toStdString());
        Say(Translated(trouble));
        parts_.report(trouble.English());
      });
}

void frmEvents::Say(const QString& text) {
  message_->setText(text);
  message_->setToolTip(text.toHtmlEscaped());
}

void frmEvents::ShowInFront() {
  if (!isVisible()) {
    desktop::KeepOnTop(*this, parts_.on_top());  // the panel would cover it
    SetNightTheme(IsNight(this));                // a window that got a flag is polished again, and shines white
  }
  showNormal();
  raise();
  activateWindow();
  view_->ScrollToNewest();
}

void frmEvents::SetNightTheme(bool on) { DressWindow(*this, on); }

}  // namespace orvalis
