// A picture in memory for the drawing tests.
#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "platform/pixels.h"

namespace timeline {

class Canvas {
 public:
  /// Size in the canvas's own pixels, of which `scale` make up one of the design's.
  Canvas(int width, int height, platform::Color fill = platform::Rgb(255, 0, 255), double scale = 1)
      : pixels_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height),
                platform::PixelFrom(fill)) {
    view = platform::MakeView(pixels_.data(), width, height, width, scale);
  }

  platform::Color At(int x, int y) const {
    const platform::Pixel pixel = view.Row(y)[x];
    return platform::Rgb(pixel >> 16 & 255, pixel >> 8 & 255, pixel & 255);
  }

  platform::PixelView view;

 private:
  std::vector<platform::Pixel> pixels_;
};

/// Fails at the first pixel in which two pictures of one size differ.
inline void ExpectSamePixels(const Canvas& shown, const Canvas& wanted, const std::string& when) {
  for (int y = 0; y < wanted.view.height; ++y)
    for (int x = 0; x < wanted.view.width; ++x)
      ASSERT_EQ(shown.At(x, y), wanted.At(x, y)) << when << ": " << x << ',' << y;
}

/// Brings what is said to have changed from the canvas to the screen.
inline void ShowBoxes(const std::vector<platform::PixelBox>& boxes, const Canvas& canvas,
                      const Canvas& screen) {
  for (const platform::PixelBox& box : boxes) {
    const platform::PixelBox cut = platform::Intersect(box, screen.view.clip);
    for (int y = cut.top; y < cut.bottom; ++y)
      for (int x = cut.left; x < cut.right; ++x) screen.view.Row(y)[x] = canvas.view.Row(y)[x];
  }
}

/// Numbers that look random and are the same on every machine.
class Numbers {
 public:
  explicit Numbers(std::uint32_t seed) : state_(seed) {}
  int Below(int limit) {
    state_ = state_ * 1664525u + 1013904223u;
    return static_cast<int>((state_ >> 8) % static_cast<std::uint32_t>(limit));
  }

 private:
  std::uint32_t state_;
};

}  // namespace timeline
