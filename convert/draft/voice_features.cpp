#include "convert/draft/voice_features.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace convert {
namespace {

constexpr double kSilenceDecibels = -100;
/// The loud parts of speech are louder than this share of the hops that aren't silent.
constexpr double kLoudShare = 0.9;
constexpr double kQuietShare = 0.1;
/// A voice is at least this far above the quiet, and no further below its loud parts.
constexpr double kAboveQuiet = 9, kBelowLoud = 38;
constexpr int kShortPauseHops = 12;

double Decibels(double mean_square) {
  return mean_square > 1e-10 ? 10 * std::log10(mean_square) : kSilenceDecibels;
}

double LevelAt(std::vector<float> levels, double share) {
  if (levels.empty()) return kSilenceDecibels;
  const auto at =
      levels.begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(levels.size() - 1));
  std::nth_element(levels.begin(), at, levels.end());
  return double{*at};
}

void CloseShortPauses(std::vector<VoiceHop>& hops) {
  std::size_t pause_begin = 0;
  for (std::size_t i = 0; i < hops.size(); ++i) {
    if (!hops[i].voiced) continue;
    // The sound's own beginning is no pause in it.
    if (pause_begin > 0 && i - pause_begin <= kShortPauseHops) {
      for (std::size_t k = pause_begin; k < i; ++k) hops[k].voiced = true;
    }
    pause_begin = i + 1;
  }
}

}  // namespace

VoiceListener::VoiceListener(std::int32_t samples_per_second)
    : samples_per_second_(samples_per_second), next_end_(kHopSeconds * samples_per_second) {}

void VoiceListener::Listen(std::span<const double> samples) {
  for (const double sample : samples) {
    squares_ += sample * sample;
    difference_squares_ += (sample - last_) * (sample - last_);
    last_ = sample;
    ++count_;
    if (static_cast<double>(++sample_) >= next_end_) EndHop();
  }
}

void VoiceListener::EndHop() {
  VoiceHop hop;
  const auto count = static_cast<double>(std::max<std::int64_t>(count_, 1));
  hop.level = static_cast<float>(Decibels(squares_ / count));
  // Of a pure tone of frequency f the differences are 2 sin(pi f / rate) times as large as the samples.
  const double ratio = squares_ > 0 ? std::sqrt(difference_squares_ / squares_) / 2 : 0;
  hop.hertz = static_cast<float>(std::asin(std::min(ratio, 1.0)) * samples_per_second_ / std::numbers::pi);
  hops_.push_back(hop);
  squares_ = difference_squares_ = 0;
  count_ = 0;
  next_end_ = kHopSeconds * samples_per_second_ * static_cast<double>(hops_.size() + 1);
}

std::vector<VoiceHop> VoiceListener::Finish() {
  if (count_ > 0) EndHop();
  std::vector<float> levels;
  for (const VoiceHop& hop : hops_) {
    if (double{hop.level} > kSilenceDecibels) levels.push_back(hop.level);
  }
  const double loud = LevelAt(levels, kLoudShare), quiet = LevelAt(levels, kQuietShare);
  const double least = std::min(std::max(quiet + kAboveQuiet, loud - kBelowLoud), loud - 6);
  for (VoiceHop& hop : hops_) {
    hop.voiced = double{hop.level} > least;
    hop.level = static_cast<float>(std::max(double{hop.level} - loud, kSilenceDecibels));
  }
  CloseShortPauses(hops_);
  return std::move(hops_);
}

}  // namespace convert
