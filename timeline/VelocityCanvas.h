// What the velocity canvas shows and is to show next.
#pragma once

#include "platform/PictureBox.h"
#include "sheet/sheet_cells.h"
#include "timeline/velocity_drawing.h"

namespace timeline {

/// Keeps the scene to be drawn until the canvas is next shown, refreshed or read, and draws it then.
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
