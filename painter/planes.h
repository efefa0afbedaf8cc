// Three colour planes side by side, never interleaved: the form in which pictures travel here.
#pragma once

#include <cstddef>
#include <cstdint>

namespace painter {

/// Index bounds of a plane, inclusive: x from 0 to `right`, y from 0 to `bottom`. A frame of the host has
/// one column and one row more than its width and height, which travel along as they are.
struct PlaneShape {
  std::int32_t right = -1;
  std::int32_t bottom = -1;

  std::size_t Columns() const { return static_cast<std::size_t>(right + std::int64_t{1}); }
  std::size_t Rows() const { return static_cast<std::size_t>(bottom + std::int64_t{1}); }
  /// Samples in one plane.
  std::size_t Samples() const { return Columns() * Rows(); }
  bool operator==(const PlaneShape&) const = default;
};

/// Red, green and blue of one picture, owned by someone else. Unsigned 8-bit samples, x running fastest.
template <typename Sample>
struct PlanesOf {
  PlaneShape shape;
  Sample* red = nullptr;
  Sample* green = nullptr;
  Sample* blue = nullptr;
};
using Planes = PlanesOf<std::uint8_t>;
using ConstPlanes = PlanesOf<const std::uint8_t>;

inline ConstPlanes ReadOnly(const Planes& planes) {
  return {planes.shape, planes.red, planes.green, planes.blue};
}

}  // namespace painter
