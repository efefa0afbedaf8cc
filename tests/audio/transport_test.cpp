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

TEST(Transport, AFramePlaysInPlaceWithinTheSamples) {
  SampleStore sound = StoreOf(8, 7);
  const auto last = BytesOfFrame(sound, 1, 2);  // 3.5 bytes each: one byte more than the sound has
  EXPECT_EQ(last.data(), std::as_bytes(std::span(sound.Samples8.Data(), 8)).data() + 4);
  EXPECT_EQ(last.size(), 4U);
  EXPECT_EQ(BytesOfFrame(sound, 2, 2).data(), nullptr);
  sound.WaveDataLength = 5000;
  EXPECT_EQ(BytesOfFrame(sound, 2, 3).data(), nullptr);
  EXPECT_EQ(BytesOfFrame(StoreOf(24, 1000), 0, 3).data(), nullptr);

  const auto less_than_half_a_byte = BytesOfFrame(StoreOf(16, 2), 3, 5);
  EXPECT_NE(less_than_half_a_byte.data(), nullptr) << "a slice of its own, if a silent one";
  EXPECT_EQ(less_than_half_a_byte.size(), 0U);
}

TEST(Transport, OnlyAFallOfHalfADayIsMidnight) {
  EXPECT_EQ(ElapsedSeconds(86399.5f, 0.0), 0.5f);
  EXPECT_EQ(ElapsedSeconds(7200.0f, 3600.0), -3600.0f);
  // Stored as a float, a start can be up to 1/256 s later than the reading that it was taken from.
  const double reading = 80000.0 + 5.0 / 1024;
  EXPECT_EQ(ElapsedSeconds(static_cast<float>(reading), reading), 0.0f);
}

TEST(Transport, APressOnTheHalfFrameBehindTheLastRowSelectsThat) {
  EXPECT_EQ(FrameAtPress(499, 25.4, 500, 26), 24);  // 25.35
}

}  // namespace
}  // namespace audio
