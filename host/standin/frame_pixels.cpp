#include "host/standin/frame_pixels.h"

namespace host {
namespace {

/// For each target column or row the source one at its middle.
std::vector<std::size_t> NearestSources(int target_count, int source_count) {
  std::vector<std::size_t> sources(static_cast<std::size_t>(target_count));
  for (std::size_t i = 0; i < sources.size(); ++i)
    sources[i] = (2 * i + 1) * static_cast<std::size_t>(source_count) / (2 * sources.size());
  return sources;
}

}  // namespace

PixelBlock SampleFramePixels(const Animation& animation, int frame, int width, int height) {
  const FrameSize size = animation.Size();
  const ByteTable red = animation.Plane(frame, Channel::Red), green = animation.Plane(frame, Channel::Green),
                  blue = animation.Plane(frame, Channel::Blue);
  const auto columns = NearestSources(width, size.width), rows = NearestSources(height, size.height);
  PixelBlock block{width, height, {}};
  block.pixels.reserve(columns.size() * rows.size());
  for (const std::size_t row : rows) {
    const std::size_t start = row * (static_cast<std::size_t>(size.width) + 1);
    for (const std::size_t column : columns) {
      const std::size_t at = start + column;
      block.pixels.push_back(0xFF000000u | static_cast<std::uint32_t>(red.bytes[at]) << 16 |
                             static_cast<std::uint32_t>(green.bytes[at]) << 8 | blue.bytes[at]);
    }
  }
  return block;
}

PixelBlock FramePixels(const Animation& animation, int frame) {
  return SampleFramePixels(animation, frame, animation.Size().width, animation.Size().height);
}

}  // namespace host
