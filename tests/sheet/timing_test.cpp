#include "sheet/timing.h"

#include <gtest/gtest.h>

namespace sheet {
namespace {

TEST(FrameCounts, RoundEachInTheirWayAndRefuseWhatNoSheetCanHold) {
  const struct {
    double rate, seconds;
    std::optional<int> rows;
    int track_frames, whole_frames;
  } cases[] = {
      {12, 2.05, 26, 25, 24},  // 24.6
      {24.5, 1, 26, 24, 24},   // a tie: 25.5 goes to 26, 24.5 to 24
      {25.5, 1, 26, 26, 25},   // 26.5 goes to 26
      {0.5, 4, 3, 2, 2},
      {0, 4, 1, 0, 0},
      {1, 9999999, 10000000, 9999999, 9999999},
      {1, 10000000, {}, 9999999, 9999999},
      {-0.5, 0, {}, 0, 0},
      {-12, 2, {}, 0, 0},
      {1e300, 1e300, {}, 9999999, 9999999},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(GridRows(c.rate, c.seconds).rows, c.rows) << c.rate << " x " << c.seconds;
    EXPECT_EQ(TrackFrames(c.rate, c.seconds), c.track_frames) << c.rate << " x " << c.seconds;
    EXPECT_EQ(WholeFrames(c.rate, c.seconds), c.whole_frames) << c.rate << " x " << c.seconds;
  }
  EXPECT_EQ(GridRows(-12, 2).reason, "A frame rate of -12 can't be used: it must not be negative.");
  EXPECT_EQ(GridRows(1e9, 1).reason,
            "A frame rate of 1000000000 gives more than the 10000000 rows that a sheet can have.");
}

TEST(TitleText, GivesSecondsFramesAndRate) {
  EXPECT_EQ(TitleText("Sheet", 29.97, 12.34, ","),
            "Sheet:  Project audio is 12,3 seconds, 369 frames at 29.97 fps");
}

}  // namespace
}  // namespace sheet
