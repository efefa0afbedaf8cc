// How loud a recording is, and how a meter shows it.
#pragma once

#include <cstdint>
#include <span>

namespace recorder {

/// The meter's lower end, in decibels of full scale; digital silence counts as this.
inline constexpr double kFloorDecibels = -60;

/// A peak meter. The bar jumps up with the sound and falls by 24 decibels a second; a mark keeps the highest
/// level for 1.5 seconds and then falls in the same way. Time is counted in samples, not by the clock, so a
/// late block of samples moves the meter as far as one in time.
class Meter {
 public:
  explicit Meter(int samples_per_second) : samples_per_second_(samples_per_second) {}

  void Take(std::span<const std::int16_t> samples);

  /// Both in decibels of full scale.
  double Bar() const { return bar_; }
  double Mark() const { return mark_; }
  /// Whether a sample has reached the end of the scale since the meter was made: the sound is cut there.
  bool Overloaded() const { return overloaded_; }

 private:
  int samples_per_second_;
  double bar_ = kFloorDecibels;
  double mark_ = kFloorDecibels;
  double mark_seconds_left_ = 0;
  bool overloaded_ = false;
};

}  // namespace recorder
