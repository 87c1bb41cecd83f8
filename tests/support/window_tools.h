#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QTabWidget>
#include <stdexcept>
#include <string>
#include <string_view>

namespace orvalis::test {

/// The child of `window` with this object name.
template <typename Child>
Child* Find(const QObject& window, std::string_view name) {
  auto* found = window.findChild<Child*>(QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())));
  if (found == nullptr) throw std::logic_error("there is no " + std::string(name));
  return found;
}

/// Lets everything happen that is due.
inline void Settle() {
  for (int i = 0; i < 5; ++i) QApplication::processEvents();
}

/// What shines in a picture: the pixels that are not purely red, the bright red ones, and the ones that are not grey.
struct Light {
  explicit Light(const QImage& picture) {
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) {
        const QColor pixel = picture.pixelColor(x, y);
        not_red += pixel.green() != 0 || pixel.blue() != 0;
        bright += pixel.red() > 200;
        coloured += pixel.saturation() > 8;
      }
    }
  }
  int not_red = 0;
  int bright = 0;
  int coloured = 0;
};

/// The letters after "&" that two texts have which are seen at the same time: both would need the key pressed twice.
inline std::string KeysTakenTwice(const QWidget& window) {
  const auto* tabs = window.findChild<QTabWidget*>();
  std::string twice;
  for (int page = 0; page < tabs->count(); ++page) {
    QString keys;
    const auto take = [&](const QString& text) {
      const auto mark = text.indexOf('&');
      if (mark < 0) return;
      const QChar key = text[mark + 1].toUpper();
      if (keys.contains(key)) twice += text.toStdString() + "; ";
      keys.append(key);
    };
    const auto is_elsewhere = [&](const QWidget* control) {
      const auto* pages = tabs->widget(page)->parentWidget();
      return pages->isAncestorOf(control) && !tabs->widget(page)->isAncestorOf(control);
    };
    for (int tab = 0; tab < tabs->count(); ++tab) take(tabs->tabText(tab));
    for (const auto* label : window.findChildren<QLabel*>()) {
      if (!is_elsewhere(label)) take(label->text());
    }
    for (const auto* button : window.findChildren<QAbstractButton*>()) {
      if (!is_elsewhere(button)) take(button->text());
    }
  }
  return twice;
}

}  // namespace orvalis::test
