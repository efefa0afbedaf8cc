// The in-house number field with a slider.
#pragma once

#include <memory>
#include <string>

#include "platform/Control.h"

namespace look {

/// A number that can be typed, stepped by wheel and arrow keys, or chosen on a slider that drops down below
/// the field.
class VL_DropDial : public platform::Control {
 public:
  /// Bounds and shown number are texts, as they are stored with the control. A bound left empty is 0.
  VL_DropDial(platform::Container& container, std::string name, const std::string& text,
              const std::string& min, const std::string& max);
  ~VL_DropDial() override;

  std::string Text() const;
  int Min() const;
  int Max() const;
  /// The number chosen, always within the bounds.
  int value() const;
  void SetValue(int value);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace look
