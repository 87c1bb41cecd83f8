// Every window of the whole program in other languages. Fails for a text that is given to no translator, or under a
// context that the translations do not have.

#include "ui/controls/language.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTextDocumentFragment>
#include <QTimer>
#include <QTranslator>
#include <QXmlStreamReader>
#include <chrono>
#include <functional>
#include <set>
#include <utility>

#include "program_windows.h"
#include "tests/support/window_tools.h"

namespace orvalis {
namespace {

using namespace std::chrono_literals;

/// Puts each text that the German translation has, in the same context, into brackets.
class Brackets : public QTranslator {
 public:
  Brackets() {
    QFile file(ORVALIS_TRANSLATIONS "/orvalis_de.ts");
    if (!file.open(QIODevice::ReadOnly)) ADD_FAILURE() << "no translation";
    QString context;
    for (QXmlStreamReader reader(&file); !reader.atEnd(); reader.readNext()) {
      if (!reader.isStartElement()) continue;
      if (reader.name() == QLatin1String("name")) context = reader.readElementText();
      if (reader.name() == QLatin1String("source")) known_.emplace(context, reader.readElementText());
    }
  }
  [[nodiscard]] bool isEmpty() const override { return false; }
  [[nodiscard]] QString translate(const char* context, const char* text, const char* /*comment*/,
                                  int /*count*/) const override {
    return known_.contains({context, text}) ? "[" + QString::fromUtf8(text) + "]" : QString();
  }

 private:
  std::set<std::pair<QString, QString>> known_;
};

/// What a person or a screen reader gets from `widget`, without its children.
QStringList TextsOf(const QWidget& widget) {
  QStringList texts{widget.windowTitle(), widget.toolTip(), widget.accessibleName(), widget.accessibleDescription()};
  if (const auto* label = qobject_cast<const QLabel*>(&widget)) texts += label->text();
  if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) texts += button->text();
  if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) texts += group->title();
  if (const auto* edit = qobject_cast<const QLineEdit*>(&widget)) texts += edit->placeholderText();
  if (const auto* edit = qobject_cast<const QPlainTextEdit*>(&widget)) texts += edit->placeholderText();
  if (const auto* tabs = qobject_cast<const QTabWidget*>(&widget)) {
    for (int i = 0; i < tabs->count(); ++i) texts << tabs->tabText(i) << tabs->tabToolTip(i);
  }
  if (const auto* box = qobject_cast<const QComboBox*>(&widget)) {
    for (int i = 0; i < box->count(); ++i) texts += box->itemText(i);
  }
  if (const auto* header = qobject_cast<const QHeaderView*>(&widget); header != nullptr && header->model() != nullptr) {
    for (int i = 0; i < header->count(); ++i) {
      texts += header->model()->headerData(i, header->orientation()).toString();
    }
  }
  for (const QAction* action : widget.actions()) texts << action->text() << action->toolTip();
  return texts;
}

/// The texts that are the same in every language, each with the reason why, as regular expressions for a whole line.
QRegularExpression FixedTexts() {
  QFile file(ORVALIS_TRANSLATIONS "/../tests/ui/fixed_texts.txt");
  if (!file.open(QIODevice::ReadOnly)) ADD_FAILURE() << "no fixed texts";
  QStringList patterns;
  for (const QString& line : QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts)) {
    if (!line.startsWith('#')) patterns += line;
  }
  return QRegularExpression("(?<!\\w)(" + patterns.join('|') + ")(?![a-z])");
}

/// What of `text` is neither in brackets nor fixed.
QString Rest(QString text) {
  static const QRegularExpression fixed = FixedTexts();
  static const QRegularExpression bracketed(R"(\[[^\[\]]*\])");
  if (text.startsWith('<')) text = QTextDocumentFragment::fromHtml(text).toPlainText();
  for (qsizetype before = -1; before != text.size();) {
    before = text.size();
    text.remove(bracketed);
  }
  return text.remove('&').remove(fixed);
}

