#include "ui/help/guide_view.h"

#include <QFile>
#include <QPainter>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextTable>
#include <algorithm>
#include <chrono>
#include <vector>

#include "ui/controls/web_page.h"

namespace orvalis {
namespace {

const QString kGuide = QStringLiteral("qrc:/guide/");

QString FileOf(const QUrl& page) { return ":" + page.path(); }

}  // namespace

GuideView::GuideView(QWidget* parent) : NightProof(parent) {
  setAccessibleName(tr("Guide"));
  setOpenLinks(false);
  constexpr int kMargin = 12;
  document()->setDocumentMargin(kMargin);
  // Its coming and going would change the width that pictures are fitted to.
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  constexpr std::chrono::milliseconds kResting{50};
  fit_.setSingleShot(true);
  fit_.setInterval(kResting);
  connect(&fit_, &QTimer::timeout, this, &GuideView::FitAgain);
  connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) {
    const QUrl page = source().resolved(link);
    if (page.scheme() == "qrc") {
      setSource(page);
    } else {
      OpenWebPage(page, window());
    }
  });
}

void GuideView::ShowPage(const QString& page) { setSource(QUrl(kGuide + page)); }

void GuideView::Redraw(bool night) {
  night_ = night;
  if (source().isEmpty()) return;
  const int place = verticalScrollBar()->value();
  reload();
  verticalScrollBar()->setValue(place);
}

bool GuideView::FindNext(const QString& text) {
  if (text.isEmpty()) return true;
  if (find(text)) return true;
  const QTextCursor before = textCursor();
  moveCursor(QTextCursor::Start);
  if (find(text)) return true;
  setTextCursor(before);
  return false;
}

QVariant GuideView::loadResource(int type, const QUrl& name) {
  const QUrl page = source().resolved(name);
  QFile file(FileOf(page));
  if (page.scheme() != "qrc" || !file.open(QIODevice::ReadOnly)) return {};
  if (type == QTextDocument::ImageResource) return QImage::fromData(file.readAll());
  // The page's own style is a browser's.
  static const QRegularExpression style("<style>.*</style>", QRegularExpression::DotMatchesEverythingOption);
  return QString::fromUtf8(file.readAll()).replace(style, Style());
}

QString GuideView::Style() const {
  const QPalette& colours = palette();
  return QStringLiteral(
             "<style>a { color: %1; } td, th { padding: 2px 6px; } th { text-align: left; } "
             "pre { background-color: %2; margin-left: 12px; }</style>")
      .arg(colours.color(QPalette::Link).name(), colours.color(QPalette::AlternateBase).name());
}

void GuideView::doSetSource(const QUrl& address, QTextDocument::ResourceType type) {
  const bool same_page = source().adjusted(QUrl::RemoveFragment) == address.adjusted(QUrl::RemoveFragment);
  QTextBrowser::doSetSource(address, type);
  if (!same_page) fitted_width_ = 0;
  FitPictures();
  if (address.hasFragment()) scrollToAnchor(address.fragment());
}

void GuideView::resizeEvent(QResizeEvent* event) {
  QTextBrowser::resizeEvent(event);
  if (viewport()->width() != fitted_width_) fit_.start();
}

void GuideView::FitAgain() {
  // What is at the top stays there, although pictures above it change their height.
  const QTextCursor top = cursorForPosition({0, 0});
  const int before = cursorRect(top).top();
  FitPictures();
  verticalScrollBar()->setValue(verticalScrollBar()->value() + cursorRect(top).top() - before);
}

void GuideView::FitPictures() {
  const int width = viewport()->width();
  if (width == fitted_width_) return;
  fitted_width_ = width;
  std::vector<int> places;
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    for (auto part = block.begin(); !part.atEnd(); ++part) {
      if (part.fragment().charFormat().isImageFormat()) places.push_back(part.fragment().position());
    }
  }
  for (const int place : places) {
    QTextCursor cursor(document());
    cursor.setPosition(place);
    // Pictures side by side are in a table.
    const QTextTable* const table = cursor.currentTable();
    const int columns = table != nullptr ? table->columns() : 1;
    constexpr int kCellPadding = 16;
    const int margins = 2 * static_cast<int>(document()->documentMargin()) + columns * kCellPadding;
    cursor.setPosition(place + 1, QTextCursor::KeepAnchor);
    QTextImageFormat format = cursor.charFormat().toImageFormat();
    const QImage picture = Fitted(format.name(), std::max(1, (width - margins) / columns));
    document()->addResource(QTextDocument::ImageResource, document()->baseUrl().resolved(QUrl(format.name())), picture);
    format.setWidth(picture.deviceIndependentSize().width());
    format.setHeight(picture.deviceIndependentSize().height());
    cursor.setCharFormat(format);
  }
}

QImage GuideView::Fitted(const QString& name, int room) {
  QImage picture = loadResource(QTextDocument::ImageResource, QUrl(name)).value<QImage>();
  if (picture.isNull()) return picture;
  const double ratio = devicePixelRatioF();
  const int pixels = static_cast<int>(std::min(picture.width(), room) * ratio);
  picture = picture.convertToFormat(QImage::Format_RGB32).scaledToWidth(pixels, Qt::SmoothTransformation);
  if (night_) {  // white paper would shine
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    constexpr QColor kDim(130, 130, 130);
    painter.fillRect(picture.rect(), kDim);
  }
  picture.setDevicePixelRatio(ratio);
  return picture;
}

}  // namespace orvalis
