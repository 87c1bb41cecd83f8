#include "ui/help/help.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>
#include <array>

#include "ui/controls/help_request.h"
#include "ui/desktop.h"

namespace orvalis {
namespace {

struct Topic {
  const char* window;  ///< its object name, or a part of it
  const char* page;
};
constexpr std::array kTopics{Topic{"frmHandBox", "guide.html#the-panel"},
                             Topic{"frmAssistant", "guide.html#the-first-start"},
                             Topic{"frmSetup", "guide.html#setup"},
                             Topic{"frmShow", "guide.html#clients"},
                             Topic{"frmFormSubmit", "guide.html#web-publishing"},
                             Topic{"frmEvents", "guide.html#the-panel"},
                             Topic{"frmPlace", "guide.html#the-panel"},
                             Topic{"Graph", "guide.html#the-graphs"}};

bool IsHelpKey(const QEvent* event) {
  return event->type() == QEvent::KeyPress && static_cast<const QKeyEvent*>(event)->matches(QKeySequence::HelpContents);
}

}  // namespace

QString HelpTopic(const QWidget* widget) {
  // A message belongs to the window that it is above.
  for (; widget != nullptr; widget = widget->parentWidget()) {
    for (const Topic& topic : kTopics) {
      if (widget->objectName().contains(topic.window)) return topic.page;
    }
  }
  return "guide.html";
}

Help::Help() { qApp->installEventFilter(this); }

Help::~Help() { delete window_; }

void Help::OpenFor(QWidget* asking) {
  if (!window_) {
    window_ = new HelpWindow;
    window_->SetNightTheme(night_);
  }
  // A modal dialog lets only its own windows be used.
  QWidget* const modal = QApplication::activeModalWidget();
  if (window_->parentWidget() != modal) {
    const QRect place = window_->geometry();
    const bool shown = window_->isVisible();
    window_->setParent(modal, Qt::Window);
    if (shown) window_->setGeometry(place);
    window_->SetNightTheme(night_);
  }
  if (!window_->isVisible() && asking != nullptr) {
    // The one that asks would cover it.
    desktop::KeepOnTop(*window_, asking->window()->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    window_->SetNightTheme(night_);
  }
  window_->show();  // first: a section is found once the page has its width
  window_->raise();
  window_->activateWindow();
  window_->ShowPage(HelpTopic(asking));
}

void Help::SetNightTheme(bool on) {
  night_ = on;
  if (window_) window_->SetNightTheme(on);
}

bool Help::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != HelpRequest::Kind() && !IsHelpKey(event)) return false;
  auto* const asking = qobject_cast<QWidget*>(watched);
  if (asking == nullptr) return false;  // a window of the system's, whose widgets come next
  if (window_ == nullptr || asking->window() != window_) OpenFor(asking);
  return true;
}

}  // namespace orvalis
