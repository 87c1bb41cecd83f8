#include "ui/controls/file_pickers.h"

#include <QAbstractFileIconProvider>
#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QRegularExpression>
#include <QStringList>
#include <QToolButton>
#include <QWindow>
#include <utility>

#include "ui/controls/message_box.h"
#include "ui/controls/night_style.h"
#include "ui/controls/panel_texts.h"
#include "ui/controls/picker_process.h"
#include "ui/controls/words.h"
#include "ui/desktop.h"

namespace orvalis {
namespace {

/// The icons of files are coloured, which they must not be at night.
class NoIcons : public QAbstractFileIconProvider {
 public:
  NoIcons() : blank_(1, 1) { blank_.fill(Qt::transparent); }
  [[nodiscard]] QIcon icon(IconType /*type*/) const override { return blank_; }
  [[nodiscard]] QIcon icon(const QFileInfo& /*info*/) const override { return blank_; }

 private:
  QPixmap blank_;
};

/// Does for the toolkit's own controls what NightProof does for ours: the text cursor would be white.
class RedOver : public QObject {
 public:
  using QObject::QObject;
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Paint) return false;
    watched->event(event);
    auto* control = static_cast<QWidget*>(watched);
    QPainter painter(control);
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    painter.fillRect(control->rect(), Qt::red);
    return true;
  }
};

/// The red channel of `icon`, for a disabled button too.
QIcon Reddened(const QIcon& icon) {
  constexpr int kSide = 16;
  QPixmap picture = icon.pixmap(kSide, kSide);
  if (picture.isNull()) return {};
  QPixmap shape = picture;
  QPainter painter(&picture);
  painter.setCompositionMode(QPainter::CompositionMode_Multiply);
  painter.fillRect(picture.rect(), Qt::red);
  painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
  painter.drawPixmap(0, 0, shape);
  painter.end();
  QIcon red(picture);
  red.addPixmap(picture, QIcon::Disabled);
  return red;
}

/// With the system's separators, as in the settings and in other programs.
std::string StoredPath(const QString& path) { return QDir::toNativeSeparators(path).toStdString(); }

/// Call before setting the dialog's folder: it keeps the icons that it has loaded.
void Dress(QFileDialog& dialog, PickerLook look) {
  // The dialog uses it until its end.
  static NoIcons no_icons;
  if (look != PickerLook::kNight) return;
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setIconProvider(&no_icons);
  if (dialog.parentWidget() != nullptr) dialog.setPalette(dialog.parentWidget()->palette());
  dialog.setSizeGripEnabled(false);
  for (QToolButton* button : dialog.findChildren<QToolButton*>()) {
    button->setIcon(Reddened(button->icon()));
  }
  auto* red_over = new RedOver(&dialog);
  for (QLineEdit* edit : dialog.findChildren<QLineEdit*>()) edit->installEventFilter(red_over);
}

/// Puts the dialog in front of `owner`, a window of another process.
void GiveOwner(QFileDialog& dialog, QWindow* owner) {
  if (owner == nullptr) return;
  static_cast<void>(dialog.winId());  // from then on it has a window
  dialog.windowHandle()->setTransientParent(owner);
}

std::optional<std::string> Ask(QFileDialog& dialog, QWindow* owner) {
  GiveOwner(dialog, owner);
  const bool chosen = dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty();
  if (!chosen) return std::nullopt;
  return StoredPath(dialog.selectedFiles().constFirst());
}

std::optional<std::string> Finish(std::optional<std::string> chosen, const PickerFrame& frame) {
  if (frame.answer) frame.answer(chosen);
  return chosen;
}

std::optional<std::string> ShowOpen(QWidget* parent, const PickerRequest& request, const PickerFrame& frame) {
  QFileDialog dialog(parent, request.title, {}, request.filter);
  Dress(dialog, request.look);
  dialog.setFileMode(QFileDialog::ExistingFile);
  if (const QFileInfo file(request.start); !request.start.isEmpty() && file.absoluteDir().exists()) {
    dialog.setDirectory(file.absolutePath());
    if (file.exists()) dialog.selectFile(file.fileName());
  }
  return Finish(Ask(dialog, frame.owner), frame);
}

