#include "platform/pixels.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace platform {
namespace {

/// Coordinates are limited to this many pixels, so that the products below stay within 64 bits.
constexpr int kFarthest = 1 << 28;

std::int64_t WholePixel(double coordinate) {
  return RoundToLong(std::clamp<double>(coordinate, -kFarthest, kFarthest));
}

/// A line along one axis: where it starts and how far it goes, the clip's first and last pixel, and how many
/// pixels of memory lie between neighbours.
struct Axis {
  std::int64_t start, delta;
  std::int64_t first, last;
  std::ptrdiff_t stride;

  std::int64_t Length() const { return std::abs(delta); }
  std::int64_t Sign() const { return delta < 0 ? -1 : 1; }
  /// The clip as distances from the start, in the line's direction.
  std::int64_t Nearest() const { return delta < 0 ? start - last : first - start; }
  std::int64_t Farthest() const { return delta < 0 ? start - first : last - start; }
};

/// The rule of the line: after `step` steps along the longer direction it stands this far along the shorter
/// one: step * minor / major to the nearest, ties toward the first point.
std::int64_t OffsetAtStep(std::int64_t step, std::int64_t minor, std::int64_t major) {
  return (2 * step * minor + major - 1) / (2 * major);
}

/// The first step whose offset is at least this one; the rule above turned round. minor and offset above 0.
std::int64_t FirstStepAt(std::int64_t offset, std::int64_t minor, std::int64_t major) {
  return (2 * major * offset - major + 2 * minor) / (2 * minor);
}

struct StepRange {
  std::int64_t first, last;
};

/// The steps that lie within the clip on both axes.
StepRange VisibleSteps(const Axis& major, const Axis& minor) {
  StepRange steps{std::max<std::int64_t>(0, major.Nearest()), std::min(major.Length(), major.Farthest())};
  const std::int64_t nearest = minor.Nearest(), farthest = minor.Farthest();
  if (farthest < 0 || nearest > minor.Length()) return {0, -1};
  if (nearest > 0) steps.first = std::max(steps.first, FirstStepAt(nearest, minor.Length(), major.Length()));
  if (farthest < minor.Length())
    steps.last = std::min(steps.last, FirstStepAt(farthest + 1, minor.Length(), major.Length()) - 1);
  return steps;
}

/// Draws the visible steps; `pixels` stands at the view's origin, major.Length() is above 0.
void Trace(Pixel* pixels, const Axis& major, const Axis& minor, Pixel pixel) {
  const StepRange steps = VisibleSteps(major, minor);
  if (steps.first > steps.last) return;
  const std::int64_t length = major.Length(), rise = minor.Length();
  const std::int64_t offset = OffsetAtStep(steps.first, rise, length);
  std::int64_t error = 2 * steps.first * rise + length - 1 - offset * 2 * length;
  Pixel* at = pixels + (major.start + major.Sign() * steps.first) * major.stride +
              (minor.start + minor.Sign() * offset) * minor.stride;
  const std::ptrdiff_t along = static_cast<std::ptrdiff_t>(major.Sign()) * major.stride;
  const std::ptrdiff_t across = static_cast<std::ptrdiff_t>(minor.Sign()) * minor.stride;
  for (std::int64_t left = steps.last - steps.first;; --left) {
    *at = pixel;
    // The pointer must not step past the last pixel, which may be the last of the picture.
    if (left == 0) return;
    at += along;
    error += 2 * rise;
    if (error >= 2 * length) {
      error -= 2 * length;
      at += across;
    }
  }
}

/// A colour laid over another, coverage 0 to 255, each part to the nearest. Red and blue are worked out side
/// by side: the sum with its own 256th part added is the division by 255, for all sums up to 255 x 255.
Pixel MixedPixel(Pixel under, Pixel over, std::uint32_t coverage) {
  constexpr std::uint32_t kRedBlue = 0x00FF00FFu, kGreen = 0x0000FF00u;
  const std::uint32_t rest = 255 - coverage;
  std::uint32_t red_blue = (over & kRedBlue) * coverage + (under & kRedBlue) * rest + 0x00800080u;
  red_blue = (red_blue + (red_blue >> 8 & kRedBlue)) >> 8 & kRedBlue;
  std::uint32_t green = (over >> 8 & 255) * coverage + (under >> 8 & 255) * rest + 0x80u;
  green = (green + (green >> 8)) & kGreen;
  return 0xFF000000u | red_blue | green;
}

bool CoversAnything(const TextMask& mask, const PixelBox& box) {
  for (int y = box.top; y < box.bottom; ++y)
    for (int x = box.left; x < box.right; ++x)
      if (mask.coverage[static_cast<std::size_t>(y) * static_cast<std::size_t>(mask.width) +
                        static_cast<std::size_t>(x)] != 0)
        return true;
  return false;
}

}  // namespace

PixelBox Intersect(const PixelBox& a, const PixelBox& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
}

