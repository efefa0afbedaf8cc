#include "look/glide_layout.h"

#include <gtest/gtest.h>

namespace look {
namespace {

TEST(GlideLayout, BarRunsFromEndToEndOfTheTrough) {
  const struct {
    int width, height, range, position;
    BarPlace bar;
  } cases[] = {
      // One unit of 4 is a quarter of the trough.
      {400, 15, 3, 3, {300, 100}},
      {400, 15, 3, 1, {100, 100}},
      // Many positions leave a bar that can still be taken hold of.
      {400, 15, 1000, 1000, {355, 45}},
      {400, 15, 1000, 500, {178, 45}},
      // With a single step to go, the bar leaves half of the trough to move in.
      {400, 15, 1, 1, {200, 200}},
      {40, 15, 9, 9, {20, 20}},
      // Nothing to scroll.
      {400, 15, 0, 0, {0, 400}},
      {0, 0, 0, 0, {0, 0}},
  };
  for (const auto& row : cases)
    EXPECT_EQ(PlaceBar(row.width, row.height, row.range, row.position), row.bar)
        << row.width << " " << row.range << " " << row.position;
}

TEST(GlideLayout, DraggingReachesEveryPositionAndStopsAtTheEnds) {
  EXPECT_EQ(PositionAtBarLeft(149, 400, 15, 3), 1);
  EXPECT_EQ(PositionAtBarLeft(151, 400, 15, 3), 2);
  EXPECT_EQ(PositionAtBarLeft(-50, 400, 15, 3), 0);
  EXPECT_EQ(PositionAtBarLeft(9000, 400, 15, 3), 3);
  EXPECT_EQ(PositionAtBarLeft(10, 400, 15, 0), 0);
  // A range far beyond the pixels, where whole numbers of 32 bits would overflow.
  EXPECT_EQ(PositionAtBarLeft(355, 400, 15, 2000000000), 2000000000);
}

}  // namespace
}  // namespace look
