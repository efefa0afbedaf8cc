// The plain controls: labels, text boxes, lists, scroll bars, check boxes, rules.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/Control.h"
#include "platform/numbers.h"

namespace platform {

class Picture;
class Window;

/// Text on a transparent ground. A text too wide for the control at the desktop's text size is set in smaller
/// letters.
class Label : public Control {
 public:
  enum class Align { Left, Right, Center };
  Label(Container& container, std::string name, const std::string& caption, Align align = Align::Left);
  std::string Caption() const;
  void SetCaption(const std::string& caption);
  Color ForeColor() const override;
  void SetForeColor(Color color) override;

  /// Without a routine a click is the ground's.
  std::function<void()> Click;
};

/// A line of text to edit. A text that can't be edited is set so small that all of it is seen.
class TextBox : public Control {
 public:
  TextBox(Container& container, std::string name, const std::string& text = "");
  const std::string& Text() const { return text_; }
  void SetText(const std::string& text);
  void SelectAll();
  /// A text that can't be edited is set in smaller letters where it is too wide for the box.
  void SetReadOnly(bool read_only);
  Color BackColor() const override;
  void SetBackColor(Color color) override;
  Color ForeColor() const override;
  void SetForeColor(Color color) override;

  /// The text has changed, by the user or by code.
  std::function<void()> Change;
  std::function<void()> LostFocus;
  /// Enter was pressed.
  std::function<void()> Entered;
  /// Escape was pressed.
  std::function<void()> Escaped;
  /// A mouse button went down anywhere else in the program while the box was shown, on what takes no focus
  /// too. To be set before the box is shown.
  std::function<void()> PressedElsewhere;

 private:
  /// The frame rate is read from a text box at every repaint: the toolkit's own form is turned into UTF-8
  /// once.
  std::string text_;
};

class ListBox : public Control {
 public:
  ListBox(Container& container, std::string name, const std::vector<std::string>& items);
  void SetListIndex(int index);
  /// The chosen item's text, empty if none is chosen.
  std::string Text() const;
  Color BackColor() const override;
  void SetBackColor(Color color) override;
  Color ForeColor() const override;
  void SetForeColor(Color color) override;

  /// An item was chosen: by a press and release of the mouse, or by Enter or the space bar, also if it was
  /// the chosen one already. Arrow keys only walk the list, or it could not be walked at all.
  std::function<void()> Click;
};

class HScrollBar : public Control {
 public:
  HScrollBar(Container& container, std::string name);
  int Min() const;
  void SetMin(int value);
  int Max() const;
  /// Pulls the value down, and raises Change, if it lies above.
  void SetMax(int value);
  int LargeChange() const;
  void SetLargeChange(int step);
  int Value() const;
  void SetValue(int value);

  std::function<void()> Change;
  /// The thumb is being dragged.
  std::function<void()> Scroll;
};

class CheckBox : public Control {
 public:
  CheckBox(Container& container, std::string name, const std::string& caption = "");
  /// 0 off, 1 on.
  int Value() const;
  void SetValue(int value);
  Color BackColor() const override;
  void SetBackColor(Color color) override;

  std::function<void()> Click;
};

class CommandButton : public Control {
 public:
  CommandButton(Container& container, std::string name, const std::string& caption);
  std::function<void()> Click;
};

/// A straight horizontal or vertical rule, one pixel wide.
class LineControl : public Control {
 public:
  LineControl(Container& container, std::string name, int x1, int y1, int x2, int y2, Color color);
  int X1() const;
  /// Moves both ends to a column.
  void SetX(int x);
  Color ForeColor() const override;
  void SetForeColor(Color color) override;

 private:
  Color color_;
};

/// Holds a picture; never seen itself.
class ImageHolder : public Control {
 public:
  ImageHolder(Container& container, std::string name);
  ~ImageHolder() override;
  const std::shared_ptr<const platform::Picture>& Picture() const { return picture_; }
  void SetPicture(std::shared_ptr<const platform::Picture> picture);

 private:
  std::shared_ptr<const platform::Picture> picture_;
};

class StatusBar : public Control {
 public:
  StatusBar(Container& container, std::string name);
};

/// Raises Tick every `interval` milliseconds while enabled.
class Timer {
 public:
  Timer(Window& window, const std::string& name, int interval_milliseconds);
  ~Timer();
  bool Enabled() const;
  void SetEnabled(bool enabled);
  std::function<void()> Tick;

 private:
  struct Clockwork;
  std::unique_ptr<Clockwork> clockwork_;
};

}  // namespace platform
