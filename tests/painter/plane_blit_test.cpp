#include "painter/plane_blit.h"

#include <gtest/gtest.h>

#include <vector>

namespace painter {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Pixels = std::vector<std::uint32_t>;

/// Fits planes whose red is the sample's place and whose green is the place plus 100; blue is 200.
Pixels Fit(int source_width, int source_height, int width, int height, int row) {
  Bytes red, green, blue;
  for (int i = 0; i < source_width * source_height; ++i) {
    red.push_back(static_cast<std::uint8_t>(i));
    green.push_back(static_cast<std::uint8_t>(i + 100));
    blue.push_back(200);
  }
  Pixels pixels(static_cast<std::size_t>(row * height), 5);
  g_scale_to_dib(red.data(), green.data(), blue.data(), pixels.data(), source_width, source_height, width,
                 height, row);
  return pixels;
}

// A pixel shows sample i * source / target of its row, cut to a whole number: blue lowest, and opaque.
TEST(PlaneBlit, FitsAnySizeAndKeepsToItsRows) {
  constexpr std::uint32_t p0 = 0xff0064c8, p1 = 0xff0165c8, p2 = 0xff0266c8, p3 = 0xff0367c8, p4 = 0xff0468c8;
  EXPECT_EQ(Fit(3, 3, 2, 2, 2), (Pixels{p0, p1, p3, p4})) << "a strip's planes are one larger";
  EXPECT_EQ(Fit(2, 1, 4, 2, 5), (Pixels{p0, p0, p1, p1, 5, p0, p0, p1, p1, 5}));
  EXPECT_EQ(Fit(1, 2, 2, 4, 2), (Pixels{p0, p0, p0, p0, p1, p1, p1, p1}));
  EXPECT_EQ(Fit(6, 1, 4, 1, 4), (Pixels{p0, p1, p3, p4}));
  EXPECT_EQ(Fit(3, 1, 4, 1, 4), (Pixels{p0, p0, p1, p2}));
  EXPECT_EQ(Fit(0, 3, 2, 1, 2), (Pixels{5, 5}));
  EXPECT_TRUE(Fit(3, 3, 0, 0, 0).empty());
}

}  // namespace
}  // namespace painter
