#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sndfile.h>
#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <tuple>
#include <vector>

#include "audio/wave_reader.h"
#include "convert/sound/SoundFile.h"

namespace {

using convert::Messages;
using convert::SoundFile;

constexpr int kFrames = 48'000, kLengthUntold = -1;

/// Makes a sound file of values by frame and channel, which may be cut short, and what comes out of the
/// converter, as the tool reads it.
class Converted {
 public:
  Converted(int format, int channels, const std::function<double(int, int)>& value, int most_bytes = 0)
      : folder_(std::filesystem::path(testing::TempDir()) / ("convert-sound-" + std::to_string(getpid()))) {
    std::filesystem::create_directories(folder_);
    const std::string source = folder_ / "source", made = folder_ / "made.wav";
    SF_INFO info{};
    info.samplerate = 48'000;
    info.channels = channels;
    info.format = format;
    SNDFILE* file = sf_open(source.c_str(), SFM_WRITE, &info);
    // The library's own scale for 16 bits ends at 32767.
    sf_command(file, SFC_SET_NORM_DOUBLE, nullptr, (format & SF_FORMAT_SUBMASK) != SF_FORMAT_PCM_16);
    std::vector<double> samples(static_cast<std::size_t>(channels));
    for (int frame = 0; frame < kFrames; ++frame) {
      for (int channel = 0; channel < channels; ++channel)
        samples[static_cast<std::size_t>(channel)] = value(frame, channel);
      sf_writef_double(file, samples.data(), 1);
    }
    sf_close(file);
    if (most_bytes > 0) std::filesystem::resize_file(source, static_cast<std::uintmax_t>(most_bytes));
    // The number of samples in the head of a stream that was written on the way.
    if (most_bytes == kLengthUntold) std::fstream(source).seekp(22).write("\0\0\0\0", 4);
    auto opened = SoundFile::Open(source);
    EXPECT_TRUE(opened.sound) << opened.reason;
    plain = opened.sound->IsPlainWave();
    failure = InEnglish(convert::WriteWave(*opened.sound, made, notes));
    exists = std::filesystem::exists(made);
    if (most_bytes > 0) return;
    EXPECT_EQ(failure, "");
    sound = *audio::ReadWaveFile(made, {}).sound;
  }
  ~Converted() { std::filesystem::remove_all(folder_); }

  double At(int frame) const { return sound.Samples16.At(frame) / 32768.0; }

  Messages notes;
  std::string failure;
  bool exists = false, plain = false;
  audio::SampleStore sound;

 private:
  std::filesystem::path folder_;
};

double Sine(int frame) { return 0.5 * std::sin(frame * 0.05); }

TEST(SoundOut, AnyDepthAndNumberOfChannelsComesOutAsOneChannelOf16Bits) {
  for (const auto& [format, channels] : {std::pair{SF_FORMAT_WAV | SF_FORMAT_PCM_24, 1},
                                         {SF_FORMAT_WAV | SF_FORMAT_FLOAT, 3},
                                         {SF_FORMAT_FLAC | SF_FORMAT_PCM_24, 3},
                                         {SF_FORMAT_AIFF | SF_FORMAT_PCM_32, 2}}) {
    // The mean of channels that differ.
    const double one = 2.0 / (channels + 1);
    const Converted made(
        format, channels, [&](int frame, int channel) { return Sine(frame) * one * (channel + 1); },
        format == (SF_FORMAT_FLAC | SF_FORMAT_PCM_24) ? kLengthUntold : 0);
    EXPECT_THAT(made.notes, testing::SizeIs(channels > 1 ? 1 : 0));
    EXPECT_EQ(made.sound.WaveFormat.nChannels, 1);
    EXPECT_EQ(made.sound.WaveFormat.nSamplesPerSec, 48'000);
    ASSERT_EQ(made.sound.WaveDataLength, 2 * kFrames);
    double error_squares = 0;
    for (int frame = 0; frame < kFrames; ++frame) {
      const double error = (made.At(frame) - Sine(frame)) * 32768;
      ASSERT_LE(std::abs(error), 1.5);
      error_squares += error * error;
    }
    // Rounding alone has a variance of a twelfth of a step; the triangular noise adds two twelfths.
    EXPECT_NEAR(error_squares / kFrames, 3.0 / 12, 0.01);
  }
}

TEST(SoundOut, SixteenBitsOfOneChannelComeOutAsTheyAre) {
  const Converted made(SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1, [](int frame, int) { return frame - 32768; });
  for (int frame = 0; frame < kFrames; ++frame) ASSERT_EQ(made.sound.Samples16.At(frame), frame - 32768);
  EXPECT_TRUE(made.notes.empty());
  const auto plain = [](int depth, int channels) {
    return Converted(SF_FORMAT_WAV | depth, channels, [](int, int) { return 0; }).plain;
  };
  EXPECT_TRUE(plain(SF_FORMAT_PCM_16, 2) && plain(SF_FORMAT_PCM_U8, 1)) << "as the tool opens it";
  EXPECT_FALSE(plain(SF_FORMAT_PCM_16, 3) || plain(SF_FORMAT_PCM_24, 1));
  for (const int depth : {SF_FORMAT_PCM_S8, SF_FORMAT_ULAW, SF_FORMAT_ALAW}) {
    const Converted still(SF_FORMAT_AU | depth, 1, [](int, int) { return 0.25; });
    for (int frame = 0; frame < kFrames; ++frame) ASSERT_EQ(still.At(frame), still.At(0)) << "no noise";
  }
}

TEST(SoundOut, WhatIsTooLoudGetsQuieterAsAWhole) {
  const auto below = [](int frame, int) { return -std::abs(4 * Sine(frame)); };
  const Converted made(SF_FORMAT_WAV | SF_FORMAT_FLOAT, 1, below);
  for (int frame = 0; frame < kFrames; ++frame) ASSERT_NEAR(made.At(frame), below(frame, 0) / 2, 4 / 32768.0);
  ASSERT_EQ(made.notes.size(), 1u);
  EXPECT_THAT(InEnglish(made.notes[0]), testing::HasSubstr("quieter by 6.02 dB"));
}

TEST(SoundOut, TellsThatASoundBreaksOff) {
  // Cut to its head, cut in the middle, and a quiet one with rubbish behind it, which gives nothing twice.
  for (const auto& [loudness, bytes, kept] :
       {std::tuple{1e4, 1'000, false}, {1e4, 9'000, true}, {0.1, 20'000, false}}) {
    const Converted made(
        SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 1,
        [loud = loudness](int frame, int) { return loud * Sine(frame); }, bytes);
    EXPECT_THAT(kept ? InEnglish(made.notes.at(0)) : made.failure,
                testing::HasSubstr("breaks off: of its 48000 samples"));
    EXPECT_EQ(made.exists, kept);
  }
}

TEST(SoundOut, SamplesThatAreNoNumbersAreSilence) {
  const Converted made(SF_FORMAT_WAV | SF_FORMAT_FLOAT, 1, [](int frame, int) {
    return frame % 3 == 0 ? Sine(frame) : frame % 3 == 1 ? NAN : HUGE_VAL;
  });
  for (int frame = 0; frame < kFrames; ++frame)
    ASSERT_NEAR(made.At(frame), frame % 3 == 0 ? Sine(frame) : 0, 2 / 32768.0) << frame;
}

}  // namespace
