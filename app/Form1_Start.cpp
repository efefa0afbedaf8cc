// The main window's start and end.
#include <utility>

#include "app/Form1.h"
#include "audio/Form2.h"
#include "host/HostSession.h"
#include "host/variant.h"
#include "painter/Retrieve.h"
#include "platform/Application.h"
#include "platform/WaveOut.h"
#include "sheet/Form3.h"
#include "sheet/SheetDocument.h"
#include "timeline/MouthSets.h"
#include "timeline/velocity_values.h"
#include "timeline/zoom.h"

using host::HostSession;

void Form1::Form_Load() {
  painter::EnterHostFolder();
  sheet::GridReady = platform::kFalse;
  timeline::Tracks().UndoHistory.clear();
  sheet::SheetCells.Resize(0);
  timeline::ZoomFactor = 1.0F;
  LoadWallpaper();
  PrefsCallback(*this);
  Grid1.SetRow(0);
  WriteHeader();
  Grid1.SetCol(0);
  form3->Text7.SetText(host::AsText(HostSession.Call("Vel_GetFrameRate"), "Vel_GetFrameRate"));
  SetupGrid();
}

void Form1::Form_Paint() {
  Draw_Pattern(*this);
  // Looks for the sound device: ready before anybody can press "Play waveform", but not before the window is
  // seen.
  if (!std::exchange(PaintedOnce, true)) platform::RunLater([] { platform::WaveOut(); });
}

void Form1::QuitMouth_Click() {
  platform::Flag cancel = platform::kTrue;
  Form_Unload(cancel);
}

/// Closing is never refused and asks nothing.
void Form1::Form_Unload(platform::Flag& cancel) {
  cancel = platform::kFalse;
  form5.Unload();
  form4.Unload();
  form3.Unload();
  form2.Unload();
  form1.Unload();
}
