#include "painter/wiggle.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "painter/noise.h"
#include "painter/random.h"
#include "painter/wiggle_field.h"
#include "painter/wiggle_kernel.h"
#include "platform/numbers.h"

namespace painter {
namespace {

/// The kernel's single precision is off by less than 3e-6 per unit of amount: four roundings of 2^-24 in a
/// sum whose parts add up to 10.3 at most. Beyond this amount doubt would be everywhere.
constexpr std::int32_t kLargestFastAmount = 4096;
constexpr float kDoubtPerAmount = 4e-6f;
constexpr float kDoubtAtLeast = 1e-6f;

/// One frame being displaced.
struct Frame {
  std::int32_t amount, size;
  Slices slices;
  std::int32_t width, height;  // pixels that take part: one column and row less than the planes hold
  std::int32_t columns;
};

std::int32_t Fetched(const Frame& frame, float across, float down, float slice, std::int32_t from,
                     std::int32_t count) {
  const float point[3] = {across, down, slice};
  const double place = static_cast<double>(frame.amount) * noise3(point) + from;
  return std::clamp(platform::RoundToLong(place), 0, count - 1);
}

/// How many samples the place fetched for (x, y) lies behind the sample (x, 0): the rule itself.
std::int64_t ShiftAt(const Frame& frame, std::int32_t x, std::int32_t y) {
  const float across = NoiseCoordinate(x, frame.size), down = NoiseCoordinate(y, frame.size);
  const std::int32_t from_x = Fetched(frame, across, down, frame.slices.x, x, frame.width);
  const std::int32_t from_y = Fetched(frame, across, down, frame.slices.y, y, frame.height);
  return std::int64_t{from_y} * frame.columns + from_x - x;
}

Planes RowOf(const Planes& planes, std::int32_t y) {
  const auto start = static_cast<std::size_t>(y) * planes.shape.Columns();
  return {planes.shape, planes.red + start, planes.green + start, planes.blue + start};
}

void WigglePixelByPixel(const Frame& frame, const ConstPlanes& source, const Planes& target) {
  for (std::int32_t y = 0; y < frame.height; ++y) {
    const Planes row = RowOf(target, y);
    for (std::int32_t x = 0; x < frame.width; ++x) {
      const std::int64_t from = x + ShiftAt(frame, x, y);
      row.red[x] = source.red[from];
      row.green[x] = source.green[from];
      row.blue[x] = source.blue[from];
    }
  }
}

/// What the rows of one frame share.
class RowWiggler {
 public:
  explicit RowWiggler(const Frame& frame)
      : frame_(frame),
        table_(MakeColumnTable(frame.width, frame.size, kBlock)),
        slice_x_(frame.width, frame.height, frame.size, frame.slices.x),
        slice_y_(frame.width, frame.height, frame.size, frame.slices.y),
        doubt_(static_cast<float>(std::abs(frame.amount)) * kDoubtPerAmount + kDoubtAtLeast),
        shifts_(static_cast<std::size_t>(frame.width + kBlock)),
        starts_(static_cast<std::size_t>(frame.width + 8)) {}

  void Fill(std::int32_t y, const ConstPlanes& source, const Planes& target_row) {
    const float down = NoiseCoordinate(y, frame_.size);
    slice_x_.FoldRow(down, frame_.amount, lines_x_);
    slice_y_.FoldRow(down, frame_.amount, lines_y_);
    const RowBounds bounds{y, frame_.width - 1, frame_.height - 1, frame_.columns};
    for (std::size_t cell = 0; cell + 1 < table_.begin.size(); ++cell) {
      const CellSpan span{table_.begin[cell], table_.begin[cell + 1], lines_x_[cell], lines_y_[cell]};
      if (kernel_.displace(table_, span, bounds, doubt_, shifts_.data())) Settle(span, y);
    }
    kernel_.gather(shifts_.data(), frame_.width, source, target_row, starts_.data());
  }

 private:
  /// Works the doubtful pixels out again by the rule.
  void Settle(const CellSpan& span, std::int32_t y) {
    for (std::int32_t x = span.first; x < span.end; ++x)
      if (auto& shift = shifts_[static_cast<std::size_t>(x)]; shift == kInDoubt)
        shift = static_cast<std::int32_t>(ShiftAt(frame_, x, y));
  }

  const WiggleKernel& kernel_ = KernelHere();
  Frame frame_;
  ColumnTable table_;
  NoiseSlice slice_x_, slice_y_;
  float doubt_;
  std::vector<CellLine> lines_x_, lines_y_;
  std::vector<std::int32_t> shifts_, starts_;
};

bool FastPathFits(const Frame& frame, const PlaneShape& shape) {
  return std::abs(std::int64_t{frame.amount}) <= kLargestFastAmount && shape.Samples() < INT32_MAX;
}

}  // namespace

void WiggleFrameAt(std::int32_t amount, std::int32_t size, const Slices& slices, const ConstPlanes& source,
                   const Planes& target) {
  const PlaneShape& shape = target.shape;
  if (shape.right < 1 || shape.bottom < 1) return;
  const Frame frame{amount, std::max(size, 1), slices, shape.right, shape.bottom, shape.right + 1};
  if (!FastPathFits(frame, shape)) return WigglePixelByPixel(frame, source, target);
  RowWiggler wiggler(frame);
  for (std::int32_t y = 0; y < frame.height; ++y) wiggler.Fill(y, source, RowOf(target, y));
}

void WiggleFrame(std::int32_t amount, std::int32_t size, const ConstPlanes& source, const Planes& target) {
  Slices slices;
  slices.x = NextRandom();
  slices.y = NextRandom();
  WiggleFrameAt(amount, size, slices, source, target);
}

}  // namespace painter
