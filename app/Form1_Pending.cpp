// Routines whose subjects are still on their way; each leaves this file when its own file comes.
#include "app/Form1.h"

// timeline/Form1_Layout.cpp
void Form1::Form_Resize() {}
void Form1::CalcPictureWidths() {}
void Form1::AdjustHscroll() {}
void Form1::vl_button3_Click() {}
void Form1::vl_button4_Click() {}
void Form1::HScroll1_Change() {}
void Form1::HScroll1_Scroll() {}

// timeline/Form1_Waveform.cpp
void Form1::PaintWav() {}
void Form1::PaintGradient() {}

// timeline/Form1_Velocity.cpp
void Form1::InitVelocity() {}
void Form1::PaintVelocity() {}
void Form1::ChooseChannel(int) {}
void Form1::vl_button11_Click() {}
void Form1::vl_button12_Click() {}
void Form1::Picture4_MouseDown(std::int16_t, std::int16_t, float, float) {}
void Form1::Picture4_MouseMove(std::int16_t, std::int16_t, float, float) {}

// timeline/Form1_Mouth.cpp
void Form1::PaintMouth() {}
void Form1::MySketch_Click() {}
void Form1::MYCartoon_Click() {}
