// Drawing on plain pixels: what a canvas and the tests of its pictures have in common.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/numbers.h"

namespace platform {

/// The screen's pixel at which a place of the design begins, to the nearest.
inline int ScaledPixel(double design_pixels, double scale) { return RoundToLong(design_pixels * scale); }
/// How many of the screen's pixels a length of the design touches.
int CoveredPixels(int design_pixels, double scale);
/// How many of the screen's pixels wide a line of one design pixel is: whole ones, so that all lines are
/// alike.
int PenPixels(double scale);

/// A pixel as the screen takes it: 0xFFrrggbb, opaque.
using Pixel = std::uint32_t;

constexpr Pixel PixelFrom(Color color) {
  return 0xFF000000u | static_cast<Pixel>(RedOf(color)) << 16 | static_cast<Pixel>(GreenOf(color)) << 8 |
         static_cast<Pixel>(BlueOf(color));
}

/// A rectangle of whole pixels: left and top included, right and bottom not.
struct PixelBox {
  int left = 0, top = 0, right = 0, bottom = 0;

  bool Empty() const { return left >= right || top >= bottom; }
  friend bool operator==(const PixelBox&, const PixelBox&) = default;
};

PixelBox Intersect(const PixelBox& a, const PixelBox& b);

/// Somebody's pixels, rows from the top, `stride` pixels apart. Everything drawn is cut at `clip`, which lies
/// within the picture. On a dense screen `scale` of these pixels make up one of the design's, in which places
/// and lengths are given; scale is at least 1.
struct PixelView {
  Pixel* pixels = nullptr;
  int width = 0, height = 0;
  int stride = 0;
  PixelBox clip;
  double scale = 1;

  /// The pixel at which a place of the design begins.
  int At(double design_pixels) const { return ScaledPixel(design_pixels, scale); }
  /// How many pixels wide a line of one design pixel is.
  int Pen() const { return PenPixels(scale); }

  Pixel* Row(int y) const { return pixels + static_cast<std::ptrdiff_t>(y) * stride; }
  /// The same pixels, cut at a further box.
  PixelView Within(const PixelBox& box) const;
};

PixelView MakeView(Pixel* pixels, int width, int height, int stride, double scale = 1);

void PlotPoint(const PixelView& view, int x, int y, Color color);

/// A line one pixel wide, both ends drawn, coordinates rounded to the nearest pixel. It takes one pixel in
/// each step of its longer direction; a tie goes toward the first point. What lies outside costs nothing.
void DrawLine(const PixelView& view, double x1, double y1, double x2, double y2, Color color);

/// The same, one design pixel wide, between places of the design.
void DrawPen(const PixelView& view, double x1, double y1, double x2, double y2, Color color);

void FillBox(const PixelView& view, const PixelBox& box, Color color);

/// Replaces every pixel of the box by its negative.
void InvertBox(const PixelView& view, const PixelBox& box);

/// How much of each pixel a text covers, 0 to 255, rows from the top, `width` bytes apart. The mask's left
/// top corner stands `left` pixels right of the text's position, which is the left end of the line's top
/// edge.
struct TextMask {
  int left = 0, top = 0;
  int width = 0, height = 0;
  /// How far the pen moves.
  double advance = 0;
  std::vector<std::uint8_t> coverage;
};

/// The same mask without the rows and columns at its edges that cover nothing.
TextMask Trimmed(const TextMask& mask);

/// Lays a mask at a text position in a colour.
void BlendMask(const PixelView& view, int x, int y, const TextMask& mask, Color color);

}  // namespace platform
