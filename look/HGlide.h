// The in-house horizontal scroll control.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Control.h"
#include "platform/numbers.h"

namespace look {

/// A trough with a bar in it. The position runs from 0 to the range, both included.
class HGlide : public platform::Control {
 public:
  HGlide(platform::Container& container, std::string name);
  ~HGlide() override;

  int Range() const;
  /// The top of the position; below 0 counts as 0. A position above it comes down with it, without an event.
  void SetRange(int range);
  int Position() const;
  void SetPosition(int position);
  /// Lays the control out again after a change of width.
  void LayOut();

  /// The trough.
  platform::Color BackColor() const override;
  void SetBackColor(platform::Color color) override;
  /// The bar.
  platform::Color ForeColor() const override;
  void SetForeColor(platform::Color color) override;
  platform::Color Highlight() const;
  void SetHighlight(platform::Color color);
  platform::Color Shadow() const;
  void SetShadow(platform::Color color);

  /// The user has changed the position: by dragging the bar, a press in the trough, the wheel or the keys.
  std::function<void()> Scroll;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace look
