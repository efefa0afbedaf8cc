// The process's random numbers, and a smooth field of numbers in space: coherent gradient noise.
#pragma once

#include <cstdint>

namespace painter {

/// The field at a point: about -1 to 1, of both signs, 0 at the lattice points (whole coordinates), with a
/// continuous first and second derivative. The same value for the same point in every run and on every
/// machine. The field repeats every 256 units; coordinates of a thousand million and above, and what is not
/// a number, give 0.
float noise3(const float (&point)[3]);

/// The slope of the field at a lattice point. No part of it is ever 0: a gradient square to an axis would
/// make whole stretches of the field 0.
struct Gradient {
  double x, y, z;
};
const Gradient& GradientAt(std::int32_t x, std::int32_t y, std::int32_t z);

/// The weight of the far end, 0 to 1, at a fraction 0 to 1 of the way between two lattice points: the
/// polynomial of fifth degree with flat first and second derivative at both ends.
constexpr double Fade(double fraction) {
  return fraction * fraction * fraction * (fraction * (fraction * 6 - 15) + 10);
}

constexpr double Blend(double weight, double near, double far) { return near + weight * (far - near); }

/// A uniform sequence from 0 up to but not including 1. Always starts at the same place.
class UniformSequence {
 public:
  float Next();

 private:
  std::uint64_t state_ = 0x853c49e6748fea9bu;
};

/// The next draw of the process-wide sequence. Nothing ever seeds it: each run goes through the same numbers.
float NextRandom();

}  // namespace painter
