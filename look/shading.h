// Colour arithmetic of the in-house controls.
#pragma once

#include "platform/numbers.h"

namespace look {

/// A colour made brighter (factor above 1) or darker, each part limited to 255.
platform::Color Scaled(platform::Color color, double factor);

/// The colour that lies `share` of the way from one to another, share from 0 to 1.
platform::Color Mix(platform::Color from, platform::Color to, double share);

/// How bright a colour looks, 0 for black to 1 for white: the relative luminance of sRGB.
double Luminance(platform::Color color);

/// Contrast ratio of two colours, from 1 (none) to 21 (black on white).
double Contrast(platform::Color a, platform::Color b);

/// Black or white, whichever reads better on the ground.
platform::Color ReadableOn(platform::Color ground);

/// The same hue with light and dark exchanged: what was drawn for a bright ground then reads on a dark one.
platform::Color LightnessTurned(platform::Color color);

/// The upper and lower end of a fill.
struct Shades {
  platform::Color top = 0, bottom = 0;
  friend bool operator==(const Shades&, const Shades&) = default;
};

enum class Height { Raised, Sunken };

/// A raised fill is lit from above: its top is `gradient` times as bright as its colour. A sunken one is the
/// other way round and darker as a whole, so that it differs from a raised one even with a gradient of 1.
Shades FillShades(platform::Color fill, double gradient, Height height);

}  // namespace look
