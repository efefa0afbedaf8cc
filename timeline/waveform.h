// The waveform canvas: the sound as one line, the frame ticks, the box of the current frame.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "audio/sample_store.h"
#include "platform/pixels.h"

namespace timeline {

/// All that the picture depends on, taken down at one moment. The sound's samples are shared, not copied.
struct WaveScene {
  int width = 0, height = 0;
  platform::Color ground = 0, wave = 0;
  audio::SampleStore sound;
  /// Rate x seconds, to the nearest.
  std::int32_t frames = 0;
  /// -1 on the header row.
  std::int32_t current_frame = -1;
};

/// Where each pixel column of the wave's line begins and ends, both included: just the pixels of one line
/// from (0, 32) to column 0's sample and on from column to column, though it is never drawn as lines.
struct ColumnSpan {
  int top, bottom;
};
/// One for each of the screen's columns, `scale` of them to a pixel of the canvas; none at a depth other than
/// 8 or 16 bits.
std::vector<ColumnSpan> WaveColumns(const audio::SampleStore& sound, int canvas_pixels, double scale = 1);

/// The current frame's box: one frame wide, at least one column so that it can be found at every zoom; its
/// right edge belongs to the next frame. Empty on the header row and without frames.
platform::PixelBox CurrentFrameBox(const WaveScene& scene, double scale = 1);

/// Draws the whole picture.
void DrawWave(const platform::PixelView& canvas, const WaveScene& scene);

/// Keeps a canvas at the scene captured last. What is drawn is what DrawWave leaves; a current frame that
/// moved costs two boxes turned back and forth, since the inverse of an inverse is the picture below.
class WavePicture {
 public:
  void Capture(WaveScene scene) { scene_ = std::move(scene); }
  const WaveScene& Scene() const { return scene_; }
  /// The canvas no longer holds what was drawn on it.
  void ForgetDrawn() { drawn_valid_ = false; }
  /// Brings the canvas up to date and tells what has changed.
  std::vector<platform::PixelBox> DrawOn(const platform::PixelView& canvas);

 private:
  WaveScene scene_, drawn_;
  double drawn_scale_ = 1;
  bool drawn_valid_ = false;
};

}  // namespace timeline
