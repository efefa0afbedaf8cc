#include "painter/plane_blit.h"

#include <gtest/gtest.h>

#include <vector>

namespace painter {
namespace {

using Bytes = std::vector<std::uint8_t>;

/// Fits planes whose red is the sample's place and whose green is the place plus 100; blue is 200.
std::vector<std::uint32_t> Fit(int source_width, int source_height, int width, int height, int row) {
  Bytes red, green, blue;
  for (int i = 0; i < source_width * source_height; ++i) {
    red.push_back(static_cast<std::uint8_t>(i));
    green.push_back(static_cast<std::uint8_t>(i + 100));
    blue.push_back(200);
  }
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(row * height), 5);
  g_scale_to_dib(red.data(), green.data(), blue.data(), pixels.data(), source_width, source_height, width,
                 height, row);
  return pixels;
}

TEST(PlaneBlit, PacksUprightWithBlueLowestAndOpaque) {
  const auto pixels = Fit(4, 3, 3, 2, 3);  // one sample wider and higher than the target, as a strip is
  EXPECT_EQ(pixels, (std::vector<std::uint32_t>{0xff0064c8, 0xff0165c8, 0xff0266c8,  //
                                                0xff0468c8, 0xff0569c8, 0xff066ac8}));
}

// A pixel shows sample i * source / target of its row, cut to a whole number.
TEST(PlaneBlit, FitsAnySizeAndKeepsToItsRows) {
  using Pixels = std::vector<std::uint32_t>;
  constexpr std::uint32_t p0 = 0xff0064c8, p1 = 0xff0165c8, p2 = 0xff0266c8, p3 = 0xff0367c8, p4 = 0xff0468c8;
  EXPECT_EQ(Fit(2, 1, 4, 2, 5), (Pixels{p0, p0, p1, p1, 5, p0, p0, p1, p1, 5}));
  EXPECT_EQ(Fit(1, 2, 2, 4, 2), (Pixels{p0, p0, p0, p0, p1, p1, p1, p1}));
  EXPECT_EQ(Fit(6, 1, 2, 1, 2), (Pixels{p0, p3}));
  EXPECT_EQ(Fit(6, 1, 4, 1, 4), (Pixels{p0, p1, p3, p4}));
  EXPECT_EQ(Fit(3, 1, 4, 1, 4), (Pixels{p0, p0, p1, p2}));
  EXPECT_EQ(Fit(1, 1, 1, 1, 2), (Pixels{p0, 5}));
  EXPECT_EQ(Fit(0, 3, 2, 1, 2), (Pixels{5, 5}));
  EXPECT_TRUE(Fit(3, 3, 0, 0, 0).empty());
}

}  // namespace
}  // namespace painter
