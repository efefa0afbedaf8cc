#include "timeline/mouth_names.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace timeline {
namespace {

struct Name {
  std::string_view shape;
  int mouth;
};

constexpr Name kNames[] = {
    {"A", 1},      {"I", 1},                                                     // open wide
    {"B", 2},      {"M", 2},  {"P", 2},                                          // lips pressed together
    {"Ch", 3},     {"G", 3},  {"K", 3}, {"N", 3}, {"R", 3}, {"S", 3}, {"T", 3},  // teeth together, lips apart
    {"Closed", 4},                                                               // at rest
    {"D", 5},                                                                    // half open
    {"E", 6},                                                                    // open, lips spread
    {"F", 7},      {"V", 7},   // upper teeth on the lower lip
    {"L", 8},      {"Th", 8},  // tongue behind the upper teeth
    {"O", 9},                  // round, open
    {"U", 10},                 // round, smaller, lips forward
    {"Q", 11},     {"W", 11},  // small, pursed
};

}  // namespace

std::optional<int> MouthNumber(std::string_view shape) {
  if (shape.ends_with(' ')) shape.remove_suffix(1);
  const auto found =
      std::find_if(std::begin(kNames), std::end(kNames), [shape](const Name& n) { return n.shape == shape; });
  if (found == std::end(kNames)) return std::nullopt;
  return found->mouth;
}

std::string_view MouthInWords(int number) {
  static constexpr std::array<std::string_view, kMouths> words = {
      "open wide",
      "lips pressed together",
      "teeth together, lips drawn apart",
      "closed, at rest",
      "half open",
      "open, lips spread",
      "upper teeth on the lower lip",
      "tongue raised behind the upper teeth",
      "round, open",
      "round, smaller, lips pushed forward",
      "small, pursed",
  };
  return words.at(static_cast<std::size_t>(number - 1));
}

}  // namespace timeline
