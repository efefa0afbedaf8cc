#include "platform/Menu.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>

#include "platform/Application.h"
#include "platform/Window.h"

namespace platform {

Menu::Menu(Window& window, const std::string& name, const std::string& text)
    : menu_(window.MenuBar()->addMenu(QString::fromStdString(text))) {
  menu_->setObjectName(QString::fromStdString(name));
}

void Menu::AddSeparator(const std::string& name) {
  menu_->addSeparator()->setObjectName(QString::fromStdString(name));
}

MenuItem::MenuItem(Menu& menu, const std::string& name, const std::string& text, const std::string& shortcut)
    : action_(menu.Widget()->addAction(QString::fromStdString(text))) {
  action_->setObjectName(QString::fromStdString(name));
  if (!shortcut.empty()) action_->setShortcut(QKeySequence(QString::fromStdString(shortcut)));
  QObject::connect(action_, &QAction::triggered, [this](bool checked) {
    // Only code ticks an item: the change that the toolkit makes at a click is undone before the handler
    // runs.
    if (action_->isCheckable()) action_->setChecked(!checked);
    if (Click) RunEvent(Click);
  });
}

bool MenuItem::Checked() const { return action_->isChecked(); }

void MenuItem::SetChecked(bool checked) {
  action_->setCheckable(true);
  action_->setChecked(checked);
}

}  // namespace platform
