// From the three planes of a frame to pixels of a screen.
#pragma once

#include <cstdint>
#include <vector>

#include "host/standin/animation.h"

namespace host {

/// Opaque pixels 0xFFrrggbb, rows from the top, without gaps.
struct PixelBlock {
  int width = 0, height = 0;
  std::vector<std::uint32_t> pixels;
};

/// The frame at its own size, without the planes' last column and row.
PixelBlock FramePixels(const Animation& animation, int frame);

/// The frame at another size (above 0 each way), every pixel the nearest one of the frame. It costs what the
/// target has pixels, however large the frame is.
PixelBlock SampleFramePixels(const Animation& animation, int frame, int width, int height);

}  // namespace host