class LanguageTest : public testing::Test {
 protected:
  /// Runs the program with simulated values, opens every window by its menus, and calls `look` for each.
  void Run(const std::function<void(const QWidget&)>& look) {
    line_.demo = true;
    line_.profile_folder = folder_.path().toStdString();
    const auto manager = native::MakeServiceManager();
    Core core(line_, 30s, *manager);
    ProgramWindows windows(core);
    QTimer::singleShot(2500, qApp, [&] {
      const QWidget* panel = PanelOf();
      for (QAction* entry : panel->actions()) {
        const QString name = entry->objectName();
        if (!name.endsWith("Graph") && name != "mnuEvents" && name != "mnuTraffic" && name != "mnuWeb" &&
            name != "mnuPlace" && name != "mnuGuide" && name != "mnuSetup") {
          continue;
        }
        if (name != "mnuSetup") entry->trigger();
      }
      // It waits for the dialog.
      QTimer::singleShot(1500, qApp, [&] {
        LookAtAll(look);
        if (QWidget* dialog = QApplication::activeModalWidget()) dialog->close();
        QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(0); });
      });
      panel->findChild<QAction*>("mnuSetup")->trigger();
    });
    EXPECT_EQ(core.Run(&windows), 0);
  }

 private:
  static QWidget* PanelOf() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->objectName() == "frmHandBox") return window;
    }
    throw std::logic_error("there is no panel");
  }
  static void LookAtAll(const std::function<void(const QWidget&)>& look) {
    for (const QWidget* window : QApplication::topLevelWidgets()) look(*window);
  }

  QTemporaryDir folder_;
  CommandLine line_;
};

TEST_F(LanguageTest, EveryTextOfEveryWindowIsTranslatedOrFixed) {
  Brackets brackets;
  QCoreApplication::installTranslator(&brackets);
  static const QRegularExpression letters("\\p{L}");
  std::set<QString> seen;
  std::set<QString> untranslated;
  Run([&](const QWidget& window) {
    seen.insert(window.objectName());
    QList<QWidget*> widgets = window.findChildren<QWidget*>();
    widgets.prepend(const_cast<QWidget*>(&window));
    for (const QWidget* widget : widgets) {
      for (const QString& text : TextsOf(*widget)) {
        if (Rest(text).contains(letters)) untranslated.insert(widget->objectName() + ": " + text);
      }
    }
  });
  QCoreApplication::removeTranslator(&brackets);
  for (const QString& text : untranslated) ADD_FAILURE() << text.toStdString();
  for (const char* window :
       {"frmHandBox", "frmSetup", "frmShow", "frmFormSubmit", "frmEvents", "frmPlace", "frmHelp"}) {
    EXPECT_TRUE(seen.contains(window)) << window;
  }
}

TEST_F(LanguageTest, GermanIsInTheProgramAndTakesNoKeyTwice) {
  UseLanguage("de");
  int looked_at = 0;
  Run([&](const QWidget& window) {
    if (window.objectName() == "frmSetup") {
      ++looked_at;
      EXPECT_EQ(window.windowTitle(), "Orvalis-Einstellungen");
      EXPECT_EQ(test::KeysTakenTwice(window), "");
    }
    if (window.objectName() == "frmFormSubmit") {
      EXPECT_EQ(test::KeysTakenTwice(window), "");
    }
    if (window.objectName() == "frmHandBox") {
      EXPECT_TRUE(test::Find<QWidget>(window, "lblVerdict")->toolTip().contains("simuliert"));
    }
  });
  EXPECT_EQ(looked_at, 1);
  UseLanguage("en");
}

TEST(Language, IsTheFirstThatAPersonWantsAndThereIs) {
  const std::pair<QStringList, const char*> rows[] = {{{"de-AT"}, "de"},       {{"fr-FR", "fr", "de"}, "de"},
                                                      {{"en-GB", "de"}, "en"}, {{"C"}, "en"},
                                                      {{"fr"}, "en"},          {{}, "en"}};
  for (const auto& [wanted, language] : rows) EXPECT_EQ(FirstKnown(wanted), language) << wanted.join(',').toStdString();
  // As --language has it: a name that only begins like one that there is would be taken for a typing error.
  for (const char* name : {"de", "DE", "de-AT", "de_CH"}) EXPECT_EQ(KnownLanguage(name), "de") << name;
  for (const char* name : {"dex", "enx", "d", "", "de.", "de-"}) EXPECT_EQ(KnownLanguage(name), "") << name;
}

}  // namespace
}  // namespace orvalis