PixelView PixelView::Within(const PixelBox& box) const {
  PixelView view = *this;
  view.clip = Intersect(clip, box);
  return view;
}

int CoveredPixels(int design_pixels, double scale) {
  return static_cast<int>(std::ceil(design_pixels * scale));
}

int PenPixels(double scale) { return std::max(1, static_cast<int>(std::floor(scale + 0.25))); }

PixelView MakeView(Pixel* pixels, int width, int height, int stride, double scale) {
  return {pixels, width, height, stride, {0, 0, width, height}, scale};
}

void PlotPoint(const PixelView& view, int x, int y, Color color) {
  FillBox(view, {x, y, x + 1, y + 1}, color);
}

void DrawLine(const PixelView& view, double x1, double y1, double x2, double y2, Color color) {
  if (view.clip.Empty()) return;
  const std::int64_t left = WholePixel(x1), top = WholePixel(y1);
  const Axis across{left, WholePixel(x2) - left, view.clip.left, view.clip.right - 1, 1};
  const Axis down{top, WholePixel(y2) - top, view.clip.top, view.clip.bottom - 1, view.stride};
  if (across.delta == 0 && down.delta == 0)
    PlotPoint(view, static_cast<int>(left), static_cast<int>(top), color);
  else if (across.Length() >= down.Length())
    Trace(view.pixels, across, down, PixelFrom(color));
  else
    Trace(view.pixels, down, across, PixelFrom(color));
}

/// Lines side by side: below each other for a flat one, beside each other for a steep one.
void DrawPen(const PixelView& view, double x1, double y1, double x2, double y2, Color color) {
  const double scale = view.scale;
  const bool flat = std::abs(x2 - x1) >= std::abs(y2 - y1);
  for (int side = 0; side < view.Pen(); ++side) {
    const int right = flat ? 0 : side, down = flat ? side : 0;
    DrawLine(view, x1 * scale + right, y1 * scale + down, x2 * scale + right, y2 * scale + down, color);
  }
}

void FillBox(const PixelView& view, const PixelBox& box, Color color) {
  const PixelBox cut = Intersect(view.clip, box);
  if (cut.Empty()) return;
  for (int y = cut.top; y < cut.bottom; ++y)
    std::fill(view.Row(y) + cut.left, view.Row(y) + cut.right, PixelFrom(color));
}

void InvertBox(const PixelView& view, const PixelBox& box) {
  const PixelBox cut = Intersect(view.clip, box);
  if (cut.Empty()) return;
  for (int y = cut.top; y < cut.bottom; ++y)
    std::for_each(view.Row(y) + cut.left, view.Row(y) + cut.right,
                  [](Pixel& pixel) { pixel ^= 0x00FFFFFFu; });
}

TextMask Trimmed(const TextMask& mask) {
  PixelBox box{0, 0, mask.width, mask.height};
  while (!box.Empty() && !CoversAnything(mask, {box.left, box.top, box.right, box.top + 1})) ++box.top;
  while (!box.Empty() && !CoversAnything(mask, {box.left, box.bottom - 1, box.right, box.bottom}))
    --box.bottom;
  while (!box.Empty() && !CoversAnything(mask, {box.left, box.top, box.left + 1, box.bottom})) ++box.left;
  while (!box.Empty() && !CoversAnything(mask, {box.right - 1, box.top, box.right, box.bottom})) --box.right;
  TextMask trimmed;
  trimmed.advance = mask.advance;
  if (box.Empty()) return trimmed;
  trimmed.left = mask.left + box.left;
  trimmed.top = mask.top + box.top;
  trimmed.width = box.right - box.left;
  trimmed.height = box.bottom - box.top;
  for (int y = box.top; y < box.bottom; ++y) {
    const auto row = mask.coverage.begin() + static_cast<std::ptrdiff_t>(y) * mask.width;
    trimmed.coverage.insert(trimmed.coverage.end(), row + box.left, row + box.right);
  }
  return trimmed;
}

void BlendMask(const PixelView& view, int x, int y, const TextMask& mask, Color color) {
  const int left = std::clamp(x, -kFarthest, kFarthest) + mask.left;
  const int top = std::clamp(y, -kFarthest, kFarthest) + mask.top;
  const PixelBox cut = Intersect(view.clip, {left, top, left + mask.width, top + mask.height});
  if (cut.Empty()) return;
  const Pixel pixel = PixelFrom(color);
  for (int row = cut.top; row < cut.bottom; ++row) {
    const std::uint8_t* coverage =
        mask.coverage.data() + static_cast<std::ptrdiff_t>(row - top) * mask.width + (cut.left - left);
    Pixel* under = view.Row(row);
    for (int column = cut.left; column < cut.right; ++column, ++coverage)
      if (*coverage != 0) under[column] = MixedPixel(under[column], pixel, *coverage);
  }
}

}  // namespace platform
