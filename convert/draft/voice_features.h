// What a sound shows of the speech in it, every hundredth of a second.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace convert {

inline constexpr double kHopSeconds = 0.01;

struct VoiceHop {
  /// Level in decibels below the voice's loud parts, at or below about 0.
  float level = -100;
  /// The mean frequency, weighted towards the bright end: some hundreds for a murmur, thousands for a hiss.
  float hertz = 0;
  bool voiced = false;
};

/// Takes samples from -1 to 1 in pieces of any size.
class VoiceListener {
 public:
  explicit VoiceListener(std::int32_t samples_per_second);
  void Listen(std::span<const double> samples);
  /// One entry for each hop of the sound. A hop is voiced if its level stands out from the quiet of the
  /// sound; a pause shorter than a stop's closure counts as voiced.
  std::vector<VoiceHop> Finish();

 private:
  void EndHop();

  double samples_per_second_;
  double next_end_;
  std::int64_t sample_ = 0;
  double squares_ = 0, difference_squares_ = 0, last_ = 0;
  std::int64_t count_ = 0;
  std::vector<VoiceHop> hops_;
};

}  // namespace convert
