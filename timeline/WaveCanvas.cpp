#include "timeline/WaveCanvas.h"

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

}  // namespace timeline
