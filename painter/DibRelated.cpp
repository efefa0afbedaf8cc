#include "painter/DibRelated.h"

#include "painter/plane_blit.h"

namespace painter {

void BlitPlanes(platform::PictureBox& target, std::int32_t width, std::int32_t height,
                const std::uint8_t* red, const std::uint8_t* green, const std::uint8_t* blue) {
  // The canvas's image has the pixels' layout already, so they are packed straight into it.
  const platform::PixelView pixels = target.Pixels();
  g_scale_to_dib(red, green, blue, pixels.pixels, width + 1, height + 1, pixels.width, pixels.height,
                 pixels.stride);
  target.Changed(pixels.clip);
}

}  // namespace painter
