#include "painter/wiggle_kernel.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "painter/wiggle_runs.h"

#define PAINTER_INLINE inline __attribute__((always_inline))

namespace painter {
namespace {

/// Adding and taking away this number rounds to the nearest integer, ties to even, whatever is below 2^22.
constexpr float kRounder = 12582912.0f;

/// Bytes that one step of a run copies, needed or not. A fixed size is a single load and store.
constexpr std::int32_t kStep = 16;

/// Runs jump from row to row, which no processor predicts; but the next rows fetch from nearby places. So
/// each run asks for the memory of these rows beforehand.
constexpr std::int32_t kRowsFetchedAhead = 4;

/// a * b + sum, in one rounding where the processor can.
template <bool kFused>
PAINTER_INLINE float MultiplyAdd(float a, float b, float sum) {
  if constexpr (kFused) return __builtin_fmaf(a, b, sum);
  return a * b + sum;
}

template <bool kFused>
PAINTER_INLINE float Along(const CellLine& line, float fraction, float fade) {
  const float near = MultiplyAdd<kFused>(line.near_slope, fraction, line.near);
  const float far = MultiplyAdd<kFused>(line.far_slope, fraction, line.far);
  return MultiplyAdd<kFused>(fade, far, near);
}

/// Where a displaced place lies, as a shift from the sample (x, 0), with the place held to the bounds.
struct WholeShift {
  explicit WholeShift(const RowBounds& row) : bounds(row) {}
  PAINTER_INLINE std::int32_t operator()(float move_x, float move_y, std::int32_t x) const {
    const std::int32_t from_x = std::clamp(static_cast<std::int32_t>(move_x) + x, 0, bounds.right);
    const std::int32_t from_y = std::clamp(static_cast<std::int32_t>(move_y) + bounds.y, 0, bounds.bottom);
    return from_y * bounds.columns + from_x - x;
  }
  RowBounds bounds;
};

/// Written so that the compiler makes two instructions of it, which it doesn't of std::clamp.
PAINTER_INLINE float Clamped(float place, float bottom, float top) {
  const float low = place > bottom ? place : bottom;
  return low < top ? low : top;
}

/// Single precision holds whole numbers up to this.
constexpr std::int64_t kExactInFloat = 1 << 24;

/// The same for planes with no more samples than that. The oldest processors have neither a multiplication
/// nor a lesser of two for whole numbers.
struct FloatShift {
  explicit FloatShift(const RowBounds& row)
      : zero(row.y < 0 ? -1.0f : 0.0f),
        right(static_cast<float>(row.right)),
        bottom(static_cast<float>(row.bottom)),
        columns(static_cast<float>(row.columns)),
        y(static_cast<float>(row.y)) {}
  PAINTER_INLINE std::int32_t operator()(float move_x, float move_y, std::int32_t x) const {
    const auto across = static_cast<float>(x);
    const float from_x = Clamped(move_x + across, zero, right), from_y = Clamped(move_y + y, zero, bottom);
    return static_cast<std::int32_t>(from_y * columns + (from_x - across));
  }
  /// Always zero, since no row is above 0. A bound that the compiler sees to be zero it takes by a comparison
  /// and a mask, which is slower than the greater of two.
  float zero;
  float right, bottom, columns, y;
};

template <bool kFused, typename Shift>
PAINTER_INLINE bool DisplaceBy(const Shift shift_of, const ColumnTable& table, const CellSpan& span,
                               float doubt, std::int32_t* shifts) {
  const CellLine line_x = span.x, line_y = span.y;
  const float trusted = 0.5f - doubt;
  bool any_in_doubt = false;
  for (std::int32_t first = span.first; first < span.end; first += kBlock) {
    const float* fraction = table.fraction.data() + first;
    const float* fade = table.fade.data() + first;
    std::int32_t* out = shifts + first;
    std::int32_t doubtful[kBlock], any = 0;
    for (std::int32_t i = 0; i < kBlock; ++i) {
      const float move_x = Along<kFused>(line_x, fraction[i], fade[i]);
      const float move_y = Along<kFused>(line_y, fraction[i], fade[i]);
      const float whole_x = (move_x + kRounder) - kRounder;
      const float whole_y = (move_y + kRounder) - kRounder;
      out[i] = shift_of(whole_x, whole_y, first + i);
      doubtful[i] = -static_cast<std::int32_t>(
          std::max(std::fabs(move_x - whole_x), std::fabs(move_y - whole_y)) > trusted);
      any |= doubtful[i];
    }
    // Few blocks have a doubtful pixel, so marking them apart costs less than a choice for each pixel.
    if (any == 0) continue;
    any_in_doubt = true;
    for (std::int32_t i = 0; i < kBlock; ++i)
      if (doubtful[i] != 0) out[i] = kInDoubt;
  }
  return any_in_doubt;
}

template <bool kFused>
PAINTER_INLINE bool Displace(const ColumnTable& table, const CellSpan& span, const RowBounds& bounds,
                             float doubt, std::int32_t* shifts) {
  if constexpr (!kFused)
    if ((std::int64_t{bounds.bottom} + 1) * bounds.columns <= kExactInFloat)
      return DisplaceBy<kFused>(FloatShift(bounds), table, span, doubt, shifts);
  return DisplaceBy<kFused>(WholeShift(bounds), table, span, doubt, shifts);
}

PAINTER_INLINE void CopyRun(const ConstPlanes& source, const Planes& row, std::int32_t from, std::int32_t x,
                            std::size_t length) {
  std::memcpy(row.red + x, source.red + from, length);
  std::memcpy(row.green + x, source.green + from, length);
  std::memcpy(row.blue + x, source.blue + from, length);
}

PAINTER_INLINE void FetchAhead(const ConstPlanes& source, std::size_t place) {
  __builtin_prefetch(source.red + place);
  __builtin_prefetch(source.green + place);
  __builtin_prefetch(source.blue + place);
}

PAINTER_INLINE void CopyRuns(const std::int32_t* shifts, std::int32_t width, const ConstPlanes& source,
                             const Planes& row, const std::int32_t* starts, std::int32_t count) {
  const std::size_t ahead = source.shape.Columns() * kRowsFetchedAhead, last = source.shape.Samples() - 1;
  for (std::int32_t run = 0; run < count; ++run) {
    const std::int32_t shift = shifts[starts[run]], end = starts[run + 1];
    std::int32_t x = starts[run];
    FetchAhead(source, std::min(static_cast<std::size_t>(x + shift) + ahead, last));
    // What a step copies beyond its run is overwritten by the runs that follow; only at the row's end would
    // it spoil the last column.
    for (; x < end && x + kStep <= width; x += kStep) CopyRun(source, row, x + shift, x, kStep);
    if (x < end) CopyRun(source, row, x + shift, x, static_cast<std::size_t>(end - x));
  }
}

// The loops above, compiled once for each family of processors. An attribute takes no parentheses around it.
// NOLINTBEGIN(bugprone-macro-parentheses)
#define PAINTER_KERNEL(name, fused, target)                                                           \
  target bool Displace##name(const ColumnTable& table, const CellSpan& span, const RowBounds& bounds, \
                             float doubt, std::int32_t* shifts) {                                     \
    return Displace<fused>(table, span, bounds, doubt, shifts);                                       \
  }                                                                                                   \
  target void Gather##name(const std::int32_t* shifts, std::int32_t width, const ConstPlanes& source, \
                           const Planes& row, std::int32_t* starts) {                                 \
    CopyRuns(shifts, width, source, row, starts, FindRuns##name(shifts, width, starts));              \
  }                                                                                                   \
  constexpr WiggleKernel k##name{Displace##name, Gather##name};
// NOLINTEND(bugprone-macro-parentheses)

PAINTER_KERNEL(Plain, false, )
#if defined(__x86_64__)
PAINTER_KERNEL(Avx2, true, PAINTER_FOR_AVX2)
PAINTER_KERNEL(Avx512, true, PAINTER_FOR_AVX512)
#endif

}  // namespace

std::size_t KernelsThatRun(const WiggleKernel** kernels, std::size_t room) {
  const WiggleKernel* found[3] = {&kPlain};
  std::size_t count = 1;
#if defined(__x86_64__)
  const bool avx2 =
      __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") && __builtin_cpu_supports("bmi2");
  if (avx2) found[count++] = &kAvx2;
  if (avx2 && __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512bw") &&
      __builtin_cpu_supports("avx512dq"))
    found[count++] = &kAvx512;
#endif
  count = std::min(count, room);
  std::copy_n(found, count, kernels);
  return count;
}

const WiggleKernel& KernelHere() {
  static const WiggleKernel* const best = [] {
    const WiggleKernel* kernels[3];
    return kernels[KernelsThatRun(kernels, 3) - 1];
  }();
  return *best;
}

}  // namespace painter
