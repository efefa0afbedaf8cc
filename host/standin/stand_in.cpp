#include "host/standin/stand_in.h"

#include <algorithm>
#include <cmath>

#include "platform/memory.h"
#include "platform/numbers.h"

namespace host {

StandIn::StandIn(Animation animation) : animation_(std::move(animation)) {}

void StandIn::TakeAnimation(Animation animation) {
  animation_ = std::move(animation);
  current_frame_ = buffer_frame_ = 0;
  size_open_ = unsaved_ = false;
  counts_ = {};
  Tell(&StandInView::AnimationChanged);
}

void StandIn::KeepForm(FormObject& form) {
  if (std::ranges::find(forms_, &form) == forms_.end()) forms_.push_back(&form);
}

void StandIn::DropForm(const FormObject& form) { std::erase(forms_, &form); }

void StandIn::SendFormObject(FormObject& form) {
  KeepForm(form);
  form.ShowForm();
  if (view_ != nullptr) view_->FormSent(form);
}

void StandIn::SetFrameRate(double frames_per_second) {
  if (!std::isfinite(frames_per_second) || frames_per_second <= 0) return;
  rate_ = platform::NumberText(frames_per_second);
  Tell(&StandInView::RateChanged);
}

void StandIn::RememberSize() {
  const FrameSize size = animation_.Size();
  std::erase(read_sizes_, size);
  read_sizes_.insert(read_sizes_.begin(), size);
}

std::int32_t StandIn::BufferWidth() {
  RememberSize();
  return animation_.Size().width;
}

std::int32_t StandIn::BufferHeight() {
  RememberSize();
  return animation_.Size().height;
}

int StandIn::NearestFrame(std::int32_t frame) const {
  return std::clamp(frame, 0, std::max(animation_.FrameCount() - 1, 0));
}

void StandIn::GotoFrame(std::int32_t frame) {
  const int nearest = NearestFrame(frame);
  if (nearest == current_frame_) return Tell(&StandInView::FrameKept);
  current_frame_ = nearest;
  Tell(&StandInView::FrameMoved);
}

void StandIn::GotoFrameAdv(std::int32_t frame) {
  GotoFrame(frame);
  buffer_frame_ = current_frame_;
}

ByteTable StandIn::GetBuffer(Channel channel, std::string_view member) {
  if (animation_.FrameCount() == 0) throw HostError(member, "there are no frames");
  if (std::exchange(counted_read_, buffer_frame_) != buffer_frame_) ++counts_.read;
  return animation_.Plane(buffer_frame_, channel);
}

/// White frames take no memory, but a tool that creates frames goes on to write them all.
void StandIn::RequireMemory(std::string_view member, FrameSize size, std::int32_t frames) const {
  const double needed = 3.0 * static_cast<double>(size.PlaneBytes()) * frames;
  if (needed > memory_for_frames_)
    throw HostError(member, "there is not enough memory for " + std::to_string(frames) + " frames. " +
                                platform::MemoryFigures(needed));
}

void StandIn::FitSize(std::size_t byte_count, std::string_view member) {
  if (byte_count == animation_.Size().PlaneBytes() && !size_open_) return;
  const auto size =
      size_open_ ? SizeFromPlaneBytes(byte_count, read_sizes_, animation_.Size()) : std::nullopt;
  if (!size)
    throw HostError(member, "a table of " + std::to_string(byte_count) + " bytes doesn't fit frames of " +
                                std::to_string(animation_.Size().width) + " by " +
                                std::to_string(animation_.Size().height));
  RequireMemory(member, *size, animation_.FrameCount());
  size_open_ = false;
  if (*size == animation_.Size()) return;
  animation_.TakeSize(*size);
  Tell(&StandInView::AnimationChanged);
}

/// What of shared memory is the plane, which memory of a tool's may be longer than.
ByteTable StandIn::PlaneIn(const ByteTable& memory) const {
  const auto fits = [&](const FrameSize& size) { return size.PlaneBytes() == memory.bytes.size(); };
  const bool new_size = size_open_ && std::ranges::any_of(read_sizes_, fits);
  const std::size_t plane = animation_.Size().PlaneBytes();
  if (new_size || memory.bytes.size() <= plane) return {memory.bytes, nullptr};
  return {memory.bytes.first(plane), nullptr};
}

void StandIn::SetBuffer(Channel channel, const ByteTable& given, std::string_view member) {
  if (animation_.FrameCount() == 0) throw HostError(member, "there are no frames");
  const ByteTable table = given.shared ? PlaneIn(given) : given;
  FitSize(table.bytes.size(), member);
  animation_.SetPlane(buffer_frame_, channel, table);
  unsaved_ = true;
  if (std::exchange(counted_write_, buffer_frame_) != buffer_frame_) ++counts_.written;
  if (buffer_frame_ == current_frame_) Tell(&StandInView::FramePainted);
}

void StandIn::CreateAnimAdv(std::int32_t frame_count) {
  if (frame_count < 1 || frame_count > kMaximumFrames)
    throw HostError("vel_CreateAnimAdv",
                    "an animation can't have " + std::to_string(frame_count) + " frames");
  memory_for_frames_ = platform::FreeMemoryBytes() + animation_.HeldBytes();
  // The first plane may yet give it the size of frames that were read before.
  FrameSize smallest = animation_.Size();
  for (const FrameSize& read : read_sizes_)
    if (read.PlaneBytes() < smallest.PlaneBytes()) smallest = read;
  RequireMemory("vel_CreateAnimAdv", smallest, frame_count);
  TakeAnimation(Animation(animation_.Size(), frame_count));
  size_open_ = true;
}

void StandIn::StatusOpen(std::string text) {
  status_ = StatusDisplay{std::move(text), 0};
  counts_ = {};
  counted_read_ = counted_write_ = -1;
  Tell(&StandInView::StatusChanged);
}

void StandIn::StatusPercent(double percent) {
  if (!status_ || !std::isfinite(percent)) return;
  status_->percent = std::clamp(percent, 0.0, 100.0);
  Tell(&StandInView::StatusChanged);
}

void StandIn::StatusClose() {
  status_.reset();
  Tell(&StandInView::StatusChanged);
}

}  // namespace host
