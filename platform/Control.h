// What all controls have in common: a name, a place, colours, visibility, focus.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "platform/numbers.h"

class QWidget;

namespace platform {

class Control;
class Window;

/// A window or a picture that holds controls.
class Container {
 public:
  virtual ~Container() = default;
  virtual QWidget* ContainerWidget() = 0;
  virtual Window& OwnerWindow() = 0;
  /// Where controls list themselves with their window, in the order in which they are made.
  virtual std::vector<Control*>& ControlList() = 0;
};

/// What a colour scheme goes by. A control that is made elsewhere is of another kind.
enum class ControlKind { Label, TextBox, ListBox, CheckBox, StatusBar, Other };

/// A control refuses what it was asked for: a row that the grid doesn't have, a property that it lacks.
class ControlError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A control on a window. It lists itself with its window when made and owns its widget, which carries the
/// control's name as object name. Positions are whole pixels in its container, twips only where a name says
/// so.
class Control {
 public:
  Control(Container& container, ControlKind kind, std::string name, QWidget* widget);
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control();

  ControlKind Kind() const { return kind_; }
  const std::string& Name() const { return name_; }
  Window& OwnerWindow() const { return owner_; }
  QWidget* Widget() const { return widget_; }
  std::string Tag;

  int Left() const;
  int Top() const;
  int Width() const;
  int Height() const;
  void Move(int left, int top, int width, int height);
  void MoveTwips(int left, int top, int width, int height);
  void SetLeft(int pixels);
  void SetTop(int pixels);
  /// Throws ControlError for a width or height below 0.
  void SetWidth(int pixels);
  void SetHeight(int pixels);

  /// True if the control itself isn't hidden, whether or not its window is on the screen.
  bool Visible() const;
  void SetVisible(bool visible);
  /// Lays the control over the others of its container.
  void BringToFront();
  void SetFocus();
  bool HasFocus() const;

  /// The tip is the accessible name too, unless the control has a caption. A key that does the same stands
  /// behind it in brackets.
  void SetToolTip(const std::string& text, const std::string& key = "");
  void SetAccessibleName(const std::string& text);
  /// More than the name says, and what changes.
  void SetAccessibleDescription(const std::string& text);
  /// Has a screen reader say what has changed here, while the keyboard stays where it is.
  void Announce(const std::string& text);

  /// A control that lacks a colour throws ControlError.
  virtual Color BackColor() const;
  virtual void SetBackColor(Color color);
  virtual Color ForeColor() const;
  virtual void SetForeColor(Color color);

  /// Puts the control on the screen at once.
  virtual void Refresh();

 protected:
  std::vector<Control*>& ControlList() const { return list_; }
  [[noreturn]] void Lacks(const char* property) const;

 private:
  Window& owner_;
  std::vector<Control*>& list_;
  ControlKind kind_;
  std::string name_;
  QWidget* widget_;
};

}  // namespace platform
