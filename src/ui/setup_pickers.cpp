#include "ui/setup_pickers.h"

#include <QAbstractFileIconProvider>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPainter>
#include <QPixmap>
#include <QRegularExpression>
#include <QStringList>
#include <QToolButton>

#include "ui/desktop.h"
#include "ui/panel_texts.h"

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

std::optional<std::string> Ask(QFileDialog& dialog, PickerLook look) {
  // The dialog asks for icons until its end, which is after this function's.
  static NoIcons no_icons;
  if (look == PickerLook::kNight) {
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setIconProvider(&no_icons);
    if (dialog.parentWidget() != nullptr) dialog.setPalette(dialog.parentWidget()->palette());
    dialog.setSizeGripEnabled(false);
    for (QToolButton* button : dialog.findChildren<QToolButton*>()) {
      button->setIcon(Reddened(button->icon()));
    }
  }
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
  dialog.setFileMode(QFileDialog::ExistingFile);
  if (const QFileInfo file(ToQString(current)); !current.empty() && file.absoluteDir().exists()) {
    dialog.setDirectory(file.absolutePath());
    if (file.exists()) dialog.selectFile(file.fileName());
  }
  return Ask(dialog, look);
}

std::optional<std::string> PickLogFolder(QWidget* parent, const std::string& current, PickerLook look) {
  const QString title = "Please select a Server folder.";
  if (look == PickerLook::kDesktop) {
    const std::optional<QString> folder = desktop::AskForFolder(parent, title, ToQString(current));
    return folder ? std::optional(StoredPath(*folder)) : std::nullopt;
  }
  QFileDialog dialog(parent, title, ToQString(current));
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  return Ask(dialog, look);
}

std::optional<std::string> PickSaveFile(QWidget* parent, const QString& title, std::string_view filter,
                                        const QString& suggested, PickerLook look) {
  const QFileInfo file(suggested);
  QFileDialog dialog(parent, title, file.absolutePath(), ToQtFilter(filter));
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
  while (std::optional<std::string> path = Ask(dialog, look)) {
    if (look != PickerLook::kNight || !QFileInfo::exists(ToQString(*path))) return path;
    QMessageBox box(QMessageBox::NoIcon, title, ToQString(*path) + " already exists.\nDo you want to replace it?",
                    QMessageBox::Yes | QMessageBox::No, parent);
    if (parent != nullptr) box.setPalette(parent->palette());
    for (QAbstractButton* button : box.buttons()) button->setIcon({});
    if (box.exec() == QMessageBox::Yes) return path;
  }
  return std::nullopt;
}

}  // namespace orvalis
