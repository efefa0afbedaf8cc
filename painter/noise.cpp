#include "painter/noise.h"

#include <array>
#include <cmath>
#include <utility>

namespace painter {
namespace {

constexpr int kLattice = 256;

/// The numbers 0 to 255 in an order without pattern. Worked out while compiling, in whole numbers alone, so
/// it is the same table everywhere.
constexpr std::array<std::uint8_t, kLattice> ShuffledBytes() {
  std::array<std::uint8_t, kLattice> bytes{};
  for (int i = 0; i < kLattice; ++i) bytes[static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(i);
  std::uint64_t state = 20011;
  for (std::size_t i = kLattice - 1; i > 0; --i) {
    state = state * 6364136223846793005u + 1442695040888963407u;
    std::swap(bytes[i], bytes[(state >> 33) % (i + 1)]);
  }
  return bytes;
}

/// All orders and signs of three unequal lengths. The three add up to little more than 2, which holds the
/// field to about -1 to 1.
constexpr std::array<Gradient, 48> Gradients() {
  constexpr double a = 0.25, b = 0.75, c = 1.125;
  constexpr double orders[6][3] = {{a, b, c}, {a, c, b}, {b, a, c}, {b, c, a}, {c, a, b}, {c, b, a}};
  std::array<Gradient, 48> gradients{};
  for (unsigned i = 0; i < gradients.size(); ++i) {
    const auto& order = orders[i / 8];
    gradients[i] = {i & 1 ? -order[0] : order[0], i & 2 ? -order[1] : order[1], i & 4 ? -order[2] : order[2]};
  }
  return gradients;
}

constexpr auto kShuffled = ShuffledBytes();
constexpr auto kGradients = Gradients();

std::uint8_t Shuffle(std::uint32_t value) { return kShuffled[value % kLattice]; }

/// One coordinate, split into the lattice point at or below it and the way from there.
struct Coordinate {
  std::int32_t cell;
  double fraction;
};

Coordinate Split(float value) {
  const double cell = std::floor(static_cast<double>(value));
  return {static_cast<std::int32_t>(cell), static_cast<double>(value) - cell};
}

/// The plane through one corner of the lattice cell, with that corner's slope, at the point in question.
double Slope(const Coordinate& x, const Coordinate& y, const Coordinate& z, int right, int down, int deep) {
  const Gradient& gradient = GradientAt(x.cell + right, y.cell + down, z.cell + deep);
  return gradient.x * (x.fraction - right) + gradient.y * (y.fraction - down) +
         gradient.z * (z.fraction - deep);
}

}  // namespace

const Gradient& GradientAt(std::int32_t x, std::int32_t y, std::int32_t z) {
  const std::uint32_t plane = Shuffle(static_cast<std::uint32_t>(x));
  const std::uint32_t line = Shuffle(plane + static_cast<std::uint32_t>(y));
  const std::uint32_t place = Shuffle(line + static_cast<std::uint32_t>(z));
  return kGradients[place * kGradients.size() / kLattice];
}

float noise3(const float (&point)[3]) {
  for (const float value : point)
    if (!(std::fabs(value) < 1e9f)) return 0;
  const Coordinate x = Split(point[0]), y = Split(point[1]), z = Split(point[2]);
  const double weight_x = Fade(x.fraction), weight_y = Fade(y.fraction), weight_z = Fade(z.fraction);
  const auto along_x = [&](int down, int deep) {
    return Blend(weight_x, Slope(x, y, z, 0, down, deep), Slope(x, y, z, 1, down, deep));
  };
  const auto along_y = [&](int deep) { return Blend(weight_y, along_x(0, deep), along_x(1, deep)); };
  return static_cast<float>(Blend(weight_z, along_y(0), along_y(1)));
}

float UniformSequence::Next() {
  state_ = state_ * 6364136223846793005u + 1442695040888963407u;
  // 24 bits are what a float holds exactly, so that the largest draw stays below 1.
  return static_cast<float>(state_ >> 40) / static_cast<float>(1 << 24);
}

float NextRandom() {
  static UniformSequence sequence;
  return sequence.Next();
}

}  // namespace painter
