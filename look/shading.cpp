#include "look/shading.h"

#include <algorithm>
#include <cmath>

namespace look {
namespace {

using platform::BlueOf;
using platform::Color;
using platform::GreenOf;
using platform::RedOf;

template <typename Part>
Color ForEachPart(Color a, Color b, Part part) {
  return platform::Rgb(part(RedOf(a), RedOf(b)), part(GreenOf(a), GreenOf(b)), part(BlueOf(a), BlueOf(b)));
}

double Linear(int part) {
  const double value = part / 255.0;
  return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

}  // namespace

Color Scaled(Color color, double factor) {
  return ForEachPart(color, color, [factor](int part, int) {
    return std::clamp(platform::RoundToLong(part * factor), 0, 255);
  });
}

Color Mix(Color from, Color to, double share) {
  return ForEachPart(from, to, [share](int a, int b) { return platform::RoundToLong(a + (b - a) * share); });
}

double Luminance(Color color) {
  return 0.2126 * Linear(RedOf(color)) + 0.7152 * Linear(GreenOf(color)) + 0.0722 * Linear(BlueOf(color));
}

double Contrast(Color a, Color b) {
  const auto [darker, brighter] = std::minmax({Luminance(a), Luminance(b)});
  return (brighter + 0.05) / (darker + 0.05);
}

Color ReadableOn(Color ground) {
  const Color black = 0, white = platform::Rgb(255, 255, 255);
  return Contrast(ground, black) >= Contrast(ground, white) ? black : white;
}

Color LightnessTurned(Color color) {
  const auto [least, most] = std::minmax({RedOf(color), GreenOf(color), BlueOf(color)});
  const int shift = 255 - least - most;
  return ForEachPart(color, color, [shift](int part, int) { return part + shift; });
}

Shades FillShades(Color fill, double gradient, Height height) {
  if (height == Height::Raised) return {Scaled(fill, gradient), fill};
  return {Scaled(fill, 0.72), Scaled(fill, 0.72 * gradient)};
}

}  // namespace look
