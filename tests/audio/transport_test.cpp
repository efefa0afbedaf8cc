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

TEST(SampleStore, SecondsByDepth) {
  const struct {
    std::int32_t bytes, samples_per_second;
    std::int16_t bits;
    std::optional<double> seconds;
  } cases[] = {{11025, 22050, 8, 0.5}, {5, 10, 16, 0.25},  // half a sample counts
               {1, 1, 8, 1.0},         {44100, 44100, 24, {}}, {0, 44100, 16, {}},
               {100, 0, 16, {}},       {100, -8000, 8, {}}};
  for (const auto& c : cases) {
    SampleStore sound = StoreOf(c.bits, c.bytes);
    sound.WaveFormat.nSamplesPerSec = c.samples_per_second;
    EXPECT_EQ(SecondsOfSound(sound), c.seconds) << c.bytes;
  }
}

TEST(SampleStore, DepthsThatCantBeShownAreToldWithAWayOut) {
  for (const auto& [bits, bytes] : {std::pair{8, 1}, {16, 2}, {24, 0}})
    EXPECT_EQ(DepthNotice(StoreOf(static_cast<std::int16_t>(bits), bytes)), "") << bits << ' ' << bytes;
  EXPECT_EQ(DepthNotice(StoreOf(24, 1)),
            "The sound has 24 bits per sample. Only sounds of 8 or 16 bits can be shown, so its sheet has no "
            "rows.\nSave the sound with 16 bits in a sound editor and open that.");
}

TEST(Transport, AFramePlaysInPlaceWithinTheSamples) {
  SampleStore sound = StoreOf(8, 7);
  const auto last = BytesOfFrame(sound, 1, 2);  // 3.5 bytes each: one byte more than the sound has
  EXPECT_EQ(last.data(), std::as_bytes(std::span(sound.Samples8.Data(), 8)).data() + 4);
  EXPECT_EQ(last.size(), 4U);
  EXPECT_EQ(BytesOfFrame(sound, 2, 2).data(), nullptr);
  sound.WaveDataLength = 5000;
  EXPECT_EQ(BytesOfFrame(sound, 2, 3).data(), nullptr);
  for (const auto& [bits, bytes, rows] :
       {std::tuple{24, 1000, 3}, {8, 0, 3}, {16, 0, 1}, {8, 7, 0}, {8, 7, -1}})
    EXPECT_EQ(BytesOfFrame(StoreOf(static_cast<std::int16_t>(bits), bytes), 0, rows).data(), nullptr)
        << bits << ' ' << bytes << ' ' << rows;
  EXPECT_EQ(BytesOfFrame(StoreOf(8, 1), 0, 1).size(), 1U);

  const auto less_than_half_a_byte = BytesOfFrame(StoreOf(16, 2), 3, 5);
  EXPECT_NE(less_than_half_a_byte.data(), nullptr) << "a slice of its own, if a silent one";
  EXPECT_EQ(less_than_half_a_byte.size(), 0U);
  EXPECT_EQ(SliceOfFrame(1, 1001, 2).start, 500) << "500.5: to the even";
  EXPECT_EQ(SliceOfFrame(1, 2147483647, 1).start, 2147483647);
}

TEST(Transport, OnlyAFallOfHalfADayIsMidnight) {
  EXPECT_EQ(ElapsedSeconds(86399.5f, 0.0), 0.5f);
  EXPECT_EQ(ElapsedSeconds(43000.0f, 0.0), -43000.0f);
  // Stored as a float, a start can be up to 1/256 s later than the reading that it was taken from.
  const double reading = 80000.0 + 5.0 / 1024;
  EXPECT_EQ(ElapsedSeconds(static_cast<float>(reading), reading), 0.0f);
}

}  // namespace
}  // namespace audio
