#include "ui/controls/picker_process.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QEventLoop>
#include <QProcess>
#include <QSocketNotifier>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "ui/controls/language.h"
#include "ui/controls/message_box.h"
#include "ui/controls/night_style.h"
#include "ui/controls/words.h"

namespace orvalis {
namespace {

using namespace std::chrono_literals;

constexpr const char* kPickerOption = "--file-dialog";
// What the dialog's process writes, one per line.
constexpr char kAlive = '.';
constexpr char kChosen = '=';
constexpr auto kHeartbeat = 1s;
/// Long enough for a slow machine to start a process.
constexpr auto kNotRespondingAfter = 5s;

// The arguments after the option, in this order.
enum Argument { kKind, kLook, kOwner, kTitle, kFilter, kStart, kLanguage, kArguments };

QString g_program;

/// The owner window for a dialog in another process; 0 where the desktop does not support that.
WId OwnerOf(const QWidget* parent) {
  if (parent == nullptr || QGuiApplication::platformName() != "xcb") return 0;
  return parent->window()->winId();
}

QStringList PickerArguments(const QWidget* parent, const PickerRequest& request) {
  QStringList arguments;
  arguments.resize(kArguments);
  arguments[kKind] = QString::number(static_cast<int>(request.kind));
  arguments[kLook] = QString::number(static_cast<int>(request.look));
  arguments[kOwner] = QString::number(OwnerOf(parent));
  arguments[kTitle] = request.title;
  arguments[kFilter] = request.filter;
  arguments[kStart] = request.start;
  arguments[kLanguage] = UsedLanguage();
  return QStringList(kPickerOption) + arguments;
}

/// Blocks input to the other windows without being visible.
class Blocker : public QDialog {
 public:
  explicit Blocker(QWidget* parent) : QDialog(parent) {
    setAttribute(Qt::WA_DontShowOnScreen);
    setModal(true);
    show();
  }
};

/// Shown while the dialog does not respond.
class NotRespondingMessage {
 public:
  NotRespondingMessage(QWidget* parent, QEventLoop& loop)
      : box_(QMessageBox::Warning, Fixed("Orvalis"),
             Words::tr("The folder is not responding. It may be on a network that is unavailable."),
             QMessageBox::NoButton, parent) {
    box_.AddButton(Words::tr("&Give up"), QMessageBox::RejectRole);
    box_.setModal(true);  // or the blocker would block it too
    QObject::connect(&box_, &QDialog::finished, &loop, &QEventLoop::quit);
    wait_.setSingleShot(true);
    wait_.callOnTimeout(&box_, [this] { box_.show(); });
    wait_.start(kNotRespondingAfter);
  }
  void NoteAlive() {
    box_.hide();
    wait_.start(kNotRespondingAfter);
  }

 private:
  MessageBox box_;
  QTimer wait_;
};

/// Lets go of a process that may not even stop until its folder responds.
void Abandon(std::unique_ptr<QProcess> process) {
  process->disconnect();
  if (process->state() == QProcess::NotRunning) return;
  QProcess* left = process.release();
  QObject::connect(left, &QProcess::finished, left, &QObject::deleteLater);
  left->kill();
}

void WriteLine(const QByteArray& line) {
  std::fputs((line + '\n').constData(), stdout);
  std::fflush(stdout);
}

/// Without cleaning up, which would wait for a folder that does not respond.
[[noreturn]] void EndPicker() {
  std::fflush(stdout);
  std::_Exit(EXIT_SUCCESS);
}

}  // namespace

void UsePickerProcess(const QString& program) { g_program = program; }

bool UsesPickerProcess() { return !g_program.isEmpty(); }

std::optional<std::string> PickInProcess(QWidget* parent, const PickerRequest& request) {
  const Blocker blocker(parent);
  QEventLoop loop;
  NotRespondingMessage message(parent, loop);
  std::optional<std::string> chosen;
  auto process = std::make_unique<QProcess>();
  process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
  QObject::connect(process.get(), &QProcess::readyReadStandardOutput, &loop, [&] {
    while (process->canReadLine()) {
      const QByteArray line = process->readLine().chopped(1);
      message.NoteAlive();
      if (!line.startsWith(kChosen)) continue;
      chosen = QByteArray::fromPercentEncoding(line.mid(1)).toStdString();
      loop.quit();
    }
  });
  QObject::connect(process.get(), &QProcess::finished, &loop, &QEventLoop::quit);
  bool started = true;
  QObject::connect(process.get(), &QProcess::errorOccurred, &loop, [&](QProcess::ProcessError error) {
    started = error != QProcess::FailedToStart;
    loop.quit();
  });
  process->start(g_program, PickerArguments(parent, request));
  if (started) loop.exec();
  Abandon(std::move(process));
  if (!started) return ShowPicker(parent, request);
  return chosen;
}

bool IsPicker(const std::vector<std::string>& arguments) {
  return arguments.size() == 2 + kArguments && arguments[1] == kPickerOption;
}

void ServePicker(const std::vector<std::string>& arguments) {
  const auto argument = [&](Argument which) { return QString::fromStdString(arguments[2 + which]); };
  int count = 1;
  std::string name = arguments[0];
  std::array<char*, 2> words{name.data(), nullptr};
  const QApplication application(count, words.data());
  QCoreApplication::setApplicationName("orvalis");
  QGuiApplication::setDesktopFileName("orvalis");
  UseLanguage(argument(kLanguage));
  // Nothing is ever sent on standard input: it becomes readable when the program has ended.
  const QSocketNotifier program_ended(0, QSocketNotifier::Read);
  QObject::connect(&program_ended, &QSocketNotifier::activated, qApp, [] { EndPicker(); });
  QTimer heartbeat;
  heartbeat.callOnTimeout(qApp, [] { WriteLine(QByteArray(1, kAlive)); });
  heartbeat.start(kHeartbeat);

  const PickerRequest request{.kind = static_cast<PickerRequest::Kind>(argument(kKind).toInt()),
                              .look = static_cast<PickerLook>(argument(kLook).toInt()),
                              .title = argument(kTitle),
                              .filter = argument(kFilter),
                              .start = argument(kStart)};
  QWidget dressed;  // never shown: the dialog takes its colours
  if (request.look == PickerLook::kNight) DressWindow(dressed, true);
  const auto owner = static_cast<WId>(argument(kOwner).toULongLong());
  const PickerFrame frame{.owner = owner == 0 ? nullptr : QWindow::fromWinId(owner),
                          .answer = [](const std::optional<std::string>& chosen) {
                            if (chosen) WriteLine(kChosen + QByteArray::fromStdString(*chosen).toPercentEncoding());
                            EndPicker();
                          }};
  static_cast<void>(ShowPicker(&dressed, request, frame));
  EndPicker();
}

}  // namespace orvalis
