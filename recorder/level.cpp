#include "recorder/level.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace recorder {
namespace {

constexpr double kFallPerSecond = 24;
constexpr double kMarkSeconds = 1.5;
constexpr int kFullScale = 32768;

int Loudest(std::span<const std::int16_t> samples) {
  int loudest = 0;
  for (const std::int16_t sample : samples) loudest = std::max(loudest, std::abs(int{sample}));
  return loudest;
}

double Decibels(int amplitude) {
  if (amplitude == 0) return kFloorDecibels;
  return std::max(kFloorDecibels, 20 * std::log10(amplitude / double{kFullScale}));
}

}  // namespace

void Meter::Take(std::span<const std::int16_t> samples) {
  const int loudest = Loudest(samples);
  const double peak = Decibels(loudest);
  const double seconds = static_cast<double>(samples.size()) / samples_per_second_;
  bar_ = std::max(peak, bar_ - kFallPerSecond * seconds);
  const double falling = std::max(0.0, seconds - mark_seconds_left_);
  mark_seconds_left_ = std::max(0.0, mark_seconds_left_ - seconds);
  mark_ = std::max(kFloorDecibels, mark_ - kFallPerSecond * falling);
  if (peak >= mark_) {
    mark_ = peak;
    mark_seconds_left_ = kMarkSeconds;
  }
  overloaded_ = overloaded_ || loudest >= std::numeric_limits<std::int16_t>::max();
}

}  // namespace recorder
