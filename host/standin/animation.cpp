#include "host/standin/animation.h"

#include <cassert>
#include <cstring>
#include <utility>

namespace host {

ByteTable CopyTable(std::span<const std::uint8_t> bytes) {
  // Not zeroed first: a plane of a large frame is written just once.
  std::shared_ptr<std::uint8_t[]> copy(new std::uint8_t[bytes.size()]);
  if (!bytes.empty()) std::memcpy(copy.get(), bytes.data(), bytes.size());
  return {{copy.get(), bytes.size()}, copy};
}

ByteTable OwnTable(std::vector<std::uint8_t> bytes) {
  auto owner = std::make_shared<const std::vector<std::uint8_t>>(std::move(bytes));
  return {*owner, owner};
}

Animation::Animation(FrameSize size, int frame_count, DrawFrame draw)
    : size_(size), draw_(std::move(draw)), frames_(static_cast<std::size_t>(frame_count)) {}

ByteTable Animation::Plane(int frame, Channel channel) const {
  Frame& planes = frames_[static_cast<std::size_t>(frame)];
  const ByteTable& plane = planes[static_cast<std::size_t>(channel)];
  if (!plane.owner && draw_) {
    Frame drawn = draw_(frame);
    for (std::size_t part = 0; part < drawn.size(); ++part)
      if (!planes[part].owner) planes[part] = std::move(drawn[part]);
  }
  if (plane.owner) return plane;
  if (!white_.owner) white_ = OwnTable(std::vector<std::uint8_t>(size_.PlaneBytes(), 255));
  return white_;
}

void Animation::SetPlane(int frame, Channel channel, const ByteTable& table) {
  assert(table.bytes.size() == size_.PlaneBytes());
  frames_[static_cast<std::size_t>(frame)][static_cast<std::size_t>(channel)] =
      table.owner ? table : CopyTable(table.bytes);
}

void Animation::TakeSize(FrameSize size) {
  size_ = size;
  white_ = {};
  draw_ = {};
}

}  // namespace host
