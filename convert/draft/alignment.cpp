#include "convert/draft/alignment.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace convert {
namespace {

/// How a manner shows: level in decibels and the logarithm of the frequency, each with its spread.
struct Look {
  double level, level_spread, log_hertz, log_hertz_spread;
};
// In the order of Manner. Told by how speech is made: vowels are the loud parts, hisses bright, murmurs dark,
// stops and pauses quiet, whatever is left of brightness in them.
constexpr Look kLooks[kManners] = {{-4, 5, 6.9, 0.6},     // vowel: about 1000
                                   {-9, 6, 6.3, 0.6},     // sonorant: about 500
                                   {-26, 11, 7.0, 1.2},   // stop: its closure and its burst
                                   {-17, 8, 8.5, 0.45},   // hiss: about 5000
                                   {-26, 8, 7.9, 0.8},    // breath
                                   {-17, 7, 6.6, 0.8},    // murmur
                                   {-45, 10, 7.0, 1.5}};  // pause

constexpr double kLengthSpread = 0.55;
constexpr double kPauseCost = 4;
constexpr std::int64_t kLongestSoundHops = 45;
constexpr std::int64_t kBandHops = 250;
constexpr double kWorst = std::numeric_limits<double>::infinity();

constexpr double kLeastLevel = -60, kLeastHertz = 100;

double LevelOf(const VoiceHop& hop) { return std::max(double{hop.level}, kLeastLevel); }
double LogHertzOf(const VoiceHop& hop) { return std::log(std::max(double{hop.hertz}, kLeastHertz)); }

/// A pause sounds as this recording's quiet does, be it nothing, hum or hiss.
Look PauseLook(std::span<const VoiceHop> hops) {
  constexpr int kEnoughHops = 20;
  double count = 0, level = 0, log_hertz = 0;
  for (const VoiceHop& hop : hops) {
    if (hop.voiced) continue;
    ++count;
    level += LevelOf(hop);
    log_hertz += LogHertzOf(hop);
  }
  Look look = kLooks[static_cast<int>(Manner::kSilence)];
  if (count < kEnoughHops) return look;
  return {std::max(level / count, look.level), 6, log_hertz / count, 0.7};
}

/// Costs of stretches of each manner, by sums up to each hop.
class StretchCosts {
 public:
  explicit StretchCosts(std::span<const VoiceHop> hops) {
    const Look pause = PauseLook(hops);
    for (int manner = 0; manner < kManners; ++manner) {
      Look look = manner == static_cast<int>(Manner::kSilence) ? pause : kLooks[manner];
      // What is quieter than the recording's quiet can't be heard in it.
      look.level = std::max(look.level, pause.level);
      auto& sums = sums_[static_cast<std::size_t>(manner)];
      sums.assign(hops.size() + 1, 0);
      for (std::size_t i = 0; i < hops.size(); ++i) {
        const double level = (LevelOf(hops[i]) - look.level) / look.level_spread;
        const double brightness = (LogHertzOf(hops[i]) - look.log_hertz) / look.log_hertz_spread;
        sums[i + 1] = sums[i] + (level * level + brightness * brightness) / 2 + std::log(look.level_spread) +
                      std::log(look.log_hertz_spread);
      }
    }
  }
  double Of(Manner manner, std::int64_t begin, std::int64_t end) const {
    const auto& sums = sums_[static_cast<std::size_t>(manner)];
    return sums[static_cast<std::size_t>(end)] - sums[static_cast<std::size_t>(begin)];
  }

