#include "host/standin/animation.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <utility>

#include "platform/large_pages.h"

namespace host {

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
      table.owner ? table : Copied(frame, channel, table.bytes);
}

ByteTable Animation::Copied(int frame, Channel channel, std::span<const std::uint8_t> plane) {
  const auto part = static_cast<std::size_t>(channel);
  if (room_.frame != frame || room_.filled[part]) {
    const std::size_t size = plane.size() * room_.filled.size();
    // Not zeroed first, and in large pages: the operating system's own work would take longer than the copy.
    room_ = {frame, std::shared_ptr<std::uint8_t[]>(new std::uint8_t[size]), {}};
    platform::AskForLargePages(room_.bytes.get(), size);
  }
  room_.filled[part] = true;
  std::uint8_t* const start = room_.bytes.get() + part * plane.size();
  if (!plane.empty()) std::memcpy(start, plane.data(), plane.size());
  return {{start, plane.size()}, room_.bytes};
}

double Animation::HeldBytes() const {
  std::size_t planes = 0;
  for (const Frame& frame : frames_)
    planes += static_cast<std::size_t>(
        std::ranges::count_if(frame, [](const ByteTable& plane) { return plane.owner != nullptr; }));
  return static_cast<double>(planes) * static_cast<double>(size_.PlaneBytes());
}

void Animation::TakeSize(FrameSize size) {
  size_ = size;
  white_ = {};
}

}  // namespace host
