#include "painter/wiggle.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdlib>
#include <thread>
#include <vector>

#include "painter/noise.h"
#include "painter/thread_team.h"
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

/// More threads than this are no quicker, since they wait for the memory.
constexpr int kMostThreads = 8;

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
struct Field {
  explicit Field(const Frame& of)
      : frame(of),
        table(MakeColumnTable(of.width, of.size, kBlock)),
        slice_x(of.width, of.height, of.size, of.slices.x),
        slice_y(of.width, of.height, of.size, of.slices.y),
        doubt(static_cast<float>(std::abs(of.amount)) * kDoubtPerAmount + kDoubtAtLeast) {}

  Frame frame;
  ColumnTable table;
  NoiseSlice slice_x, slice_y;
  float doubt;
};

/// Works rows out one after the other; each thread has its own.
class RowWiggler {
 public:
  RowWiggler(const Field& field, const WiggleKernel& kernel)
      : field_(field),
        kernel_(kernel),
        lines_x_(field.table.begin.size()),
        lines_y_(lines_x_),
        shifts_(static_cast<std::size_t>(field.frame.width + kBlock)),
        starts_(static_cast<std::size_t>(field.frame.width + 8)) {}

  /// How far each pixel of a row is fetched from.
  void DisplaceRow(std::int32_t y) {
    const Frame& frame = field_.frame;
    const float down = NoiseCoordinate(y, frame.size);
    field_.slice_x.FoldRow(down, frame.amount, lines_x_);
    field_.slice_y.FoldRow(down, frame.amount, lines_y_);
    const RowBounds bounds{y, frame.width - 1, frame.height - 1, frame.columns};
    const ColumnTable& table = field_.table;
    for (std::size_t cell = 0; cell + 1 < table.begin.size(); ++cell) {
      const CellSpan span{table.begin[cell], table.begin[cell + 1], lines_x_[cell], lines_y_[cell]};
      if (kernel_.displace(table, span, bounds, field_.doubt, shifts_.data())) Settle(span, y);
    }
  }

  void GatherRow(const ConstPlanes& source, const Planes& target_row) {
    kernel_.gather(shifts_.data(), field_.frame.width, source, target_row, starts_.data());
  }

 private:
  /// Works the doubtful pixels out again by the rule.
  void Settle(const CellSpan& span, std::int32_t y) {
    for (std::int32_t x = span.first; x < span.end; ++x)
      if (auto& shift = shifts_[static_cast<std::size_t>(x)]; shift == kInDoubt)
        shift = static_cast<std::int32_t>(ShiftAt(field_.frame, x, y));
  }

  const Field& field_;
  const WiggleKernel& kernel_;
  std::vector<CellLine> lines_x_, lines_y_;
  std::vector<std::int32_t> shifts_, starts_;
};

/// A share of the rows that is large enough to be worth fetching, and small enough that no thread ends long
/// after the others.
constexpr std::int32_t kRowsPerShare = 16;
/// A frame with fewer pixels is done before another thread has begun.
constexpr std::int64_t kPixelsWorthAThread = 1 << 16;

int ThreadsFor(const Frame& frame, const WiggleWork& work) {
  const std::int64_t worthwhile = std::int64_t{frame.width} * frame.height / kPixelsWorthAThread;
  const int cores = static_cast<int>(std::thread::hardware_concurrency());
  const int most = work.threads > 0 ? work.threads : std::min(cores, kMostThreads);
  return static_cast<int>(std::clamp<std::int64_t>(worthwhile, 1, std::max(most, 1)));
}

void WiggleRows(const Frame& frame, const ConstPlanes& source, const Planes& target, const WiggleWork& work) {
  const Field field(frame);
  const WiggleKernel& kernel = work.kernel != nullptr ? *work.kernel : KernelHere();
  const int threads = ThreadsFor(frame, work);
  // Made here, as a thread that finds no memory would end the process.
  std::vector<RowWiggler> wigglers(static_cast<std::size_t>(threads), RowWiggler(field, kernel));
  std::atomic<std::size_t> next_wiggler{0};
  std::atomic<std::int32_t> next_row{0};
  OnThreads(threads, [&] {
    RowWiggler& wiggler = wigglers[next_wiggler++];
    for (std::int32_t first; (first = next_row.fetch_add(kRowsPerShare)) < frame.height;)
      for (std::int32_t y = first; y < std::min(first + kRowsPerShare, frame.height); ++y) {
        wiggler.DisplaceRow(y);
        if (!work.displace_only) wiggler.GatherRow(source, RowOf(target, y));
      }
  });
}

bool FastPathFits(const Frame& frame, const PlaneShape& shape) {
  return std::abs(std::int64_t{frame.amount}) <= kLargestFastAmount && shape.Samples() < INT32_MAX;
}

}  // namespace

void WiggleFrameAt(std::int32_t amount, std::int32_t size, const Slices& slices, const ConstPlanes& source,
                   const Planes& target, const WiggleWork& work) {
  const PlaneShape& shape = target.shape;
  if (shape.right < 1 || shape.bottom < 1) return;
  const Frame frame{amount, std::max(size, 1), slices, shape.right, shape.bottom, shape.right + 1};
  if (!FastPathFits(frame, shape)) return WigglePixelByPixel(frame, source, target);
  WiggleRows(frame, source, target, work);
}

void WiggleFrame(std::int32_t amount, std::int32_t size, const ConstPlanes& source, const Planes& target) {
  Slices slices;
  slices.x = NextRandom();
  slices.y = NextRandom();
  WiggleFrameAt(amount, size, slices, source, target);
}

}  // namespace painter
