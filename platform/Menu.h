// Menus of a window.
#pragma once

#include <functional>
#include <string>

class QAction;
class QMenu;

namespace platform {

class Window;

/// A menu in a window's menu bar. In a text "&" stands before the letter that calls it by keyboard; it isn't
/// shown.
class Menu {
 public:
  Menu(Window& window, const std::string& name, const std::string& text);
  QMenu* Widget() const { return menu_; }
  void AddSeparator(const std::string& name);

 private:
  QMenu* menu_;
};

class MenuItem {
 public:
  /// `shortcut` in the toolkit's portable form ("Ctrl+S"), empty for none.
  MenuItem(Menu& menu, const std::string& name, const std::string& text, const std::string& shortcut = "");
  bool Checked() const;
  /// An item that was never ticked or unticked by code shows no place for a tick.
  void SetChecked(bool checked);
  std::function<void()> Click;

 private:
  QAction* action_;
};

}  // namespace platform
