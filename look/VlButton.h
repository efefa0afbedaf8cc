// The in-house button.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/Control.h"
#include "platform/numbers.h"

namespace look {

/// A button with raised edges and a shaded fill: a push button or one with two states. It takes clicks of the
/// left mouse button and, with the focus, the space bar.
class vl_button : public platform::Control {
 public:
  enum Type : std::int16_t { Push = 0, TwoState = 1 };

  vl_button(platform::Container& container, std::string name, Type button_type = Push);
  ~vl_button() override;

  std::string caption() const;
  void SetCaption(const std::string& caption);
  /// Resource name without extension (":/assets/icons/play"): a 23 by 23 picture, with a twin of double size
  /// for dense screens.
  void SetPicture(const std::string& resource);

  /// A two-state button's state. A click flips it; writing it shows the new state.
  bool value() const;
  void SetValue(bool value);

  platform::Color BackColor() const override;
  void SetBackColor(platform::Color color) override;
  bool Borderless() const;
  void SetBorderless(bool borderless);
  platform::Color Highlight() const;
  void SetHighlight(platform::Color color);
  platform::Color Shadow() const;
  void SetShadow(platform::Color color);
  /// How much brighter the fill's top is than its colour, 1.0 for an even fill.
  double Gradient() const;
  void SetGradient(double gradient);

  /// A button that is held clicks again and again.
  void SetRepeats(bool repeats);

  /// A press and release on a push button.
  std::function<void()> Click;
  /// Button, shift, x, y in pixels. `value` is already flipped when it arrives.
  std::function<void(std::int16_t button, std::int16_t shift, float x, float y)> MouseUp;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace look
