// Three colour planes onto a picture control.
#pragma once

#include <cstdint>

#include "platform/PictureBox.h"

namespace painter {

/// Puts planes on a canvas, fitted to its inner size. `width` and `height` are the highest x and y index of
/// the planes. The caller refreshes the canvas.
void BlitPlanes(platform::PictureBox& target, std::int32_t width, std::int32_t height,
                const std::uint8_t* red, const std::uint8_t* green, const std::uint8_t* blue);

}  // namespace painter
