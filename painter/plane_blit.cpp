#include "painter/plane_blit.h"

#include <cstddef>
#include <vector>

namespace painter {
namespace {

std::uint32_t Packed(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
  return 0xff000000u | std::uint32_t{red} << 16 | std::uint32_t{green} << 8 | blue;
}

/// The source sample, per pixel of the target, along one axis. A source one sample longer than the target
/// falls on it sample by sample; its last one is not seen.
std::vector<std::int32_t> NearestSamples(std::int32_t source, std::int32_t target) {
  std::vector<std::int32_t> samples(static_cast<std::size_t>(target));
  for (std::int32_t i = 0; i < target; ++i)
    samples[static_cast<std::size_t>(i)] = static_cast<std::int32_t>(std::int64_t{i} * source / target);
  return samples;
}

bool OneToOne(std::int32_t source, std::int32_t target) { return source == target || source == target + 1; }

}  // namespace

void g_scale_to_dib(const std::uint8_t* red, const std::uint8_t* green, const std::uint8_t* blue,
                    std::uint32_t* pixels, std::int32_t source_width, std::int32_t source_height,
                    std::int32_t target_width, std::int32_t target_height, std::int32_t row_pixels) {
  if (source_width < 1 || source_height < 1 || target_width < 1 || target_height < 1) return;
  const auto width = static_cast<std::size_t>(target_width);
  const bool straight = OneToOne(source_width, target_width);
  const auto columns = straight ? std::vector<std::int32_t>{} : NearestSamples(source_width, target_width);
  const auto rows = NearestSamples(source_height, target_height);
  for (std::size_t y = 0; y < rows.size(); ++y) {
    const std::size_t start = static_cast<std::size_t>(rows[y]) * static_cast<std::size_t>(source_width);
    const std::uint8_t *r = red + start, *g = green + start, *b = blue + start;
    std::uint32_t* out = pixels + y * static_cast<std::size_t>(row_pixels);
    if (straight) {
      for (std::size_t x = 0; x < width; ++x) out[x] = Packed(r[x], g[x], b[x]);
    } else {
      for (std::size_t x = 0; x < width; ++x) out[x] = Packed(r[columns[x]], g[columns[x]], b[columns[x]]);
    }
  }
}

}  // namespace painter
