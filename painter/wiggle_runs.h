// Where the runs of a displaced row begin: the pixels that are fetched from neighbours of each other.
#pragma once

#include <cstdint>

// Which processors a copy of the inner loops is for. An attribute takes no parentheses around it.
#define PAINTER_FOR_AVX2 __attribute__((target("avx2,fma,bmi,bmi2,popcnt")))
#define PAINTER_FOR_AVX512 \
  __attribute__((target("avx512f,avx512bw,avx512dq,avx512vl,avx2,fma,bmi,bmi2,popcnt")))

namespace painter {

/// Lists the first pixel of each run of equal shifts among those of a row (width at least 1), then the end of
/// the row. Returns the count of runs. `starts` is room for width + 8 entries. All copies give the same.
std::int32_t FindRunsPlain(const std::int32_t* shifts, std::int32_t width, std::int32_t* starts);
#if defined(__x86_64__)
PAINTER_FOR_AVX2 std::int32_t FindRunsAvx2(const std::int32_t* shifts, std::int32_t width,
                                           std::int32_t* starts);
PAINTER_FOR_AVX512 std::int32_t FindRunsAvx512(const std::int32_t* shifts, std::int32_t width,
                                               std::int32_t* starts);
#endif

}  // namespace painter
