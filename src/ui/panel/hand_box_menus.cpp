// The bar at the top of the main panel: its menus, and the few buttons that stay in sight.

#include <QAction>
#include <QBoxLayout>
#include <QMenu>
#include <QMenuBar>
#include <QToolButton>

#include "ui/controls/help_request.h"
#include "ui/controls/logo_button.h"
#include "ui/controls/web_page.h"
#include "ui/panel/connect_button.h"
#include "ui/panel/frm_hand_box.h"

namespace orvalis {
namespace {

template <typename Part>
Part* Named(Part* part, const char* name) {
  part->setObjectName(name);
  return part;
}

}  // namespace

void frmHandBox::BuildBar() {
  bar_ = new QHBoxLayout;
  menus_ = Named(new QMenuBar(content_), "mnuPanel");
  menus_->setNativeMenuBar(false);  // the panel's place on the screen is not that of its desktop
  menus_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);  // where it is narrow it folds the last ones
  bar_->addWidget(menus_, 1);
  const auto menu = [this](const char* name, const QString& title) {
    QMenu* made = Named(menus_->addMenu(title), name);
    made->setToolTipsVisible(true);
    return made;
  };
  program_menu_ = menu("mnuProgram", tr("&Orvalis"));
  BuildVerdictMenu(menu("mnuVerdict", tr("Ve&rdict")));
  view_menu_ = menu("mnuView", tr("&View"));
  help_menu_ = menu("mnuHelp", tr("Hel&p"));

  program_tail_ = program_menu_->addSeparator();
  view_tail_ = view_menu_->addSeparator();
  night_ = AddEntry(Menu::kProgramEnd, "mnuNight", tr("&Night theme"), QKeySequence("Alt+N"));
  night_->setCheckable(true);
  night_->setToolTip(tr("Red on black, to preserve night vision"));
  connect(night_, &QAction::triggered, this, [this](bool on) {
    SetNightTheme(on);
    emit NightThemeToggled(on);
  });
  program_menu_->addSeparator();
  connect(AddEntry(Menu::kProgramEnd, "mnuQuit", tr("&Quit"), QKeySequence("Ctrl+Q")), &QAction::triggered, this,
          &QWidget::close);
  curve_ = AddEntry(Menu::kViewEnd, "mnuHumidityCurve", tr("Hu&midity curve"), {});
  curve_->setCheckable(true);
  curve_->setToolTip(tr("Shows the field that selects the humidity sensor's temperature curve"));
  connect(curve_, &QAction::toggled, this, &frmHandBox::ShowHumidityCurve);
  const auto page = [this](const char* name, const QString& text, QUrl (*url)()) {
    connect(AddEntry(Menu::kHelp, name, text, {}), &QAction::triggered, this,
            [this, url] { OpenWebPage(url(), this); });
  };
  connect(AddEntry(Menu::kHelp, "mnuGuide", tr("&User guide"), QKeySequence::HelpContents), &QAction::triggered, this,
          [this] { AskForHelp(this); });
  page("mnuGuidePage", tr("User guide in the &browser"), DocumentationPage);
  page("mnuStandards", tr("&Standards web site"), StandardsPage);

  night_button_ = Named(new QToolButton(content_), "cmdNight");
  night_button_->setText(tr("Night"));
  night_button_->setCheckable(true);
  night_button_->setAutoRaise(true);
  night_button_->setFocusPolicy(Qt::TabFocus);
  night_button_->setToolTip(night_->toolTip());
  night_button_->setAccessibleName(tr("Night theme"));
  connect(night_button_, &QToolButton::clicked, night_, &QAction::trigger);
  bar_->addWidget(night_button_);
  logos_ = MakeLogoButtons(content_);
  for (LogoButton* logo : logos_) bar_->addWidget(logo);
}

void frmHandBox::BuildVerdictMenu(QMenu* menu) {
  const auto entry = [&](const char* name, const QString& text, const QString& tip) {
    QAction* made = Named(menu->addAction(text), name);
    made->setToolTip(tip);
    made->setCheckable(true);
    return made;
  };
  force_unsafe_ = entry("mnuForceUnsafe", tr("&Force unsafe"),
                        tr("Unsafe for every program until it is released here, even over a restart"));
  test_unsafe_ = entry("mnuTestUnsafe", tr("&Test unsafe for 30 s"),
                       tr("Shows what your roof and other programs do; choosing it again ends the test"));
  connect(force_unsafe_, &QAction::triggered, this, [this] {
    emit ForceUnsafeToggled(!model_.banner.forced);
    Refresh();
  });
  connect(test_unsafe_, &QAction::triggered, this, [this] {
    emit TestUnsafeClicked();
    Refresh();
  });
  verdict_menu_ = menu;
}

QAction* frmHandBox::AddEntry(Menu menu, const char* name, const QString& text, const QKeySequence& keys) {
  struct Place {
    QMenu* menu;
    QAction* before;
  };
  const Place places[] = {{program_menu_, program_tail_},
                          {program_menu_, nullptr},
                          {view_menu_, view_tail_},
                          {view_menu_, nullptr},
                          {help_menu_, nullptr}};
  const Place& place = places[static_cast<int>(menu)];
  QAction* entry = Named(new QAction(text, place.menu), name);
  place.menu->insertAction(place.before, entry);
  entry->setShortcut(keys);
  addAction(entry);  // its keys work where the bar has no room for its menu
  return entry;
}

QList<QAction*> frmHandBox::VerdictEntries() const { return {force_unsafe_, test_unsafe_}; }

}  // namespace orvalis
