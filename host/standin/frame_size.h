// The size of a frame, and how it is found from nothing but the length of a plane.
#pragma once

#include <cstddef>
#include <optional>
#include <span>

namespace host {

/// Width and height in pixels; the planes have one column and one row more.
struct FrameSize {
  int width = 0, height = 0;

  constexpr std::size_t PlaneBytes() const {
    return (static_cast<std::size_t>(width) + 1) * (static_cast<std::size_t>(height) + 1);
  }
  friend bool operator==(const FrameSize&, const FrameSize&) = default;
};

/// The longest side of a frame in pixels.
inline constexpr int kMaximumSide = 32767;

/// The size whose planes have `byte_count` bytes. A plane doesn't carry its shape, so the first of the
/// `known` sizes that fits is taken; if none does, the size that comes nearest to the proportions of
/// `similar`. Nothing if no frame of a usable shape (at most 16 times as long as wide) has such planes.
std::optional<FrameSize> SizeFromPlaneBytes(std::size_t byte_count, std::span<const FrameSize> known,
                                            FrameSize similar);

}  // namespace host
