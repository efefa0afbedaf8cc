// Samples of any depth as 16 bits, and the head of the wave file that holds them.
#pragma once

#include <cstdint>
#include <string>

namespace convert {

/// Turns samples from -1 to 1 into 16 bits. Full scale is 32768, so that samples which were 16 bits come out
/// as they were.
class SampleRounder {
 public:
  /// dither: adds noise with a triangular density, two steps wide, before rounding, so that what is lost is
  /// steady hiss instead of distortion. The noise is the same in every run.
  /// peak: the greatest magnitude to come. If it and the noise would go past the end of the range, everything
  /// is made quieter by the same factor: nothing is clipped.
  SampleRounder(bool dither, double peak);

  double Gain() const { return gain_; }
  std::int16_t Rounded(double sample);

 private:
  double Noise();

  bool dither_;
  double gain_;
  std::uint64_t state_ = 0x9e3779b97f4a7c15;
};

/// The head of a wave file of one channel and 16 bits: RIFF, WAVE, the format right behind it, then the data.
/// frames: at most kMostWaveFrames.
std::string WaveHead(std::int64_t frames, std::int32_t samples_per_second);

/// The data's size has to fit a signed 32-bit number, and one sample more is read behind it.
inline constexpr std::int64_t kMostWaveFrames = (INT32_MAX - 64) / 2;

}  // namespace convert
