#include "timeline/mappings.h"

#include <gtest/gtest.h>

namespace timeline {
namespace {

// A sound of 2.5 seconds at 12 frames per second on a canvas of 514 pixels: 30 frames of 17.13 pixels.
TEST(Mappings, PixelToFrameRoundsDownOverTheExactCount) {
  EXPECT_EQ(FrameAtPixel(0, 30, 514), 0);
  EXPECT_EQ(FrameAtPixel(171, 30, 514), 9);  // 9.98
  EXPECT_EQ(FrameAtPixel(172, 30, 514), 10);
  EXPECT_EQ(FrameAtPixel(-1, 30, 514), -1);
  EXPECT_EQ(FrameAtPixel(511, 24.5, 512), 24);  // 24.45: the half frame at the end has pixels too
}

TEST(Mappings, TheFractionOfTimeIsASingle) {
  // A third in 32 bits is above a third, and so is its 30-fold, which rounds to just 10.
  const float third = FractionOfTime(1, 3);
  EXPECT_EQ(third, 1.0f / 3.0f);
  EXPECT_EQ(RowOfTime(third, 30), 10);
  EXPECT_EQ(RowOfTime(FractionOfTime(0.99, 3), 30), 9);
  EXPECT_EQ(RowOfTime(FractionOfTime(3, 3), 30), 30);
  EXPECT_DOUBLE_EQ(PixelOfTime(0.25f, 514), 128.5);
}

TEST(Mappings, SlicesAreEqualPartsOfTheSound) {
  struct Case {
    int frame, bytes, rows, start, length;
  } const cases[] = {{24, 100000, 25, 96000, 4000},
                     {2, 1000, 3, 667, 333},
                     {-1, 1000, 3, -333, 333},
                     {1, 1001, 2, 500, 500},  // 500.5: to the even
                     {1, 2147483647, 1, 2147483647, 2147483647}};
  for (const Case& c : cases) {
    const ByteSlice slice = SliceOfFrame(c.frame, c.bytes, c.rows);
    EXPECT_EQ(slice.start, c.start) << c.frame << " of " << c.bytes;
    EXPECT_EQ(slice.length, c.length) << c.frame << " of " << c.bytes;
  }
}

TEST(Mappings, SamplesAreTakenAtTheStride) {
  const float stride = SampleStride(1285, 514);  // 2.5
  EXPECT_EQ(SampleAtPixel(1, stride), 2);
  EXPECT_EQ(SampleAtPixel(3, stride), 8);  // 7.5
  // The stride is a single, so that a long sound's last column can fall past its end.
  EXPECT_EQ(SampleAtPixel(514, SampleStride(100000006, 514)), 100000009);
}

}  // namespace
}  // namespace timeline
