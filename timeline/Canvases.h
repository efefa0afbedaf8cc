// What the two canvases of the timeline show and are to show next. Each keeps its scene until the canvas is
// next shown, refreshed or read, and draws it then.
#pragma once

#include "platform/PictureBox.h"
#include "sheet/sheet_cells.h"
#include "timeline/velocity_drawing.h"
#include "timeline/waveform.h"

namespace timeline {

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

class VelocityCanvas {
 public:
  /// The box must outlive this.
  explicit VelocityCanvas(platform::PictureBox& box);
  /// Takes over the shapes that have changed in the sheet since the last time.
  void TakeShapes(sheet::CellTable& cells);
  void Show(VelocityScene scene);

 private:
  platform::PictureBox& box_;
  VelocityPicture picture_;
};

}  // namespace timeline
