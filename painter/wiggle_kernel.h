// The inner loops of the wiggle, in one copy for each family of processors.
#pragma once

#include <cstddef>
#include <cstdint>

#include "painter/planes.h"
#include "painter/wiggle_field.h"

namespace painter {

/// Pixels that are worked out in one block; a row's buffers are longer than the row by this much.
inline constexpr std::int32_t kBlock = 32;

/// Stands in the place of a shift where the rounding lies too close to a tie for single precision.
inline constexpr std::int32_t kInDoubt = INT32_MIN;

/// A row of pixels and the bounds that the fetched places are held to.
struct RowBounds {
  std::int32_t y;
  std::int32_t right, bottom;  // the highest place that may be fetched, inclusive
  std::int32_t columns;        // samples from one row of a plane to the next
};

/// The pixels first to end - 1 of a row, all in one lattice cell.
struct CellSpan {
  std::int32_t first, end;
  CellLine x, y;  // the two fields here, in pixels of displacement
};

/// The same numbers come from every copy: where single precision leaves doubt, the shift says so.
struct WiggleKernel {
  /// Writes, for each pixel x of the span, how many samples the fetched place lies behind the sample (x, 0).
  /// May write up to kBlock - 1 entries past the span. `doubt` is the distance from a tie within which a
  /// rounding is not trusted. Returns whether any entry may be kInDoubt.
  bool (*displace)(const ColumnTable& table, const CellSpan& span, const RowBounds& bounds, float doubt,
                   std::int32_t* shifts);
  /// Copies a row: target pixel x is the source sample x + shifts[x]. `starts` is room for width + 8 entries.
  void (*gather)(const std::int32_t* shifts, std::int32_t width, const ConstPlanes& source,
                 const Planes& target_row, std::int32_t* starts);
};

/// The copy for the processor at hand.
const WiggleKernel& KernelHere();

/// All copies that this processor can run, KernelHere among them. Returns their count, at most `room`.
std::size_t KernelsThatRun(const WiggleKernel** kernels, std::size_t room);

}  // namespace painter
