#include "ui/help/help_window.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

#include "ui/controls/night_proof.h"
#include "ui/controls/night_style.h"
#include "ui/controls/text_fit.h"
#include "ui/controls/web_page.h"
#include "ui/help/guide_view.h"

namespace orvalis {

HelpWindow::HelpWindow() {
  setObjectName("frmHelp");
  setWindowTitle(tr("Orvalis Guide"));
  auto* column = new QVBoxLayout(this);
  auto* tools = new QWidget(this);
  column->addWidget(tools);
  guide_ = new GuideView(this);
  guide_->setObjectName("txtGuide");
  column->addWidget(guide_, 1);
  BuildTools(tools);
  guide_->setFocus();

  constexpr QSizeF kInitialSize(56, 52);  // in units of the font size
  QSize size = (kInitialSize * PixelSize(font())).toSize();
  if (const QScreen* on = screen()) size = size.boundedTo(on->availableSize() * 0.9);
  resize(size);
}

void HelpWindow::BuildTools(QWidget* tools) {
  auto* row = new QHBoxLayout(tools);
  row->setContentsMargins(0, 0, 0, 0);
  const auto add = [&](const QString& text, const char* name) {
    auto* button = new QPushButton(text, tools);
    button->setObjectName(name);
    row->addWidget(button);
    return button;
  };
  auto* back = add(tr("&Back"), "cmdBack");
  auto* forward = add(tr("&Forward"), "cmdForward");
  for (QPushButton* button : {back, forward}) button->setEnabled(false);
  connect(back, &QPushButton::clicked, guide_, &QTextBrowser::backward);
  connect(forward, &QPushButton::clicked, guide_, &QTextBrowser::forward);
  connect(guide_, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
  connect(guide_, &QTextBrowser::forwardAvailable, forward, &QWidget::setEnabled);
  connect(add(tr("&Contents"), "cmdContents"), &QPushButton::clicked, this, [this] { ShowPage("guide.html"); });

  row->addStretch(1);
  missing_ = new QLabel(tools);
  row->addWidget(missing_);
  auto* label = new QLabel(tr("&Search:"), tools);
  row->addWidget(label);
  search_ = new NightProof<QLineEdit>(tools);
  search_->setObjectName("txtSearch");
  search_->setAccessibleName(tr("Search this page"));
  search_->setToolTip(tr("Enter goes to the next place on this page"));
  label->setBuddy(search_);
  row->addWidget(search_);
  connect(search_, &QLineEdit::returnPressed, this, &HelpWindow::Find);
  connect(search_, &QLineEdit::textEdited, missing_, &QLabel::clear);
  connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, search_, [this] {
    search_->setFocus();
    search_->selectAll();
  });
  connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);

  // The same pages for printing, where they are installed.
  auto* browser = add(tr("In the b&rowser"), "cmdBrowser");
  browser->setVisible(!DocumentationPage().isEmpty());
  connect(browser, &QPushButton::clicked, this, [this] {
    QUrl page = DocumentationPage();
    page = page.resolved(QUrl(QFileInfo(guide_->source().path()).fileName()));
    OpenWebPage(page, this);
  });
}

void HelpWindow::ShowPage(const QString& page) { guide_->ShowPage(page); }

void HelpWindow::Find() { missing_->setText(guide_->FindNext(search_->text()) ? QString() : tr("not found")); }

void HelpWindow::SetNightTheme(bool on) {
  DressWindow(*this, on);
  guide_->Redraw(on);
}

}  // namespace orvalis
