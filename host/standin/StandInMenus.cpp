// The stand-in's menus, and its rate, themes, wallpapers and tools.
#include <QActionGroup>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QInputDialog>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QProcess>
#include <functional>
#include <utility>
#include <vector>

#include "host/standin/HostSettings.h"
#include "host/standin/PictureFiles.h"
#include "host/standin/StandInWindow.h"
#include "host/standin/theme_presets.h"
#include "platform/Application.h"
#include "platform/Translation.h"
#include "platform/version.h"

namespace host {
namespace {

// The names of looks and wallpapers, as the settings hold them, for the catalogues.
[[maybe_unused]] constexpr const char* kNames[] = {
    QT_TRANSLATE_NOOP("host::StandInWindow", "Default"), QT_TRANSLATE_NOOP("host::StandInWindow", "Dark"),
    QT_TRANSLATE_NOOP("host::StandInWindow", "Loud"),    QT_TRANSLATE_NOOP("host::StandInWindow", "linen"),
    QT_TRANSLATE_NOOP("host::StandInWindow", "night"),   QT_TRANSLATE_NOOP("host::StandInWindow", "paper"),
    QT_TRANSLATE_NOOP("host::StandInWindow", "slate")};

/// The dialogs that come of it are the stand-in's own.
void RunWhenChosen(QAction* action, std::function<void()> chosen) {
  QObject::connect(action, &QAction::triggered, action, [chosen = std::move(chosen)] {
    const platform::ToolkitInUsersLanguage language;
    platform::RunEvent(chosen);
  });
}

QAction* AddItem(QMenu* menu, const char* name, const QString& text, std::function<void()> chosen,
                 const QKeySequence& keys = {}) {
  QAction* action = menu->addAction(text);
  action->setObjectName(name);
  action->setShortcut(keys);
  RunWhenChosen(action, std::move(chosen));
  return action;
}

QAction* AddChoice(QMenu* menu, QActionGroup* group, const QString& text, bool ticked,
                   std::function<void()> chosen) {
  QAction* action = menu->addAction(text);
  action->setCheckable(true);
  action->setChecked(ticked);
  group->addAction(action);
  RunWhenChosen(action, std::move(chosen));
  return action;
}

}  // namespace

void StandInWindow::MakeMenus() {
  MakeAnimationMenu();
  MakePlayMenu();
  MakeLookMenu();
  if (runs_as_ == RunsAs::Program) MakeToolsMenu();
  MakeHelpMenu();
}

void StandInWindow::MakeAnimationMenu() {
  animation_menu_ = menuBar()->addMenu(tr("&Animation"));
  animation_menu_->setObjectName("AnimationMenu");
  AddItem(
      animation_menu_, "New", tr("&New..."), [this] { AskNewAnimation(); }, QKeySequence::New);
  AddItem(
      animation_menu_, "OpenPictures", tr("&Open pictures..."), [this] { AskPictures(); },
      QKeySequence::Open);
  AddItem(animation_menu_, "OpenFolder", tr("Open &folder..."), [this] { AskFolder(); });
  AddItem(animation_menu_, "Demonstration", tr("&Demonstration"), [this] { OpenDemonstration(); });
  animation_menu_->addSeparator();
  AddItem(
      animation_menu_, "Save", tr("&Save as numbered pictures..."), [this] { AskSave(); },
      QKeySequence::Save);
  animation_menu_->addSeparator();
  const bool apart = runs_as_ == RunsAs::Program;
  AddItem(
      animation_menu_, "Leave", apart ? tr("&Quit") : tr("&Minimise"), [this] { close(); },
      // Named by its keys: the toolkit's own sequence for leaving is empty on some desktops.
      Qt::CTRL | Qt::Key_Q);
}

void StandInWindow::MakePlayMenu() {
  QMenu* menu = menuBar()->addMenu(tr("&Frames"));
  menu->setObjectName("FramesMenu");
  menu->addActions({play_, first_, back_, forward_, last_});
  menu->addSeparator();
  AddItem(menu, "Rate", tr("Frame &rate..."), [this] { AskRate(); });
}

void StandInWindow::MakeLookMenu() {
  QMenu* menu = menuBar()->addMenu(tr("&Look"));
  menu->setObjectName("LookMenu");
  auto* themes = new QActionGroup(this);
  const auto current = CurrentTheme();
  for (const Theme theme : kThemes) {
    const QString name = QString::fromUtf8(ThemeName(theme).data());
    AddChoice(menu, themes, tr("%1 colours").arg(tr(name.toUtf8())), current == theme, [this, theme] {
      ChooseTheme(theme);
    })->setObjectName("Theme" + name);
  }
  menu->addSeparator();
  AddWallpapers(menu);
}

void StandInWindow::AddWallpapers(QMenu* menu) {
  auto* wallpapers = new QActionGroup(this);
  const QString chosen = ChosenWallpaper();
  AddChoice(menu, wallpapers, tr("No wallpaper"), chosen.isEmpty(), [this] { ChooseWallpaper({}); });
  for (const QString& name : WallpaperNames())
    AddChoice(menu, wallpapers, tr("Wallpaper \"%1\"").arg(tr(name.toUtf8())), chosen == name, [this, name] {
      ChooseWallpaper(name);
    })->setObjectName("Wallpaper" + name);
  const bool own = !chosen.isEmpty() && !WallpaperNames().contains(chosen);
  AddChoice(menu, wallpapers, tr("Own wallpaper..."), own, [this] { AskWallpaper(); });
}

void StandInWindow::MakeToolsMenu() {
  QMenu* menu = menuBar()->addMenu(tr("&Tools"));
  menu->setObjectName("ToolsMenu");
  AddItem(menu, "ExposureSheet", tr("&Exposure sheet..."), [this] { StartTool(); });
}

void StandInWindow::MakeHelpMenu() {
  QMenu* menu = menuBar()->addMenu(tr("&Help"));
  menu->setObjectName("HelpMenu");
  AddItem(menu, "About", tr("&About the stand-in"), [this] { About(); });
}

void StandInWindow::About() {
  QMessageBox::about(
      this, tr("About the stand-in"),
      tr("Stand-in for the host of the exposure sheet, version %1.\n\nIt holds the frames that the "
         "exposure sheet works on where no drawing program does.")
          .arg(platform::kVersion));
}

void StandInWindow::StartTool() {
  const QString program = QCoreApplication::applicationDirPath() + "/exposure-sheet";
  if (!QProcess::startDetached(program, {}, QDir::currentPath()))
    ShowFailure(tr("The program \"%1\" can't be started.").arg(program));
}

/// Colours bring their wallpaper along, unless the user has hung up a picture of their own.
void StandInWindow::ChooseTheme(Theme theme) {
  if (!StoreTheme(theme)) return ShowFailure(tr("The settings can't be written."));
  const QString hanging = ChosenWallpaper();
  if (hanging.isEmpty() || WallpaperNames().contains(hanging))
    PutWallpaper(QString::fromUtf8(ThemeWallpaper(theme).data()));
  DressTools();
}

void StandInWindow::ChooseWallpaper(const QString& name_or_path) {
  PutWallpaper(name_or_path);
  DressTools();
}

void StandInWindow::PutWallpaper(const QString& name_or_path) {
  if (!StoreWallpaper(name_or_path)) ShowFailure(tr("The settings can't be written."));
  stand_in_->SetWallpaper(WallpaperFile(name_or_path).toStdString());
  if (auto* item = findChild<QAction*>("Wallpaper" + name_or_path)) item->setChecked(true);
}

/// The tools that stand open take colours and wallpaper on at once.
void StandInWindow::DressTools() {
  for (FormObject* form : std::vector(stand_in_->Forms()))
    platform::RunEvent([form] { form->RunPrefsCallback(); });
}

/// Some windows keep the colours that they were designed in until the host asks them to read its own.
void StandInWindow::FormSent(FormObject& form) {
  if (CurrentTheme() != Theme::Default) platform::RunEvent([&form] { form.RunPrefsCallback(); });
}

void StandInWindow::AskWallpaper() {
  const QStringList file = AskFiles(tr("Choose a wallpaper"), tr("Pictures (%1)").arg(PicturePatterns()),
                                    QFileDialog::ExistingFile);
  if (!file.isEmpty()) ChooseWallpaper(file.first());
}

void StandInWindow::AskRate() {
  bool taken = false;
  const double rate = QInputDialog::getDouble(this, tr("Frame rate"), tr("Frames per second"),
                                              FramesPerSecond(), 0.1, 240, 3, &taken);
  if (taken) stand_in_->SetFrameRate(rate);
}

void StandInWindow::ShowFailure(const QString& text) { QMessageBox::warning(this, windowTitle(), text); }

}  // namespace host
