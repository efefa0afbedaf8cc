// Packing of three colour planes into the 32-bit pixels that a window shows.
#pragma once

#include <cstdint>

namespace painter {

/// Fits a picture of three planes to a target and fills the target's pixels with it, from the top row down:
/// blue in the lowest byte, then green, red, and an opaque 255. Nearest sample. All sizes in samples or
/// pixels; `row_pixels` from one row of the pixel buffer to the next. An empty source or target is left.
void g_scale_to_dib(const std::uint8_t* red, const std::uint8_t* green, const std::uint8_t* blue,
                    std::uint32_t* pixels, std::int32_t source_width, std::int32_t source_height,
                    std::int32_t target_width, std::int32_t target_height, std::int32_t row_pixels);

}  // namespace painter
