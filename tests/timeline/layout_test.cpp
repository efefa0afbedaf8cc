#include "timeline/layout.h"

#include <gtest/gtest.h>

#include "timeline/zoom.h"

namespace timeline {
namespace {

TEST(Layout, FollowsTheClientAreaAndStopsBelowTheLeastOne) {
  struct Case {
    int width, height;
    bool laid_out;
    int viewport, grid_height, list_height, comment_twips;
  } const cases[] = {
      {654, 395, true, 514, 213, 229, 5550},
      {300, 188, true, 160, 6, 22, 240},
      {299, 188, false, 0, 0, 0, 0},
      {300, 187, false, 0, 0, 0, 0},
      {1280, 800, true, 1140, 618, 634, 14940},
  };
  for (const Case& c : cases) {
    const auto layout = LayoutFor(c.width, c.height);
    ASSERT_EQ(layout.has_value(), c.laid_out) << c.width << " x " << c.height;
    if (!layout) continue;
    EXPECT_EQ(layout->width, c.viewport);
    EXPECT_EQ(layout->grid_height, c.grid_height);
    EXPECT_EQ(layout->list_height, c.list_height);
    EXPECT_EQ(layout->comment_column_twips, c.comment_twips);
  }
}

TEST(Zoom, WidthsRoundToTheEvenPixelAndStopAt32767) {
  EXPECT_EQ(CanvasWidth(514, 1.0f), 514);
  EXPECT_EQ(CanvasWidth(514, 1.25f), 642);     // 642.5
  EXPECT_EQ(CanvasWidth(514, 1.75f), 900);     // 899.5
  EXPECT_EQ(CanvasWidth(514, 63.75f), 32767);  // 32767.5, held
  EXPECT_TRUE(CanZoomIn(514, 63.5f));
  EXPECT_FALSE(CanZoomIn(514, 63.75f));  // 64 gives 32896
  EXPECT_TRUE(CanZoomOut(1.25f));
  EXPECT_FALSE(CanZoomOut(1.0f));
}

TEST(Zoom, TheScrollBarReachesTheCanvassEnd) {
  EXPECT_EQ(ScrollRangeFor(514, 514).maximum, 0);
  EXPECT_EQ(ScrollRangeFor(1024, 512).maximum, 512);
  EXPECT_EQ(ScrollRangeFor(896, 512).maximum, 384);
  EXPECT_EQ(ScrollRangeFor(896, 512).step, 896);
  EXPECT_EQ(ScrollRangeFor(32767, 160).maximum, 32607);
}

}  // namespace
}  // namespace timeline
