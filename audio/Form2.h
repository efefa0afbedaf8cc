// "Sample info": the format of the loaded sound.
#pragma once

#include "platform/Widgets.h"
#include "platform/Window.h"

/// Filled when it is loaded, not each time that it is shown: left open, it keeps the values of the sound that
/// was current then.
class Form2 : public platform::Window {
 public:
  Form2();

  platform::Label Label1, Label2, Label3, Label4, Label5, Label6;
  platform::TextBox Text1{*this, "Text1"};  // wFormatTag
  platform::TextBox Text2{*this, "Text2"};  // nChannels
  platform::TextBox Text3{*this, "Text3"};  // nSamplesPerSec
  platform::TextBox Text4{*this, "Text4"};  // nAvgBytesPerSec
  platform::TextBox Text5{*this, "Text5"};  // nBlockAlign
  platform::TextBox Text6{*this, "Text6"};  // wBitsPerSample

 protected:
  void Form_Load() override;
  void Form_Paint() override;
};

extern platform::WindowInstance<Form2> form2;
