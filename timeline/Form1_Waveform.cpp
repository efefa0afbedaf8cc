// The waveform, and with it the road to the host.
#include <algorithm>
#include <cstdint>
#include <utility>

#include "app/Form1.h"
#include "audio/sample_store.h"
#include "host/HostSession.h"
#include "host/variant.h"
#include "sheet/SheetDocument.h"
#include "timeline/Canvases.h"
#include "timeline/waveform.h"

using host::HostSession;

namespace {

/// Beyond its last frame the host stays on that one. There is no lower limit: the header row sends it to
/// frame -1.
void FollowInHost(const Form1& form) {
  const std::int32_t frames = host::AsLong(HostSession.Call("vel_GetTotalFrames"), "vel_GetTotalFrames");
  // The lowest number of frames that a host can give has no predecessor.
  const std::int32_t last = std::max(frames, INT32_MIN + 1) - 1;
  const std::int32_t frame = std::min(form.GetCurrentTick(), last);
  if (form.vl_button18.value()) HostSession.Call("Vel_GotoFrame", frame);
}

}  // namespace

/// Takes down what is to be drawn; the host is moved at every call, also where the drawing is put off.
void Form1::PaintWav() {
  PaintGradient();
  timeline::WaveScene scene;
  scene.width = Picture2.ScaleWidth();
  scene.height = Picture2.ScaleHeight();
  scene.ground = Picture2.BackColor();
  scene.wave = Picture2.ForeColor();
  scene.sound = audio::LoadedSound();
  scene.frames = sheet::TrackFramesNow();
  scene.current_frame = GetCurrentTick();
  wave_canvas_->Show(std::move(scene));
  FollowInHost(*this);
}

/// The ground itself is laid with the drawing.
void Form1::PaintGradient() {
  if (Picture2.BackColor() == List1.BackColor()) return;
  Picture2.SetBackColor(List1.BackColor());
  wave_canvas_->ForgetDrawn();
}