 private:
  std::array<std::vector<double>, kManners> sums_;
};

/// One sound, or the pause that may stand before a word.
struct Step {
  Manner manner;
  bool pause;
  double expected_hops;
  /// The first and last hop, both included, at which the step may end.
  std::int64_t first_end, last_end;
};

/// The pauses and sounds of all words in a row, a pause at the end, each with its place in the voiced time.
std::vector<Step> StepsOf(std::span<const VoiceHop> hops,
                          const std::vector<std::vector<SpeechSound>>& words) {
  double milliseconds = 0;
  for (const auto& word : words) {
    for (const SpeechSound& sound : word) milliseconds += sound.milliseconds;
  }
  std::vector<std::int64_t> voiced;
  for (std::size_t i = 0; i < hops.size(); ++i) {
    if (hops[i].voiced) voiced.push_back(static_cast<std::int64_t>(i));
  }
  const auto length = static_cast<std::int64_t>(hops.size());
  const auto voiced_hops = static_cast<double>(voiced.size());
  double done = 0;
  const auto place = [&]() -> std::int64_t {
    if (voiced.empty()) return static_cast<std::int64_t>(done / milliseconds * static_cast<double>(length));
    const auto at = static_cast<std::size_t>(done / milliseconds * voiced_hops);
    return at < voiced.size() ? voiced[at] : voiced.back() + 1;
  };
  std::vector<Step> steps;
  const auto add = [&](const SpeechSound& sound, bool pause) {
    done += sound.milliseconds;
    const double expected =
        sound.milliseconds / milliseconds * (voiced.empty() ? static_cast<double>(length) : voiced_hops);
    steps.push_back({sound.manner, pause, std::max(expected, 1.0),
                     std::max<std::int64_t>(place() - kBandHops, 0), std::min(place() + kBandHops, length)});
  };
  for (const auto& word : words) {
    add({Manner::kSilence, "", 0}, true);
    for (const SpeechSound& sound : word) add(sound, false);
  }
  add({Manner::kSilence, "", 0}, true);
  return steps;
}

double LengthCost(std::int64_t hops, double expected) {
  const double error = std::log(static_cast<double>(hops) / expected) / kLengthSpread;
  return error * error / 2;
}

/// The ends of the steps that fit best together.
std::vector<std::int64_t> BestEnds(const std::vector<Step>& steps, const StretchCosts& costs) {
  // Of each step, for each end in its band: how many hops it takes on the best way there.
  std::vector<std::vector<std::int32_t>> taken(steps.size());
  std::vector<double> before{0};
  std::int64_t before_first = 0;
  for (std::size_t i = 0; i < steps.size(); ++i) {
    const Step& step = steps[i];
    const auto ends = static_cast<std::size_t>(step.last_end - step.first_end + 1);
    std::vector<double> best(ends, kWorst);
    taken[i].assign(ends, 0);
    const auto before_at = [&](std::int64_t hop) {
      const std::int64_t at = hop - before_first;
      return at < 0 || at >= static_cast<std::int64_t>(before.size()) ? kWorst
                                                                      : before[static_cast<std::size_t>(at)];
    };
    if (step.pause) {
      // The best beginning so far, with the pause's cost from there taken off: any length costs the same way.
      double from = kWorst;
      std::int64_t from_hop = 0;
      for (std::int64_t end = before_first; end <= step.last_end; ++end) {
        const double cost_so_far = costs.Of(Manner::kSilence, before_first, end);
        if (before_at(end) + kPauseCost - cost_so_far < from) {
          from = before_at(end) + kPauseCost - cost_so_far;
          from_hop = end;
        }
        if (end < step.first_end) continue;
        const auto at = static_cast<std::size_t>(end - step.first_end);
        const double paused = from + cost_so_far, straight = before_at(end);
        best[at] = std::min(paused, straight);
        taken[i][at] = paused < straight ? static_cast<std::int32_t>(end - from_hop) : 0;
      }
    } else {
      for (std::int64_t end = step.first_end; end <= step.last_end; ++end) {
        const auto at = static_cast<std::size_t>(end - step.first_end);
        for (std::int64_t hops = 1; hops <= std::min(kLongestSoundHops, end); ++hops) {
          const double start = before_at(end - hops);
          if (start == kWorst) continue;
          const double cost =
              start + costs.Of(step.manner, end - hops, end) + LengthCost(hops, step.expected_hops);
          if (cost < best[at]) {
            best[at] = cost;
            taken[i][at] = static_cast<std::int32_t>(hops);
          }
        }
      }
    }
    before = std::move(best);
    before_first = step.first_end;
  }
  std::vector<std::int64_t> ends(steps.size());
  std::int64_t end = steps.back().last_end;
  if (before.back() == kWorst) return {};
  for (std::size_t i = steps.size(); i-- > 0;) {
    ends[i] = end;
    end -= taken[i][static_cast<std::size_t>(end - steps[i].first_end)];
  }
  return ends;
}

/// The numbers of the hops without the middle of long pauses, so that a band of some seconds reaches over any
/// of them.
std::vector<std::int64_t> WithoutLongPauses(std::span<const VoiceHop> hops) {
  constexpr std::size_t kKeptAtEachEnd = 50;
  std::vector<std::int64_t> kept;
  for (std::size_t begin = 0; begin < hops.size();) {
    std::size_t end = begin;
    while (end < hops.size() && hops[end].voiced == hops[begin].voiced) ++end;
    for (std::size_t i = begin; i < end; ++i) {
      if (hops[begin].voiced || i < begin + kKeptAtEachEnd || i + kKeptAtEachEnd >= end)
        kept.push_back(static_cast<std::int64_t>(i));
    }
    begin = end;
  }
  return kept;
}

/// Each of `all` sounds gets the same part of the length.
std::vector<std::vector<HopSpan>> Evenly(std::int64_t length,
                                         const std::vector<std::vector<SpeechSound>>& words,
                                         std::int64_t all) {
  std::int64_t done = 0;
  std::vector<std::vector<HopSpan>> spans(words.size());
  for (std::size_t i = 0; i < words.size(); ++i) {
    for (std::size_t k = 0; k < words[i].size(); ++k, ++done)
      spans[i].push_back({length * done / all, length * (done + 1) / all});
  }
  return spans;
}

}  // namespace

std::vector<std::vector<HopSpan>> Align(std::span<const VoiceHop> hops,
                                        const std::vector<std::vector<SpeechSound>>& words) {
  std::int64_t sounds = 0;
  for (const auto& word : words) sounds += static_cast<std::int64_t>(word.size());
  if (sounds == 0) return std::vector<std::vector<HopSpan>>(words.size());
  const std::vector<std::int64_t> kept = WithoutLongPauses(hops);
  if (sounds > static_cast<std::int64_t>(kept.size()))
    return Evenly(static_cast<std::int64_t>(hops.size()), words, sounds);
  std::vector<VoiceHop> kept_hops;
  kept_hops.reserve(kept.size());
  for (const std::int64_t hop : kept) kept_hops.push_back(hops[static_cast<std::size_t>(hop)]);
  const std::vector<Step> steps = StepsOf(kept_hops, words);
  const auto ends = BestEnds(steps, StretchCosts(kept_hops));
  if (ends.empty()) return Evenly(static_cast<std::int64_t>(hops.size()), words, sounds);
  std::vector<std::vector<HopSpan>> spans(words.size());
  std::size_t step = 0;
  for (std::size_t i = 0; i < words.size(); ++i) {
    ++step;  // the pause before the word
    for (std::size_t k = 0; k < words[i].size(); ++k, ++step) {
      spans[i].push_back({kept[static_cast<std::size_t>(ends[step - 1])],
                          kept[static_cast<std::size_t>(ends[step]) - 1] + 1});
    }
  }
  return spans;
}

}  // namespace convert
