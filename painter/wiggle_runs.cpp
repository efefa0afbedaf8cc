#include "painter/wiggle_runs.h"

#include <array>
#include <bit>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace painter {
namespace {

/// Lists the runs that begin from pixel x on, one by one, and ends the list.
inline std::int32_t FindTheRest(const std::int32_t* shifts, std::int32_t x, std::int32_t width,
                                std::int32_t* starts, std::int32_t count) {
  for (; x < width; ++x)
    if (shifts[x] != shifts[x - 1]) starts[count++] = x;
  starts[count] = width;
  return count;
}

#if defined(__x86_64__)

/// Four lanes of all ones where the run goes on.
inline __m128i GoesOn(const std::int32_t* here) {
  const auto at = [](const std::int32_t* from) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
  };
  return _mm_cmpeq_epi32(at(here), at(here - 1));
}

/// Bit i says whether a run begins at pixel i from here, of sixteen.
inline std::uint64_t BreaksAt(const std::int32_t* here) {
  const __m128i low = _mm_packs_epi32(GoesOn(here), GoesOn(here + 4));
  const __m128i high = _mm_packs_epi32(GoesOn(here + 8), GoesOn(here + 12));
  return ~static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_packs_epi16(low, high))) & 0xffffu;
}

/// For each set of eight lanes: the numbers of its lanes, lowest first, then anything.
constexpr auto kLanesOf = [] {
  std::array<std::array<std::int32_t, 8>, 256> lanes{};
  for (unsigned set = 0; set < lanes.size(); ++set) {
    std::size_t count = 0;
    for (int lane = 0; lane < 8; ++lane)
      if (set >> lane & 1) lanes[set][count++] = lane;
  }
  return lanes;
}();

#endif

}  // namespace

std::int32_t FindRunsPlain(const std::int32_t* shifts, std::int32_t width, std::int32_t* starts) {
  starts[0] = 0;
  std::int32_t count = 1, x = 1;
#if defined(__x86_64__)
  for (; x + 64 <= width; x += 64) {
    const std::int32_t* here = shifts + x;
    std::uint64_t bits =
        BreaksAt(here) | BreaksAt(here + 16) << 16 | BreaksAt(here + 32) << 32 | BreaksAt(here + 48) << 48;
    for (; bits != 0; bits &= bits - 1) starts[count++] = x + std::countr_zero(bits);
  }
#endif
  return FindTheRest(shifts, x, width, starts, count);
}

#if defined(__x86_64__)

// A step writes a whole vector of starts, of which only the first ones count. There are never more runs than
// pixels before the step, so it doesn't write past the row's own width.

std::int32_t FindRunsAvx2(const std::int32_t* shifts, std::int32_t width, std::int32_t* starts) {
  starts[0] = 0;
  std::int32_t count = 1, x = 1;
  for (; x + 8 <= width; x += 8) {
    const __m256i here = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(shifts + x));
    const __m256i before = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(shifts + x - 1));
    const __m256i goes_on = _mm256_cmpeq_epi32(here, before);
    const auto breaks = ~static_cast<unsigned>(_mm256_movemask_ps(_mm256_castsi256_ps(goes_on))) & 0xffu;
    const __m256i lanes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(kLanesOf[breaks].data()));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(starts + count),
                        _mm256_add_epi32(lanes, _mm256_set1_epi32(x)));
    count += std::popcount(breaks);
  }
  return FindTheRest(shifts, x, width, starts, count);
}

std::int32_t FindRunsAvx512(const std::int32_t* shifts, std::int32_t width, std::int32_t* starts) {
  starts[0] = 0;
  std::int32_t count = 1, x = 1;
  __m512i places = _mm512_setr_epi32(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
  for (; x + 16 <= width; x += 16) {
    const auto breaks =
        _mm512_cmpneq_epi32_mask(_mm512_loadu_si512(shifts + x), _mm512_loadu_si512(shifts + x - 1));
    _mm512_storeu_si512(starts + count, _mm512_maskz_compress_epi32(breaks, places));
    count += std::popcount(static_cast<unsigned>(breaks));
    places = _mm512_add_epi32(places, _mm512_set1_epi32(16));
  }
  return FindTheRest(shifts, x, width, starts, count);
}

#endif

}  // namespace painter
