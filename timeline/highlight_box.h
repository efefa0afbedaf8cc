// The shaded ground of the canvases.
#pragma once

#include "platform/pixels.h"

namespace timeline {

/// Lays horizontal lines from x1 to x2 for each y from y1 to y2, both included. Their brightness goes with
/// the absolute sine of an angle that grows from 0 to `degrees` over the height: half the colour at sine 0,
/// the full one at 1. Places are the design's; a dense screen gets a shade for each of its own rows. Nothing
/// is drawn if y2 isn't greater than y1.
void HighlightBox(const platform::PixelView& target, int x1, int y1, int x2, int y2, int red, int green,
                  int blue, int degrees);

/// The same over a whole canvas, from its corner to its width and height.
void LayGround(const platform::PixelView& target, int width, int height, platform::Color color, int degrees);

}  // namespace timeline
