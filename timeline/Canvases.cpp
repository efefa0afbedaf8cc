#include "timeline/Canvases.h"

#include <cstdint>
#include <string>
#include <utility>

#include "timeline/mappings.h"

namespace timeline {

WaveCanvas::WaveCanvas(platform::PictureBox& box) : box_(box) {
  box_.Resize = [this] { ForgetDrawn(); };
  box_.Draw = [this] {
    box_.SetAccessibleDescription(FrameInWords(picture_.Scene().current_frame, picture_.Scene().frames));
    for (const platform::PixelBox& changed : picture_.DrawOn(box_.Pixels())) box_.Changed(changed);
  };
}

void WaveCanvas::Show(WaveScene scene) {
  picture_.Capture(std::move(scene));
  box_.DrawLater();
}

VelocityCanvas::VelocityCanvas(platform::PictureBox& box)
    : box_(box), picture_([&box](const std::string& text) {
        return platform::MaskOf(box.TextFont(), text, box.Scale());
      }) {
  box_.Resize = [this] { picture_.ForgetDrawn(); };
  box_.Draw = [this] {
    const VelocityScene& scene = picture_.Scene();
    box_.SetAccessibleDescription(FrameInWords(scene.marked_frame, scene.frames));
    for (const platform::PixelBox& changed : picture_.DrawOn(box_.Pixels())) box_.Changed(changed);
  };
}

void VelocityCanvas::TakeShapes(sheet::CellTable& cells) {
  const auto take = [&](std::int32_t frame) {
    picture_.CaptureShape(frame, cells.Text(frame, sheet::kShapeColumn));
  };
  const sheet::CellTable::Changes changes = cells.TakeChanges();
  if (changes.everything) {
    picture_.ClearShapes(cells.LastFrame() + 1);
    for (std::int32_t frame = 0; frame <= cells.LastFrame(); ++frame) take(frame);
  }
  for (const std::int32_t frame : changes.frames) take(frame);
}

void VelocityCanvas::Show(VelocityScene scene) {
  picture_.Capture(std::move(scene));
  box_.DrawLater();
}

}  // namespace timeline
