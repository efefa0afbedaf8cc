// The frames that the stand-in for a host holds.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "host/standin/frame_size.h"
#include "host/variant.h"

namespace host {

enum class Channel { Red, Green, Blue };

/// As many frames as an animation may have: a day at 12 frames a second.
inline constexpr int kMaximumFrames = 1'036'800;

/// Frames of three separate planes each, x fastest, (width + 1) by (height + 1) bytes.
///
/// A frame that was never written is white and costs no memory, or is drawn when it is first asked for.
/// Planes are never changed once they stand, only exchanged: a plane that was handed out keeps its bytes
/// whatever is written later.
class Animation {
 public:
  using Frame = std::array<ByteTable, 3>;
  /// Gives the three planes of a frame, each with an owner and of the animation's size.
  using DrawFrame = std::function<Frame(int frame)>;

  Animation() = default;
  /// `frame_count` frames, from 0 to kMaximumFrames: white, or what `draw` gives.
  Animation(FrameSize size, int frame_count, DrawFrame draw = {});

  FrameSize Size() const { return size_; }
  int FrameCount() const { return static_cast<int>(frames_.size()); }

  /// The plane of a frame from 0 to FrameCount() - 1, without copying it.
  ByteTable Plane(int frame, Channel channel) const;

  /// Exchanges a plane of a frame from 0 to FrameCount() - 1. The table must have Size().PlaneBytes() bytes.
  /// A table with an owner is kept as it is, one that is only lent is copied.
  void SetPlane(int frame, Channel channel, const ByteTable& table);

  /// The memory that the planes take which stand.
  double HeldBytes() const;

  /// Gives a white animation, of which no plane is written yet, another size.
  void TakeSize(FrameSize size);

 private:
  /// Where the copies of a frame's planes go, one piece for all three. Only what no table shows yet is
  /// written.
  struct Room {
    int frame = -1;
    std::shared_ptr<std::uint8_t[]> bytes;
    std::array<bool, 3> filled{};
  };
  ByteTable Copied(int frame, Channel channel, std::span<const std::uint8_t> plane);

  FrameSize size_;
  DrawFrame draw_;
  /// A plane that stands has an owner.
  mutable std::vector<Frame> frames_;
  Room room_;
  /// The one plane that all white channels share, made when the first of them is asked for.
  mutable ByteTable white_;
};

/// A table that owns the bytes of a vector.
ByteTable OwnTable(std::vector<std::uint8_t> bytes);

}  // namespace host
