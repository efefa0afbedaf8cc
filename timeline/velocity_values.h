// The velocity tracks' values: one byte for each frame and channel.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace timeline {

inline constexpr int kChannels = 4;
/// Where all tracks start: the canvas's middle line.
inline constexpr std::uint8_t kVelocityStart = 32;

/// A run of frames, both ends included.
struct FrameSpan {
  std::int32_t first, last;
  friend bool operator==(const FrameSpan&, const FrameSpan&) = default;
};

/// Frames 0 to Frames() - 1 by channels 0 to 3. A value is a y in pixels from the canvas's top; those of 64
/// and more lie below it. Copies share what neither has changed since, so that a whole copy for each stroke,
/// or for each repaint, costs next to nothing.
class VelocityTable {
 public:
  /// No frames.
  VelocityTable() = default;
  /// All values kVelocityStart. frames 0 or above.
  explicit VelocityTable(std::int32_t frames);

  std::int32_t Frames() const { return frames_; }
  /// Throws std::out_of_range for a frame or channel outside the table, as Set does.
  std::uint8_t At(std::int32_t frame, int channel) const;
  void Set(std::int32_t frame, int channel, std::uint8_t value);
  /// Back to kVelocityStart: frames 0 to count - 1 of all channels, as far as the table goes.
  void Clear(std::int32_t count);

  /// The span from the first to the last frame in which two tables of one size differ in any channel.
  std::optional<FrameSpan> DifferenceFrom(const VelocityTable& other) const;

 private:
  static constexpr std::int32_t kChunk = 1024;
  using Chunk = std::array<std::uint8_t, kChunk>;
  using Chunks = std::array<std::vector<std::shared_ptr<Chunk>>, kChannels>;

  std::size_t CheckedChunk(std::int32_t frame, int channel) const;

  std::int32_t frames_ = 0;
  std::shared_ptr<Chunks> chunks_;
};

/// The tracks of the sheet.
struct VelocityTracks {
  VelocityTable VelocityValues;
  /// Whole copies, oldest first, one for each stroke.
  std::vector<VelocityTable> UndoHistory;
  /// The channel that the mouse writes to, 0 to 3.
  std::int32_t ActiveChannel = 0;
};

/// The process's one set of tracks.
VelocityTracks& Tracks();

/// New tracks at their start value, the undo states gone. Without frames all stays as it is.
void ResetTracks(VelocityTracks& tracks, std::int32_t frames);
/// A copy of all values, for the stroke that begins. Nothing to go back to without frames.
void KeepForUndo(VelocityTracks& tracks);
/// Takes back the last stroke; false if there is none.
bool UndoStroke(VelocityTracks& tracks);

/// The frame under the pointer on the velocity canvas, limited to the frames that there are. frames above 0.
std::int32_t StrokeFrame(float x_pixel, int canvas_pixels, std::int32_t frames);
/// Writes a value of the active channel; a frame past the table's last writes the last one.
void StrokeAt(VelocityTracks& tracks, std::int32_t frame, std::uint8_t value);
/// The active channel's value at a frame of the table, one key's step above it (-1) or below it (1): within
/// the canvas, but for a value that lies below that already, which only goes up.
std::uint8_t BentValue(const VelocityTracks& tracks, std::int32_t frame, int direction, int canvas_pixels);
/// The value under the pointer, 0 to 255.
std::uint8_t StrokeValue(float y_pixel);

}  // namespace timeline
