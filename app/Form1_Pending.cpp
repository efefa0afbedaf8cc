// Routines whose subjects are still on their way; each leaves this file when its own file comes.
#include "app/Form1.h"

// sheet/Form1_SheetFile.cpp
void Form1::MenuOpen_Click() {}
void Form1::MenuSave_Click() {}

// audio/Form1_WaveFile.cpp
bool Form1::OpenWaveFile(const std::string& /*path*/) { return false; }
void Form1::OpenWave_Click() {}
void Form1::Sampleinfo_Click() {}
void Form1::RecordAudio_Click() {}

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
