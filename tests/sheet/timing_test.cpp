#include "sheet/timing.h"

#include <gtest/gtest.h>

namespace sheet {
namespace {

audio::SampleStore Sound(std::int32_t bytes, std::int32_t samples_per_second, std::int16_t bits) {
  audio::SampleStore sound;
  sound.WaveDataLength = bytes;
  sound.WaveFormat.nSamplesPerSec = samples_per_second;
  sound.WaveFormat.wBitsPerSample = bits;
  return sound;
}

TEST(SecondsOfSound, ByDepth) {
  EXPECT_EQ(SecondsOfSound(Sound(11025, 22050, 8)), 0.5);
  EXPECT_EQ(SecondsOfSound(Sound(5, 10, 16)), 0.25) << "half a sample counts";
  EXPECT_EQ(SecondsOfSound(Sound(44100, 44100, 24)), std::nullopt);
  EXPECT_EQ(SecondsOfSound(Sound(0, 44100, 16)), std::nullopt);
  EXPECT_EQ(SecondsOfSound(Sound(100, 0, 16)), std::nullopt);
  EXPECT_EQ(SecondsOfSound(Sound(100, -8000, 8)), std::nullopt);
}

TEST(FrameCounts, RoundEachInTheirWay) {
  const struct {
    double rate, seconds;
    int rows, track_frames, whole_frames;
  } cases[] = {
      {24, 0, 1, 0, 0},
      {0, 12.5, 1, 0, 0},
      {12, 2.05, 26, 25, 24},  // 24.6
      {24.5, 1, 26, 24, 24},   // a tie: 25.5 goes to 26, 24.5 to 24
      {25.5, 1, 26, 26, 25},   // 26.5 goes to 26
      {0.5, 1, 2, 0, 0},
      {24, 5400, 129601, 129600, 129600},
      {1, 9999999, 10000000, 9999999, 9999999},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(GridRows(c.rate, c.seconds).rows, c.rows) << c.rate << " x " << c.seconds;
    EXPECT_EQ(TrackFrames(c.rate, c.seconds), c.track_frames) << c.rate << " x " << c.seconds;
    EXPECT_EQ(WholeFrames(c.rate, c.seconds), c.whole_frames) << c.rate << " x " << c.seconds;
  }
}

TEST(FrameCounts, RefuseWhatNoSheetCanHold) {
  EXPECT_EQ(GridRows(-12, 2).reason, "A frame rate of -12 can't be used: it must not be negative.");
  EXPECT_FALSE(GridRows(-0.001, 0).rows);
  EXPECT_EQ(GridRows(1e9, 1).reason,
            "A frame rate of 1000000000 gives more than the 10000000 rows that a sheet can have.");
  EXPECT_FALSE(GridRows(1e300, 1e300).rows);
  EXPECT_EQ(TrackFrames(-12, 2), 0);
  EXPECT_EQ(TrackFrames(1e300, 1e300), kMostRows - 1);
  EXPECT_EQ(WholeFrames(-0.5, 1), 0);
}

TEST(TitleText, GivesSecondsFramesAndRate) {
  EXPECT_EQ(TitleText("Sheet", 29.97, 12.34, '.'),
            "Sheet:  Project audio is 12.3 seconds, 369 frames at 29.97 fps");
  EXPECT_EQ(TitleText("Sheet", 12, 3, ','), "Sheet:  Project audio is 3, seconds, 36 frames at 12 fps");
  EXPECT_EQ(TitleText("Sheet", 0, 0, '.'), "Sheet:  Project audio is . seconds, 0 frames at 0 fps");
}

}  // namespace
}  // namespace sheet
