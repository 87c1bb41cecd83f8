// The program with its windows.

#include <QApplication>
#include <QIcon>
#include <QMessageBox>
#include <iostream>
#include <memory>

#include "launch.h"
#include "platform/system/stop_signals.h"
#include "program_windows.h"
#include "ui/controls/language.h"
#include "ui/controls/outlined_boxes.h"
#include "ui/controls/picker_process.h"
#include "ui/desktop.h"

namespace {

class QtWindowSystem : public orvalis::WindowSystem {
 public:
  std::unique_ptr<QCoreApplication> MakeApplication(int& argc, char** argv) override {
    auto application = std::make_unique<QApplication>(argc, argv);
    orvalis::desktop::Prepare();
    orvalis::OutlineBoxes();
    if (orvalis::desktop::FileDialogsBlock()) orvalis::UsePickerProcess(QCoreApplication::applicationFilePath());
    QApplication::setQuitOnLastWindowClosed(false);
    QGuiApplication::setDesktopFileName("orvalis");
    QApplication::setWindowIcon(QIcon::fromTheme("orvalis"));
    return application;
  }

  void ChooseLanguage(const std::optional<std::string>& wanted) override {
    const QString known = wanted ? orvalis::KnownLanguage(QString::fromStdString(*wanted)) : QString();
    if (wanted && known.isEmpty()) {
      std::cerr << "orvalis: there is no language \"" << *wanted << "\"; there are "
                << orvalis::Languages().join(", ").toStdString() << '\n';
    }
    orvalis::UseLanguage(known.isEmpty() ? orvalis::LanguageOfLocale() : known);
  }

  std::unique_ptr<orvalis::Front> MakeWindows(orvalis::Core& core) override {
    return std::make_unique<orvalis::ProgramWindows>(core);
  }

  void RunHelper(const std::vector<std::string>& arguments) override {
    if (!orvalis::IsPicker(arguments)) return;
    orvalis::StopSignals::RestoreDefault();
    orvalis::ServePicker(arguments);
  }

  void ShowError(const QString& text) override {
    if (QGuiApplication::platformName() != "offscreen") QMessageBox::critical(nullptr, "Orvalis", text);
  }
};

}  // namespace

int main(int argc, char** argv) {
  QtWindowSystem windows;
  return orvalis::Launch(argc, argv, &windows);
}
