#include "timeline/layout.h"

#include <gtest/gtest.h>

#include "timeline/zoom.h"

namespace timeline {
namespace {

TEST(Layout, FollowsTheClientAreaAndStopsBelowTheLeastOne) {
  const auto check = [](int width, int height, int viewport, int grid, int list, int comment_twips) {
    const auto layout = LayoutFor(width, height).value();
    EXPECT_EQ(layout.width, viewport);
    EXPECT_EQ(layout.grid_height, grid);
    EXPECT_EQ(layout.list_height, list);
    EXPECT_EQ(layout.comment_column_twips, comment_twips);
  };
  check(654, 395, 514, 213, 229, 5550);
  check(300, 188, 160, 6, 22, 240);
  EXPECT_FALSE(LayoutFor(299, 188));
  EXPECT_FALSE(LayoutFor(300, 187));
}

TEST(Zoom, WidthsRoundToTheEvenPixel) {
  EXPECT_EQ(CanvasWidth(514, 1.25f), 642);  // 642.5
  EXPECT_EQ(CanvasWidth(514, 1.75f), 900);  // 899.5
}

}  // namespace
}  // namespace timeline
