#include "painter/wiggle_field.h"

#include <cmath>

#include "painter/noise.h"

namespace painter {
namespace {

std::int32_t CellOf(float coordinate) { return static_cast<std::int32_t>(std::floor(coordinate)); }

}  // namespace

float NoiseCoordinate(std::int32_t pixel, std::int32_t size) {
  return static_cast<float>(static_cast<double>(pixel) / 50 / size);
}

ColumnTable MakeColumnTable(std::int32_t width, std::int32_t size, std::int32_t padding) {
  ColumnTable table;
  table.fraction.assign(static_cast<std::size_t>(width) + static_cast<std::size_t>(padding), 0);
  table.fade = table.fraction;
  for (std::int32_t x = 0; x < width; ++x) {
    const float coordinate = NoiseCoordinate(x, size);
    const std::int32_t cell = CellOf(coordinate);
    const auto place = static_cast<std::size_t>(x);
    table.fraction[place] = coordinate - static_cast<float>(cell);
    table.fade[place] = static_cast<float>(Fade(table.fraction[place]));
    if (static_cast<std::size_t>(cell) == table.begin.size()) table.begin.push_back(x);
  }
  table.begin.push_back(width);
  return table;
}

NoiseSlice::NoiseSlice(std::int32_t width, std::int32_t height, std::int32_t size, float slice) {
  const std::int32_t last_x = CellOf(NoiseCoordinate(width - 1, size)) + 1;
  const std::int32_t last_y = CellOf(NoiseCoordinate(height - 1, size)) + 1;
  corners_across_ = static_cast<std::size_t>(last_x) + 1;
  for (std::int32_t y = 0; y <= last_y; ++y)
    for (std::int32_t x = 0; x <= last_x; ++x) corners_.push_back(FoldCorner(x, y, slice));
}

NoiseSlice::Corner NoiseSlice::FoldCorner(std::int32_t x, std::int32_t y, float slice) {
  const std::int32_t cell = CellOf(slice);
  const double fraction = static_cast<double>(slice) - cell;
  const double weight = Fade(fraction);
  const Gradient& near = GradientAt(x, y, cell);
  const Gradient& far = GradientAt(x, y, cell + 1);
  return {Blend(weight, near.x, far.x), Blend(weight, near.y, far.y),
          Blend(weight, near.z * fraction, far.z * (fraction - 1))};
}

void NoiseSlice::FoldRow(float row_coordinate, double scale, std::vector<CellLine>& lines) const {
  const std::int32_t cell = CellOf(row_coordinate);
  const double fraction = static_cast<double>(row_coordinate) - cell;
  const double weight = Fade(fraction);
  const Corner* upper = &corners_[static_cast<std::size_t>(cell) * corners_across_];
  const Corner* lower = upper + corners_across_;
  double base = 0, slope = 0;
  lines.clear();
  for (std::size_t i = 0; i < corners_across_; ++i) {
    const double next_base = scale * Blend(weight, upper[i].base + upper[i].slope_y * fraction,
                                           lower[i].base + lower[i].slope_y * (fraction - 1));
    const double next_slope = scale * Blend(weight, upper[i].slope_x, lower[i].slope_x);
    if (i > 0)
      lines.push_back({static_cast<float>(base), static_cast<float>(slope),
                       static_cast<float>(next_base - next_slope - base),
                       static_cast<float>(next_slope - slope)});
    base = next_base;
    slope = next_slope;
  }
}

}  // namespace painter
