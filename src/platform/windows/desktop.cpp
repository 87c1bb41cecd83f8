#include "ui/desktop.h"

#include <windows.h>

// After windows.h, whose types they use.
#include <shellapi.h>
#include <shlobj.h>

#include <QApplication>
#include <QDir>
#include <QFont>
#include <QPainter>
#include <QProxyStyle>
#include <QStringList>
#include <QStyleOption>
#include <QUrl>
#include <QWidget>
#include <array>
#include <memory>
#include <string>

#include "base/run_time_error.h"
#include "platform/windows/panel_capture.h"

namespace orvalis::desktop {
namespace {

struct FreeTaskMemory {
  void operator()(void* memory) const { CoTaskMemFree(memory); }
};

HWND HandleOf(const QWidget& window) {
  return reinterpret_cast<HWND>(window.winId());  // NOLINT(performance-no-int-to-ptr): Qt's type for it
}

/// The dialog begins at the folder that `data` points to.
int CALLBACK BeginAt(HWND dialog, UINT message, LPARAM /*parameter*/, LPARAM data) {
  if (message == BFFM_INITIALIZED) SendMessageW(dialog, BFFM_SETSELECTIONW, TRUE, data);
  return 0;
}

/// Follows the palette, unlike the native Windows style, for the night theme. On a dark desktop Qt fills check boxes
/// with the selection colour, ticked or not; here they look like other fields.
class DesktopStyle : public QProxyStyle {
 public:
  DesktopStyle() : QProxyStyle("fusion") {}
  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    if ((element != PE_IndicatorCheckBox && element != PE_IndicatorRadioButton) || widget == nullptr) {
      return QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
    QStyleOptionButton plain;
    static_cast<QStyleOption&>(plain) = *option;
    const QPalette colours = widget->window()->palette();
    const bool dark = colours.color(QPalette::Window).lightness() < colours.color(QPalette::WindowText).lightness();
    plain.palette.setBrush(QPalette::Base, colours.brush(QPalette::Active, dark ? QPalette::Button : QPalette::Base));
    plain.palette.setBrush(QPalette::Text, colours.brush(QPalette::Active, QPalette::Text));
    QProxyStyle::drawPrimitive(element, &plain, painter, widget);
    // The style's own outline is darker than the window, so it cannot be seen on a dark one.
    if (dark && element == PE_IndicatorCheckBox) {
      QColor edge = colours.color(QPalette::Active, QPalette::WindowText);
      edge.setAlphaF(0.4F);
      painter->setPen(edge);
      painter->setBrush(Qt::NoBrush);
      painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
    }
  }
};

/// The font family of Windows' messages. The setting may be an alias such as "MS Shell Dlg", which Qt does not resolve;
/// selecting the font does.
QString MessageFontFamily() {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof(metrics);
  if (SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0) == FALSE) return {};
  HDC const screen = GetDC(nullptr);
  HFONT const font = CreateFontIndirectW(&metrics.lfMessageFont);
  HGDIOBJ const previous = SelectObject(screen, font);
  std::array<wchar_t, LF_FACESIZE> name{};
  GetTextFaceW(screen, static_cast<int>(name.size()), name.data());
  SelectObject(screen, previous);
  DeleteObject(font);
  ReleaseDC(nullptr, screen);
  return QString::fromWCharArray(name.data());
}

void UseMessageFont() {
  QFont font = QApplication::font();
  font.setFamilies(QStringList{MessageFontFamily(), "Segoe UI", "Tahoma", "DejaVu Sans"});
  QApplication::setFont(font);
  // Qt gives these classes fonts of their own.
  for (const char* kind : {"QMenu", "QMessageBox", "QTipLabel", "QAbstractItemView"}) QApplication::setFont(font, kind);
}

}  // namespace

void Prepare() {
  QApplication::setStyle(new DesktopStyle);
  UseMessageFont();
}

// The shell reads folders on its own threads.
bool FileDialogsBlock() { return false; }

void KeepOnTop(QWidget& window, bool on) {
  SetWindowPos(HandleOf(window), on ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
}

QPixmap PictureOf(QWidget& window) {
  // A window that is not on the screen cannot be copied from it.
  if (!window.isVisible() || window.isMinimized()) return window.grab();
  // Paint recent changes now, so that the copy shows them.
  QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
  window.repaint();
  try {
    return QPixmap::fromImage(ImageOf(*CaptureForm(HandleOf(window))));
  } catch (const RunTimeError&) {
    return window.grab();
  }
}

bool Open(const QUrl& address) {
  const std::wstring target =
      (address.isLocalFile() ? QDir::toNativeSeparators(address.toLocalFile()) : address.toString(QUrl::FullyEncoded))
          .toStdWString();
  HINSTANCE const answer = ShellExecuteW(nullptr, L"Open", target.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
  // The error numbers, except 0 (out of memory), which says nothing about what is installed.
  constexpr INT_PTR kFirstFailure = 1;
  constexpr INT_PTR kLastFailure = 32;
  const auto number = reinterpret_cast<INT_PTR>(answer);
  return number < kFirstFailure || number > kLastFailure;
}

std::optional<QString> AskForFolder(QWidget* parent, const QString& title, const QString& current) {
  const std::wstring words = title.toStdWString();
  const std::wstring begin = QDir::toNativeSeparators(current).toStdWString();
  BROWSEINFOW about{};
  about.hwndOwner = parent == nullptr ? nullptr : HandleOf(*parent->window());
  about.lpszTitle = words.c_str();
  about.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
  about.lpfn = BeginAt;
  about.lParam = reinterpret_cast<LPARAM>(begin.c_str());
  const std::unique_ptr<ITEMIDLIST, FreeTaskMemory> chosen(SHBrowseForFolderW(&about));
  std::array<wchar_t, MAX_PATH> path{};
  if (!chosen || SHGetPathFromIDListW(chosen.get(), path.data()) == FALSE) return std::nullopt;
  return QString::fromWCharArray(path.data());
}

}  // namespace orvalis::desktop
