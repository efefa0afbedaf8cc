#include "timeline/velocity_values.h"

#include <gtest/gtest.h>

namespace timeline {
namespace {

TEST(VelocityTable, StartsAt32KeepsWhatIsWrittenAndRefusesWhatLiesOutside) {
  VelocityTable table(3000), none;
  table.Set(1024, 2, 255);
  EXPECT_EQ(table.At(1024, 2), 255);
  for (const auto& [frame, channel] : {std::pair{1023, 2}, {1025, 2}, {1024, 1}, {0, 2}, {2999, 3}})
    EXPECT_EQ(table.At(frame, channel), 32) << frame << ' ' << channel;
  for (const auto& [frame, channel] : {std::pair{3000, 0}, {-1, 0}, {0, 4}})
    EXPECT_THROW(table.At(frame, channel), std::out_of_range) << frame << ' ' << channel;
  EXPECT_THROW(table.Set(3000, 0, 1), std::out_of_range);
  EXPECT_THROW(none.At(0, 0), std::out_of_range);
}

TEST(VelocityTable, ClearsAsFarAsAskedAndAsItGoes) {
  VelocityTable table(6);
  for (int frame = 0; frame < 6; ++frame) table.Set(frame, 3, 1), table.Set(frame, 0, 1);
  table.Clear(4);
  for (const auto& [frame, channel] : {std::pair{0, 0}, {0, 3}, {3, 0}, {3, 3}})
    EXPECT_EQ(table.At(frame, channel), 32) << frame << ' ' << channel;
  EXPECT_EQ(table.At(4, 3), 1);
  table.Clear(100);
  EXPECT_EQ(table.At(5, 3), 32);
  EXPECT_EQ(table.Frames(), 6);
}

TEST(VelocityTable, TellsWhereTwoDiffer) {
  VelocityTable table(5000), other = table;
  other.Set(17, 0, 32);
  EXPECT_EQ(table.DifferenceFrom(other), std::nullopt);  // another copy of the same values
  other.Set(2047, 1, 1);
  other.Set(2048, 3, 1);
  other.Set(90, 0, 1);
  other.Set(2060, 3, 1);
  EXPECT_EQ(table.DifferenceFrom(other), (FrameSpan{90, 2060}));
  other.Set(120, 0, 1);
  EXPECT_EQ(table.DifferenceFrom(other), (FrameSpan{90, 2060}));
}

TEST(Stroke, AKeyBendsTheActiveTrackWithinTheCanvas) {
  VelocityTracks tracks;
  ResetTracks(tracks, 4);
  tracks.ActiveChannel = 2;
  struct Case {
    int value, direction, bent;
  } const cases[] = {
      {32, -1, 30}, {32, 1, 34}, {1, -1, 0},    {0, -1, 0},
      {62, 1, 63},  {63, 1, 63}, {200, 1, 200}, {200, -1, 198}};  // a stroke of the mouse has left the canvas
  for (const Case& c : cases) {
    tracks.VelocityValues.Set(3, 2, static_cast<std::uint8_t>(c.value));
    EXPECT_EQ(BentValue(tracks, 3, c.direction, 64), c.bent) << c.value;
  }
}

TEST(Stroke, ThePointerFallsOnFramesAndBytes) {
  struct Case {
    float x;
    int canvas, frames, frame;
  } const cases[] = {{257, 514, 30, 15},
                     {-50, 514, 30, 0},
                     {50, 100, 1, 0},
                     {25, 100, 2, 0},   // 0.5: to the even
                     {75, 100, 2, 1}};  // 1.5 is 2, held at 1
  for (const Case& c : cases) EXPECT_EQ(StrokeFrame(c.x, c.canvas, c.frames), c.frame) << c.x;
  const std::pair<float, int> values[] = {{-3, 0}, {0.5f, 0}, {1.5f, 2}, {254.6f, 255}, {900, 255}};
  for (const auto& [y, value] : values) EXPECT_EQ(StrokeValue(y), value) << y;
}

}  // namespace
}  // namespace timeline
