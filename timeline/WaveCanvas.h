// What the waveform canvas shows and is to show next.
#pragma once

#include "platform/PictureBox.h"
#include "timeline/waveform.h"

namespace timeline {

/// Puts the drawing of a scene off until the canvas is next shown, refreshed or read.
class WaveCanvas {
 public:
  /// The box must outlive this.
  explicit WaveCanvas(platform::PictureBox& box);
  void Show(WaveScene scene);
  /// The box has been emptied behind the picture's back.
  void Lose() { picture_.Lose(); }

 private:
  platform::PictureBox& box_;
  WavePicture picture_;
};

}  // namespace timeline
