// The wiggle's noise, prepared so that a row of pixels costs little more than two straight lines a cell.
#pragma once

#include <cstdint>
#include <vector>

namespace painter {

/// Within one lattice cell of one row the field is near + fade x far, where both are straight lines in the
/// fraction of the way through the cell.
struct CellLine {
  float near, near_slope;
  float far, far_slope;
};

/// The noise coordinates of a row of pixels: one table for all rows of a frame.
struct ColumnTable {
  std::vector<float> fraction;      // per pixel: the way through its lattice cell, 0 to 1
  std::vector<float> fade;          // per pixel: the weight of the cell's far end
  std::vector<std::int32_t> begin;  // per lattice cell: its first pixel; one more entry ends the last
};

/// The noise coordinate of a pixel column or row, as the noise is given it.
float NoiseCoordinate(std::int32_t pixel, std::int32_t size);

/// Columns 0 to width - 1. The pixel tables are `padding` entries longer than the row, so that a kernel may
/// work in whole blocks.
ColumnTable MakeColumnTable(std::int32_t width, std::int32_t size, std::int32_t padding);

/// One slice through the noise. What depends on z alone is worked out once, what depends on y once per row.
class NoiseSlice {
 public:
  /// For pixels 0 to width - 1 by 0 to height - 1, both at least 1.
  NoiseSlice(std::int32_t width, std::int32_t height, std::int32_t size, float slice);

  /// The lattice cells of a pixel row, from the left, in multiples of `scale`.
  void FoldRow(float row_coordinate, double scale, std::vector<CellLine>& lines) const;

 private:
  /// At a lattice point: the field is base + slope_x * dx + slope_y * dy.
  struct Corner {
    double slope_x, slope_y, base;
  };
  static Corner FoldCorner(std::int32_t x, std::int32_t y, float slice);

  std::size_t corners_across_;
  std::vector<Corner> corners_;
};

}  // namespace painter
