#include "timeline/velocity_values.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "platform/numbers.h"

namespace timeline {
namespace {

/// Copies the object if others share it, so that it can be written to.
template <typename Shared>
Shared& Owned(std::shared_ptr<Shared>& pointer) {
  if (pointer.use_count() > 1) pointer = std::make_shared<Shared>(*pointer);
  return *pointer;
}

}  // namespace

VelocityTable::VelocityTable(std::int32_t frames) : frames_(frames) {
  if (frames == 0) return;
  // A fresh table is one chunk, shared by all places until they are written to.
  const auto chunk = std::make_shared<Chunk>();
  chunk->fill(kVelocityStart);
  const auto count = static_cast<std::size_t>((static_cast<std::int64_t>(frames) + kChunk - 1) / kChunk);
  chunks_ = std::make_shared<Chunks>();
  for (auto& channel : *chunks_) channel.assign(count, chunk);
}

std::size_t VelocityTable::CheckedChunk(std::int32_t frame, int channel) const {
  if (frame < 0 || frame >= frames_ || channel < 0 || channel >= kChannels)
    throw std::out_of_range("no such frame or channel in the velocity tracks");
  return static_cast<std::size_t>(frame / kChunk);
}

std::uint8_t VelocityTable::At(std::int32_t frame, int channel) const {
  const std::size_t chunk = CheckedChunk(frame, channel);
  return (*(*chunks_)[static_cast<std::size_t>(channel)][chunk])[static_cast<std::size_t>(frame % kChunk)];
}

void VelocityTable::Set(std::int32_t frame, int channel, std::uint8_t value) {
  const std::size_t chunk = CheckedChunk(frame, channel);
  auto& chunks = Owned(chunks_)[static_cast<std::size_t>(channel)];
  Owned(chunks[chunk])[static_cast<std::size_t>(frame % kChunk)] = value;
}

void VelocityTable::Clear(std::int32_t count) {
  if (count >= frames_) {
    *this = VelocityTable(frames_);
    return;
  }
  for (int channel = 0; channel < kChannels; ++channel)
    for (std::int32_t frame = 0; frame < count; ++frame) Set(frame, channel, kVelocityStart);
}

std::optional<FrameSpan> VelocityTable::DifferenceFrom(const VelocityTable& other) const {
  if (chunks_ == other.chunks_ || frames_ != other.frames_) return std::nullopt;
  std::optional<FrameSpan> span;
  const auto add = [&span](std::size_t chunk, std::ptrdiff_t place) {
    const auto frame = static_cast<std::int32_t>(chunk) * kChunk + static_cast<std::int32_t>(place);
    span =
        span ? FrameSpan{std::min(span->first, frame), std::max(span->last, frame)} : FrameSpan{frame, frame};
  };
  for (std::size_t channel = 0; channel < kChannels; ++channel)
    for (std::size_t i = 0; i < (*chunks_)[channel].size(); ++i) {
      const auto& mine = (*chunks_)[channel][i];
      const auto& theirs = (*other.chunks_)[channel][i];
      if (mine == theirs || *mine == *theirs) continue;
      add(i, std::mismatch(mine->begin(), mine->end(), theirs->begin()).first - mine->begin());
      add(i, kChunk - 1 -
                 (std::mismatch(mine->rbegin(), mine->rend(), theirs->rbegin()).first - mine->rbegin()));
    }
  return span;
}

VelocityTracks& Tracks() {
  static VelocityTracks tracks;
  return tracks;
}

void ResetTracks(VelocityTracks& tracks, std::int32_t frames) {
  if (frames <= 0) return;
  tracks.VelocityValues = VelocityTable(frames);
  tracks.UndoHistory.clear();
}

void KeepForUndo(VelocityTracks& tracks) {
  if (tracks.VelocityValues.Frames() > 0) tracks.UndoHistory.push_back(tracks.VelocityValues);
}

bool UndoStroke(VelocityTracks& tracks) {
  if (tracks.UndoHistory.empty()) return false;
  tracks.VelocityValues = std::move(tracks.UndoHistory.back());
  tracks.UndoHistory.pop_back();
  return true;
}

std::int32_t StrokeFrame(float x_pixel, int canvas_pixels, std::int32_t frames) {
  const double frame = static_cast<double>(x_pixel) / canvas_pixels * frames;
  return std::clamp(platform::RoundToLong(frame), 0, frames - 1);
}

std::uint8_t BentValue(const VelocityTracks& tracks, std::int32_t frame, int direction, int canvas_pixels) {
  constexpr int kStep = 2;
  const int value = tracks.VelocityValues.At(frame, tracks.ActiveChannel);
  return static_cast<std::uint8_t>(
      std::clamp(value + direction * kStep, 0, std::max(value, canvas_pixels - 1)));
}

void StrokeAt(VelocityTracks& tracks, std::int32_t frame, std::uint8_t value) {
  VelocityTable& values = tracks.VelocityValues;
  if (values.Frames() > 0) values.Set(std::min(frame, values.Frames() - 1), tracks.ActiveChannel, value);
}

std::uint8_t StrokeValue(float y_pixel) {
  return static_cast<std::uint8_t>(
      platform::RoundToLong(std::clamp(static_cast<double>(y_pixel), 0.0, 255.0)));
}

}  // namespace timeline