std::optional<std::string> ShowFolder(QWidget* parent, const PickerRequest& request, const PickerFrame& frame) {
  if (request.look == PickerLook::kDesktop && !frame.answer) {
    const std::optional<QString> folder = desktop::AskForFolder(parent, request.title, request.start);
    return folder ? std::optional(StoredPath(*folder)) : std::nullopt;
  }
  QFileDialog dialog(parent, request.title);
  Dress(dialog, request.look);
  dialog.setDirectory(request.start);
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  return Finish(Ask(dialog, frame.owner), frame);
}

/// The ending of the files that a filter shows.
QString SuffixOf(const QString& name_filter) {
  return QRegularExpression("[*]([.][a-z]+)").match(name_filter).captured(1);
}

bool MayReplace(QWidget* parent, const QString& title, const std::string& path) {
  MessageBox box(QMessageBox::NoIcon, title,
                 Words::tr("%1 already exists.\nDo you want to replace it?").arg(ToQString(path)),
                 QMessageBox::Yes | QMessageBox::No, parent);
  box.setDefaultButton(QMessageBox::No);
  return box.exec() == QMessageBox::Yes;
}

std::optional<std::string> ShowSave(QWidget* parent, const PickerRequest& request, const PickerFrame& frame) {
  const QFileInfo file(request.start);
  QFileDialog dialog(parent, request.title, {}, request.filter);
  Dress(dialog, request.look);
  dialog.setDirectory(file.absoluteDir().exists() ? file.absolutePath() : QDir::homePath());
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setDefaultSuffix(SuffixOf(dialog.selectedNameFilter()));
  QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&](const QString& chosen) {
    dialog.setDefaultSuffix(SuffixOf(chosen));
    // The name follows, because the ending decides what is written.
    const QFileInfo typed(dialog.selectedFiles().value(0));
    dialog.selectFile(typed.completeBaseName() + SuffixOf(chosen));
  });
  dialog.selectFile(file.fileName());
  // The toolkit's own question has a coloured icon.
  const bool ask_ourselves = request.look == PickerLook::kNight;
  if (ask_ourselves) dialog.setOption(QFileDialog::DontConfirmOverwrite);
  std::optional<std::string> path = Ask(dialog, frame.owner);
  while (path && ask_ourselves && QFileInfo::exists(ToQString(*path)) && !MayReplace(parent, request.title, *path)) {
    path = Ask(dialog, frame.owner);
  }
  return Finish(std::move(path), frame);
}

std::optional<std::string> Pick(QWidget* parent, PickerRequest request) {
  request.look = IsNight(parent) ? PickerLook::kNight : PickerLook::kDesktop;
  return UsesPickerProcess() ? PickInProcess(parent, request) : ShowPicker(parent, request);
}

}  // namespace

QString ToQtFilter(std::string_view filter) {
  const QStringList parts = ToQString(filter).split('|');
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    const QString description = parts[i].left(parts[i].lastIndexOf('(')).trimmed();
    QStringList patterns = parts[i + 1].split(';', Qt::SkipEmptyParts);
    for (QString& pattern : patterns) {
      if (pattern == "*.*") pattern = "*";
    }
    filters.append(description + " (" + patterns.join(' ') + ")");
  }
  return filters.join(";;");
}

std::optional<std::string> ShowPicker(QWidget* parent, const PickerRequest& request, const PickerFrame& frame) {
  switch (request.kind) {
    case PickerRequest::Kind::kFolder:
      return ShowFolder(parent, request, frame);
    case PickerRequest::Kind::kSave:
      return ShowSave(parent, request, frame);
    default:
      return ShowOpen(parent, request, frame);
  }
}

std::optional<std::string> PickFile(QWidget* parent, std::string_view filter, const std::string& current) {
  return Pick(parent, {.kind = PickerRequest::Kind::kFile,
                       .title = Words::tr("Open"),
                       .filter = ToQtFilter(filter),
                       .start = ToQString(current)});
}

std::optional<std::string> PickLogFolder(QWidget* parent, const std::string& current) {
  return Pick(parent, {.kind = PickerRequest::Kind::kFolder,
                       .title = Fixed("Please select a Server folder."),
                       .filter = {},
                       .start = ToQString(current)});
}

std::optional<std::string> PickSaveFile(QWidget* parent, const QString& title, std::string_view filter,
                                        const QString& suggested) {
  return Pick(parent,
              {.kind = PickerRequest::Kind::kSave, .title = title, .filter = ToQtFilter(filter), .start = suggested});
}

}  // namespace orvalis
