// What the waveform canvas shows and is to show next.
#pragma once

#include "platform/PictureBox.h"
#include "timeline/waveform.h"

namespace timeline {

/// Keeps the scene to be drawn until the canvas is next shown, refreshed or read, and draws it then.
class WaveCanvas {
 public:
  /// The box must outlive this.
  explicit WaveCanvas(platform::PictureBox& box);
  void Show(WaveScene scene);
  /// The box has been emptied behind the picture's back.
  void ForgetDrawn() { picture_.ForgetDrawn(); }

 private:
  platform::PictureBox& box_;
  WavePicture picture_;
};

}  // namespace timeline
