// "Set Frames per second": the dialog whose text field is the frame rate's only store.
#pragma once

#include "look/VlButton.h"
#include "platform/Widgets.h"
#include "platform/Window.h"

/// Loaded once, by the first touch of Text7, and only hidden from then on: the frame rate lives as long as
/// the main window.
class Form3 : public platform::Window {
 public:
  Form3();

  /// The number at the start of the text; it loads nothing.
  double Rate() const;

  platform::TextBox Text7{*this, "Text7", "12"};  // FrameRateText
  platform::Label Label7{*this, "Label7", "FPS"};
  look::vl_button vl_button1{*this, "vl_button1"};  // Set
  look::vl_button vl_button2{*this, "vl_button2"};  // Cancel
  platform::LineControl Line1, Line2;

 protected:
  void Form_Load() override;
  void Form_Paint() override;
  /// Closing by the frame is "Cancel": an unload would take the rate with it.
  void CloseBox() override { vl_button2_Click(); }

 private:
  void vl_button1_Click();
  void vl_button2_Click();
};

extern platform::WindowInstance<Form3> form3;
