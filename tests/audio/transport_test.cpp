#include "audio/transport.h"

#include <gtest/gtest.h>

namespace audio {
namespace {

SampleStore StoreOf(std::int16_t bits, std::int32_t data_bytes) {
  SampleStore sound;
  sound.WaveFormat.wBitsPerSample = bits;
  sound.WaveDataLength = data_bytes;
  sound.Samples8 = SampleArray<std::uint8_t>::Zeroed(data_bytes);
  sound.Samples16 = SampleArray<std::int16_t>::Zeroed(data_bytes);
  return sound;
}

TEST(Transport, AFramePlaysInPlaceFromTheArrayOfTheDepth) {
  struct Case {
    std::int16_t bits;
    int data_bytes, frame, frame_rows, offset;
    std::size_t length;
  } const cases[] = {
      {8, 100'000, 0, 25, 0, 4000}, {8, 100'000, 24, 25, 96'000, 4000},
      {8, 1000, 1, 3, 333, 333},    {16, 1000, 1, 3, 332, 333},  // begins at sample 166, ends within one
      {16, 1000, 2, 3, 666, 333},   {8, 5, 1, 2, 2, 2},          // 2.5 bytes each: to the even
      {8, 7, 1, 2, 4, 4},   // 3.5 bytes each: one byte more than the sound has
      {16, 2, 3, 5, 0, 0},  // less than half a byte
  };
  for (const Case& c : cases) {
    const SampleStore sound = StoreOf(c.bits, c.data_bytes);
    const void* start =
        c.bits == 8 ? static_cast<const void*>(sound.Samples8.Data()) : sound.Samples16.Data();
    const auto bytes = BytesOfFrame(sound, c.frame, c.frame_rows);
    ASSERT_NE(bytes.data(), nullptr) << "frame " << c.frame << " of " << c.data_bytes;
    EXPECT_EQ(bytes.data() - static_cast<const std::byte*>(start), c.offset);
    EXPECT_EQ(bytes.size(), c.length);
  }
}

TEST(Transport, ThereIsNothingToPlayOutsideTheSound) {
  SampleStore short_of_samples = StoreOf(8, 1000);
  short_of_samples.WaveDataLength = 5000;
  SampleStore no_samples;
  no_samples.WaveFormat.wBitsPerSample = 8;
  no_samples.WaveDataLength = 1000;
  EXPECT_EQ(BytesOfFrame(StoreOf(8, 1000), -1, 3).data(), nullptr);
  EXPECT_EQ(BytesOfFrame(StoreOf(8, 1000), 0, 0).data(), nullptr);
  EXPECT_EQ(BytesOfFrame(StoreOf(8, 1000), 4, 3).data(), nullptr);
  EXPECT_EQ(BytesOfFrame(StoreOf(24, 1000), 0, 3).data(), nullptr);
  EXPECT_EQ(BytesOfFrame(StoreOf(8, 0), 0, 3).data(), nullptr);
  EXPECT_EQ(BytesOfFrame(short_of_samples, 2, 3).data(), nullptr);
  EXPECT_EQ(BytesOfFrame(no_samples, 0, 3).data(), nullptr);
}

TEST(Transport, ElapsedTimeGoesOnAcrossMidnight) {
  EXPECT_EQ(ElapsedSeconds(100.0f, 102.5), 2.5f);
  EXPECT_EQ(ElapsedSeconds(86399.0f, 1.5), 2.5f);
  EXPECT_EQ(ElapsedSeconds(86399.5f, 0.0), 0.5f);
  // A clock that was set back a little has not passed midnight.
  EXPECT_EQ(ElapsedSeconds(7200.0f, 3600.0), -3600.0f);
  // Stored as a float, a start can be up to 1/256 s later than the reading that it was taken from.
  const double reading = 80000.0 + 5.0 / 1024;
  EXPECT_EQ(ElapsedSeconds(static_cast<float>(reading), reading), 0.0f);
}

TEST(Transport, APressStaysWithinTheSheet) {
  struct Case {
    float x;
    double exact_frames;
    int width, grid_rows, frame;
  } const cases[] = {
      {171, 30.0, 514, 31, 9},  // 9.98; the tick of frame 10 stands at 171.33
      {172, 30.0, 514, 31, 10},   {-1, 30.0, 514, 31, 0},
      {513, 30.0, 514, 31, 29},   {9000, 30.0, 514, 31, 29},
      {-30000, 30.0, 514, 31, 0}, {499, 25.4, 500, 26, 24},  // 25.35, of 25 frame rows
      {10, 0.2, 500, 1, 0},                                  // no frames: the grid has no row for it
  };
  for (const Case& c : cases)
    EXPECT_EQ(FrameAtPress(c.x, c.exact_frames, c.width, c.grid_rows), c.frame) << "x " << c.x;
}

}  // namespace
}  // namespace audio
