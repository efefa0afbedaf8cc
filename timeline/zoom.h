// How wide the canvases are, and how far they scroll.
#pragma once

#include <cstdint>

namespace timeline {

inline constexpr float kLeastZoom = 1.0f;
inline constexpr float kZoomStep = 0.25f;
/// A canvas is never wider: the scroll bar counts in signed 16-bit numbers.
inline constexpr int kWidestCanvas = 32767;

/// The canvas's width as a multiple of the viewport's; it outlives the loading of a new sound or sheet.
extern float ZoomFactor;

/// Whole pixels, held at the widest canvas: a window that grows under a high zoom stops there too.
int CanvasWidth(int viewport_pixels, float zoom);

/// Whether a step in still fits: at the widest canvas zooming in ends.
bool CanZoomIn(int viewport_pixels, float zoom);
bool CanZoomOut(float zoom);

/// The range and the step of the scroll bar. The step is the whole canvas.
struct ScrollRange {
  std::int16_t maximum, step;
};
ScrollRange ScrollRangeFor(int canvas_pixels, int viewport_pixels);

}  // namespace timeline
