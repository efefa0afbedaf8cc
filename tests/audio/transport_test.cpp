#include "audio/transport.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>

namespace audio {
namespace {

TEST(Transport, CutsTheSoundIntoEqualFramesByTheRowsOfTheSheet) {
  struct Case {
    int data_bytes, frame_rows, frame;
    std::optional<FrameSlice> slice;
  };
  const Case cases[] = {
      {100'000, 25, 0, FrameSlice{0, 4000}},
      {100'000, 25, 24, FrameSlice{96'000, 4000}},
      {1000, 3, 0, FrameSlice{0, 333}},
      {1000, 3, 1, FrameSlice{333, 333}},
      {1000, 3, 2, FrameSlice{667, 333}},  // byte 666 belongs to no frame
      {5, 2, 1, FrameSlice{2, 2}},         // 2.5 bytes each: ties go to the even neighbour
      {7, 2, 1, FrameSlice{4, 4}},         // 3.5 bytes each: one byte more than the sound has
      {1, 3, 2, FrameSlice{1, 0}},
      {2'147'483'647, 1, 0, FrameSlice{0, 2'147'483'647}},
      {1000, 3, -1, std::nullopt},  // the header row
      {0, 25, 3, std::nullopt},
      {1000, 0, 0, std::nullopt},
  };
  for (const Case& c : cases)
    EXPECT_EQ(SliceOfFrame(c.data_bytes, c.frame_rows, c.frame), c.slice)
        << c.data_bytes << " bytes, frame " << c.frame << " of " << c.frame_rows;
}

SampleStore StoreOf(std::int16_t bits, std::int32_t data_bytes) {
  SampleStore sound;
  sound.WaveFormat.wBitsPerSample = bits;
  sound.WaveDataLength = data_bytes;
  sound.Samples8 = SampleArray<std::uint8_t>::Zeroed(data_bytes);
  sound.Samples16 = SampleArray<std::int16_t>::Zeroed(data_bytes);
  return sound;
}

std::ptrdiff_t Offset(std::span<const std::byte> bytes, const void* start) {
  return bytes.data() - static_cast<const std::byte*>(start);
}

TEST(Transport, PlaysInPlaceFromTheArrayOfTheDepth) {
  const SampleStore eight = StoreOf(8, 1000);
  const auto odd_at_8 = BytesOfSlice(eight, {333, 333});
  EXPECT_EQ(Offset(odd_at_8, eight.Samples8.Data()), 333);
  EXPECT_EQ(odd_at_8.size(), 333u);

  const SampleStore sixteen = StoreOf(16, 1000);
  const auto odd_at_16 = BytesOfSlice(sixteen, {333, 333});
  EXPECT_EQ(Offset(odd_at_16, sixteen.Samples16.Data()), 332);
  EXPECT_EQ(odd_at_16.size(), 333u);
}

TEST(Transport, NeverLeavesTheArray) {
  EXPECT_EQ(BytesOfSlice(StoreOf(8, 7), {4, 4}).size(), 4u);
  EXPECT_TRUE(BytesOfSlice(StoreOf(8, 7), {4, 5}).empty());
  EXPECT_TRUE(BytesOfSlice(StoreOf(8, 7), {9, 0}).empty());
  EXPECT_TRUE(BytesOfSlice(StoreOf(24, 1000), {0, 10}).empty());
  SampleStore without_samples;
  without_samples.WaveFormat.wBitsPerSample = 8;
  EXPECT_TRUE(BytesOfSlice(without_samples, {0, 10}).empty());
}

TEST(Transport, ElapsedTimeGoesOnAcrossMidnight) {
  EXPECT_EQ(ElapsedSeconds(100.0f, 102.5), 2.5f);
  EXPECT_EQ(ElapsedSeconds(86399.0f, 1.5), 2.5f);
  EXPECT_EQ(ElapsedSeconds(86399.5f, 0.0), 0.5f);
  // A clock that was set back a little has not passed midnight.
  EXPECT_EQ(ElapsedSeconds(7200.0f, 3600.0), -3600.0f);
  // A start is stored as a float, which near midnight is up to 1/256 s later than the reading that it was
  // taken from.
  const double reading = 80000.0 + 5.0 / 1024;
  EXPECT_EQ(ElapsedSeconds(static_cast<float>(reading), reading), 0.0f);
}

TEST(Transport, FractionIsASinglePrecisionShareOfTheSound) {
  EXPECT_EQ(FractionPlayed(1.25f, 2.5), 0.5f);
  EXPECT_EQ(FractionPlayed(1.0f, 3.0), 1.0f / 3.0f);
  EXPECT_EQ(FractionPlayed(1.0f, 0.0), std::nullopt);
}

TEST(Transport, RowsAndCursorFollowTheFraction) {
  struct Case {
    float fraction;
    int row, column;
  };
  // 30 frame rows on 514 pixels: a row every 17.13 pixels.
  const Case cases[] = {{0.0f, 0, 0},     {0.03f, 0, 15},  {0.0625f, 1, 32}, {0.5f, 15, 257},
                        {0.75f, 22, 386}, {1.0f, 30, 514}, {1.5f, 45, 771},  {-0.01f, -1, -5}};
  for (const Case& c : cases) {
    EXPECT_EQ(RowAtFraction(30, c.fraction), c.row) << c.fraction;
    EXPECT_EQ(CursorColumn(514, c.fraction), c.column) << c.fraction;
  }
}

TEST(Transport, APressFindsTheFrameByTheExactLength) {
  struct Case {
    float x;
    double exact_frames;
    int width, grid_rows, frame;
  };
  const Case cases[] = {
      {171, 30.0, 514, 31, 9},  // 9.98; the tick of frame 10 stands at 171.33
      {172, 30.0, 514, 31, 10}, {0, 30.0, 514, 31, 0},     {-1, 30.0, 514, 31, 0},
      {513, 30.0, 514, 31, 29}, {9000, 30.0, 514, 31, 29}, {-30000, 30.0, 514, 31, 0},
      {255, 24.5, 500, 26, 12},  // 12.495
      {499, 24.6, 500, 26, 24},  // 24.55, of 25 frame rows
      {10, 0.2, 500, 1, 0},      // no frames at all: the row that follows is one that the grid refuses
  };
  for (const Case& c : cases)
    EXPECT_EQ(FrameAtColumn(c.x, c.exact_frames, c.width, c.grid_rows), c.frame) << "x " << c.x;
}

}  // namespace
}  // namespace audio
