// The velocity tracks: drawing them by hand, hiding, undoing, clearing, and what their canvas shows.
#include <cstdint>
#include <utility>

#include "app/Form1.h"
#include "sheet/SheetDocument.h"
#include "sheet/timing.h"
#include "timeline/Canvases.h"
#include "timeline/velocity_drawing.h"
#include "timeline/velocity_values.h"

using timeline::Tracks;

namespace {

timeline::VelocityScene SceneOf(const Form1& form) {
  timeline::VelocityScene scene;
  scene.width = form.Picture4.ScaleWidth();
  scene.height = form.Picture4.ScaleHeight();
  scene.ground = form.Picture4.BackColor();
  scene.frames = sheet::TrackFramesNow();
  scene.tracks = {{{form.vl_button6.BackColor(), form.vl_button13.value()},
                   {form.vl_button7.BackColor(), form.vl_button14.value()},
                   {form.vl_button8.BackColor(), form.vl_button15.value()},
                   {form.vl_button9.BackColor(), form.vl_button16.value()}}};
  scene.values = Tracks().VelocityValues;
  scene.wave_width = form.Picture2.ScaleWidth();
  scene.rows = form.Grid1.Rows();
  scene.marked_frame = form.GetCurrentTick();
  scene.comment = sheet::SheetCells.Text(scene.marked_frame, sheet::kCommentColumn);
  return scene;
}

/// A stroke counts the frames with the seconds as a single.
std::int32_t StrokeFrames() {
  const auto seconds = static_cast<float>(sheet::CalcTime().value_or(0));
  return sheet::TrackFrames(sheet::FrameRate(), static_cast<double>(seconds));
}

}  // namespace

void Form1::InitVelocity() {
  const std::int32_t frames = sheet::TrackFramesNow();
  if (frames == 0) return;
  timeline::ResetTracks(Tracks(), frames);
  PaintVelocity();
}

/// Without frames there is nothing but the ground, and the canvas isn't refreshed.
void Form1::PaintVelocity() {
  velocity_canvas_->TakeShapes(sheet::SheetCells);
  timeline::VelocityScene scene = SceneOf(*this);
  const bool has_frames = scene.frames != 0;
  velocity_canvas_->Show(std::move(scene));
  if (has_frames) Picture4.Refresh();
}

void Form1::ChooseChannel(int channel) {
  const char* const names[timeline::kChannels] = {"(Yellow)", "(Red)", "(Green)", "(Blue)"};
  Tracks().ActiveChannel = channel;
  Label3.SetCaption(names[channel]);
  look::vl_button* const choosers[timeline::kChannels] = {&vl_button6, &vl_button7, &vl_button8, &vl_button9};
  for (int i = 0; i < timeline::kChannels; ++i)
    choosers[i]->SetAccessibleDescription(i == channel ? "chosen" : "");
  choosers[channel]->Announce(std::string("Velocity track ") + names[channel]);
}

void Form1::vl_button11_Click() {
  if (sheet::TrackFramesNow() == 0) return;
  if (timeline::UndoStroke(Tracks())) PaintVelocity();
}

/// Leaves the undo states alone and adds none.
void Form1::vl_button12_Click() {
  Tracks().VelocityValues.Clear(sheet::TrackFramesNow());
  PaintVelocity();
}

/// A press changes no value. It only keeps a copy of all values, so that the stroke that may follow can be
/// undone.
void Form1::Picture4_MouseDown(std::int16_t button, std::int16_t /*shift*/, float /*x*/, float /*y*/) {
  if (button == 0 || !vl_button10.value()) return;
  if (sheet::FrameRate() * sheet::CalcTime().value_or(0) == 0) return;
  timeline::KeepForUndo(Tracks());
}

void Form1::Picture4_MouseMove(std::int16_t button, std::int16_t /*shift*/, float x, float y) {
  if (button == 0 || !vl_button10.value()) return;
  const std::int32_t frames = StrokeFrames();
  if (frames == 0) return;
  timeline::StrokeAt(Tracks(), timeline::StrokeFrame(x, Picture4.ScaleWidth(), frames),
                     timeline::StrokeValue(y));
  PaintVelocity();
  Picture4.Refresh();
}

void Form1::BendTrack(int direction, bool goes_on) {
  const std::int32_t frame = GetCurrentTick();
  if (!vl_button10.value() || frame < 0 || frame >= Tracks().VelocityValues.Frames()) return;
  if (!goes_on) timeline::KeepForUndo(Tracks());
  timeline::StrokeAt(Tracks(), frame,
                     timeline::BentValue(Tracks(), frame, direction, Picture4.ScaleHeight()));
  PaintVelocity();
  Picture4.Refresh();
}
