#include "ui/controls/setup_pickers.h"

#include <QAbstractFileIconProvider>
#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>
#include <QPixmap>
#include <QRegularExpression>
#include <QStringList>
#include <QToolButton>

#include "ui/controls/panel_texts.h"
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

/// Does for a control that is not ours what NightProof does for our own: the text cursor would be white.
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

/// What is red of `icon`, for a disabled button too.
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

/// As the settings and other programs of this system write it.
std::string StoredPath(const QString& path) { return QDir::toNativeSeparators(path).toStdString(); }

/// Before the dialog is told of a folder: it keeps the icons that it showed once.
void Dress(QFileDialog& dialog, PickerLook look) {
  // The dialog asks for icons until its end.
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

std::optional<std::string> Ask(QFileDialog& dialog) {
  const bool chosen = dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty();
  if (!chosen) return std::nullopt;
  return StoredPath(dialog.selectedFiles().constFirst());
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

std::optional<std::string> PickFile(QWidget* parent, std::string_view filter, const std::string& current,
                                    PickerLook look) {
  QFileDialog dialog(parent, "Open", {}, ToQtFilter(filter));
  Dress(dialog, look);
  dialog.setFileMode(QFileDialog::ExistingFile);
  if (const QFileInfo file(ToQString(current)); !current.empty() && file.absoluteDir().exists()) {
    dialog.setDirectory(file.absolutePath());
    if (file.exists()) dialog.selectFile(file.fileName());
  }
  return Ask(dialog);
}

std::optional<std::string> PickLogFolder(QWidget* parent, const std::string& current, PickerLook look) {
  const QString title = "Please select a Server folder.";
  if (look == PickerLook::kDesktop) {
    const std::optional<QString> folder = desktop::AskForFolder(parent, title, ToQString(current));
    return folder ? std::optional(StoredPath(*folder)) : std::nullopt;
  }
  QFileDialog dialog(parent, title);
  Dress(dialog, look);
  dialog.setDirectory(ToQString(current));
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  return Ask(dialog);
}

std::optional<std::string> PickSaveFile(QWidget* parent, const QString& title, std::string_view filter,
                                        const QString& suggested, PickerLook look) {
  const QFileInfo file(suggested);
  QFileDialog dialog(parent, title, {}, ToQtFilter(filter));
  Dress(dialog, look);
  dialog.setDirectory(file.absolutePath());
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  const auto suffix_of = [](const QString& name_filter) {
    return QRegularExpression("[*]([.][a-z]+)").match(name_filter).captured(1);
  };
  dialog.setDefaultSuffix(suffix_of(dialog.selectedNameFilter()));
  QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, [&](const QString& chosen) {
    dialog.setDefaultSuffix(suffix_of(chosen));
    // The name follows, because the ending decides what is written.
    const QFileInfo typed(dialog.selectedFiles().value(0));
    dialog.selectFile(typed.completeBaseName() + suffix_of(chosen));
  });
  dialog.selectFile(file.fileName());
  // The toolkit's own question has a coloured picture in it.
  if (look == PickerLook::kNight) dialog.setOption(QFileDialog::DontConfirmOverwrite);
  while (std::optional<std::string> path = Ask(dialog)) {
    if (look != PickerLook::kNight || !QFileInfo::exists(ToQString(*path))) return path;
    QMessageBox box(QMessageBox::NoIcon, title, ToQString(*path) + " already exists.\nDo you want to replace it?",
                    QMessageBox::Yes | QMessageBox::No, parent);
    if (parent != nullptr) box.setPalette(parent->palette());
    for (QAbstractButton* button : box.buttons()) button->setIcon({});
    box.setDefaultButton(QMessageBox::No);
    if (box.exec() == QMessageBox::Yes) return path;
  }
  return std::nullopt;
}

}  // namespace orvalis
