#include "timeline/zoom.h"

#include <algorithm>

#include "platform/numbers.h"

namespace timeline {
namespace {

double UnheldWidth(int viewport_pixels, float zoom) {
  return static_cast<double>(static_cast<float>(viewport_pixels) * zoom);
}

}  // namespace

float ZoomFactor = 0.0f;

int CanvasWidth(int viewport_pixels, float zoom) {
  return std::min(platform::RoundToLong(UnheldWidth(viewport_pixels, zoom)), kWidestCanvas);
}

bool CanZoomIn(int viewport_pixels, float zoom) {
  return UnheldWidth(viewport_pixels, zoom + kZoomStep) < kWidestCanvas + 1;
}

bool CanZoomOut(float zoom) { return zoom > kLeastZoom; }

ScrollRange ScrollRangeFor(int canvas_pixels, int viewport_pixels) {
  return {platform::RoundToShort(canvas_pixels - viewport_pixels), platform::RoundToShort(canvas_pixels)};
}

}  // namespace timeline
