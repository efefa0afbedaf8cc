#include "timeline/mappings.h"

#include <gtest/gtest.h>

#include "timeline/zoom.h"

namespace timeline {
namespace {

// A sound of 2.5 seconds at 12 frames per second on a canvas of 514 pixels: 30 frames of 17.13 pixels.
TEST(Mappings, PixelToFrameRoundsDownOverTheExactCount) {
  EXPECT_EQ(FrameAtPixel(0, 30, 514), 0);
  EXPECT_EQ(FrameAtPixel(171, 30, 514), 9);  // 9.98
  EXPECT_EQ(FrameAtPixel(172, 30, 514), 10);
  EXPECT_EQ(FrameAtPixel(-1, 30, 514), -1);
  EXPECT_EQ(FrameAtPixel(511, 24.5, 512), 24);      // 24.45: the half frame at the end has pixels too
  EXPECT_EQ(FrameAtPress(499, 25.4, 500, 26), 24);  // 25.35
  EXPECT_DOUBLE_EQ(PixelOfTime(0.25f, 514), 128.5);
  EXPECT_EQ(FrameInWords(0, 71), "Frame 0 of 71");
  EXPECT_EQ(FrameInWords(-1, 1), "Before the first frame");
  EXPECT_EQ(FrameInWords(-1, 0), "No frames");
}

TEST(Zoom, WidthsRoundToTheEvenPixelUpToTheWidest) {
  EXPECT_EQ(CanvasWidth(514, 1.25f), 642);     // 642.5
  EXPECT_EQ(CanvasWidth(514, 1.75f), 900);     // 899.5
  EXPECT_EQ(CanvasWidth(900, 63.75f), 32767);  // the window has grown
  EXPECT_FALSE(CanZoomIn(512, 63.75f));        // 32768, one more than the widest
  EXPECT_TRUE(CanZoomIn(1057, 30.75f));        // 32767
}

}  // namespace
}  // namespace timeline
