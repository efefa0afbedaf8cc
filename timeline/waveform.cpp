#include "timeline/waveform.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <optional>

#include "platform/numbers.h"
#include "timeline/highlight_box.h"
#include "timeline/mappings.h"

namespace timeline {
namespace {

using platform::PixelBox;
using platform::PixelView;
using platform::RoundToLong;

constexpr platform::Color kTicks = platform::Rgb(32, 64, 128);
constexpr int kTickPixels = 6;
/// Where the line starts: the zero line of a canvas of the design's height, whatever its real one.
constexpr int kZeroLine = 32;
/// Almost 180 degrees: the ground is darkest at the top and almost as dark at the bottom.
constexpr int kGroundDegrees = 179;

std::optional<float> StrideOf(const audio::SampleStore& sound, int canvas_pixels) {
  const double bytes = sound.WaveDataLength;
  if (canvas_pixels <= 0) return std::nullopt;
  if (sound.WaveFormat.wBitsPerSample == 8) return SampleStride(bytes, canvas_pixels);
  if (sound.WaveFormat.wBitsPerSample == 16) return SampleStride(bytes / 2, canvas_pixels);
  return std::nullopt;
}

/// The line's y in one of the screen's columns, to the nearest of its pixels. 16-bit samples are drawn at
/// twice the height of 8-bit ones of the same loudness. The stride's rounding must not lead past the last
/// sample.
int WaveY(const audio::SampleStore& sound, int column, float stride, double scale) {
  const std::int64_t index = SampleAtPixel(column, stride);
  if (sound.WaveFormat.wBitsPerSample == 8) {
    const auto& samples = sound.Samples8;
    return RoundToLong(samples.At(std::min<std::int64_t>(index, samples.LastIndex())) / 4.0 * scale);
  }
  const auto& samples = sound.Samples16;
  const double y = samples.At(std::min<std::int64_t>(index, samples.LastIndex())) / 512.0 + kZeroLine;
  return RoundToLong(y * scale);
}

void Widen(ColumnSpan& span, int y) {
  span.top = std::min(span.top, y);
  span.bottom = std::max(span.bottom, y);
}

/// The part of a line to the next column's y that lies in this column, and the first pixel of it in the next.
/// A steep line changes columns behind the middle of its height; a flat one has a pixel in each.
struct Crossing {
  int last_here, first_there;
};
Crossing CrossingOf(int from_y, int to_y) {
  const int height = std::abs(to_y - from_y), sign = to_y < from_y ? -1 : 1;
  if (height <= 1) return {from_y, to_y};
  return {from_y + sign * (height / 2), from_y + sign * (height / 2 + 1)};
}

/// Fills the columns' spans, a strip of columns at a time and in it row by row: column by column, each pixel
/// would cost a cache line.
void FillSpans(const PixelView& view, const std::vector<ColumnSpan>& spans, platform::Color color) {
  constexpr int kStrip = 256;
  const platform::Pixel pixel = platform::PixelFrom(color);
  const int below = view.Pen() - 1;
  const int end = std::min(view.clip.right, static_cast<int>(spans.size()));
  for (int left = view.clip.left; left < end; left += kStrip) {
    const int right = std::min(left + kStrip, end);
    ColumnSpan reach{view.clip.bottom, view.clip.top};
    for (int x = left; x < right; ++x) {
      Widen(reach, spans[static_cast<std::size_t>(x)].top);
      Widen(reach, spans[static_cast<std::size_t>(x)].bottom);
    }
    reach = {std::max(reach.top, view.clip.top), std::min(reach.bottom + below, view.clip.bottom - 1)};
    for (int y = reach.top; y <= reach.bottom; ++y) {
      platform::Pixel* row = view.Row(y);
      for (int x = left; x < right; ++x) {
        const ColumnSpan span = spans[static_cast<std::size_t>(x)];
        row[x] = y >= span.top && y <= span.bottom + below ? pixel : row[x];
      }
    }
  }
}

void DrawTicks(const PixelView& view, const WaveScene& scene) {
  const float frame_pixels = PixelsPerFrame(scene.width, scene.frames);
  const int pen = view.Pen();
  std::int32_t last_x = -1;
  for (std::int64_t i = 0; i <= scene.frames; ++i) {
    const std::int32_t x = view.At(PixelOfFrame(static_cast<std::int32_t>(i), frame_pixels));
    if (x == last_x) continue;
    last_x = x;
    const int top = view.At(scene.height - kTickPixels);
    platform::FillBox(view, {x, 0, x + pen, view.At(kTickPixels) + pen}, kTicks);
    platform::FillBox(view, {x, top, x + pen, view.height}, kTicks);
  }
}

bool SameSound(const audio::SampleStore& a, const audio::SampleStore& b) {
  return a.WaveFormat.wBitsPerSample == b.WaveFormat.wBitsPerSample && a.WaveDataLength == b.WaveDataLength &&
         a.Samples8.Data() == b.Samples8.Data() && a.Samples16.Data() == b.Samples16.Data();
}

/// Whether two scenes show the same picture but for the box of the current frame.
bool SameBelowBox(const WaveScene& a, const WaveScene& b) {
  return a.width == b.width && a.height == b.height && a.ground == b.ground && a.wave == b.wave &&
         a.frames == b.frames && SameSound(a.sound, b.sound);
}

/// Everything that the picture covers on a canvas.
PixelBox WholeBox(const WaveScene& scene, double scale) {
  return {0, 0, platform::CoveredPixels(scene.width, scale), platform::CoveredPixels(scene.height, scale)};
}

}  // namespace

std::vector<ColumnSpan> WaveColumns(const audio::SampleStore& sound, int canvas_pixels, double scale) {
  const auto design_stride = StrideOf(sound, canvas_pixels);
  if (!design_stride) return {};
  const float stride = *design_stride / static_cast<float>(scale);
  const int columns = platform::CoveredPixels(canvas_pixels, scale);
  const int zero_line = platform::ScaledPixel(kZeroLine, scale);
  std::vector<ColumnSpan> spans;
  spans.reserve(static_cast<std::size_t>(columns));
  int y = WaveY(sound, 0, stride, scale);
  ColumnSpan span{std::min(zero_line, y), std::max(zero_line, y)};
  for (int column = 0; column < columns; ++column) {
    const int next_y = WaveY(sound, column + 1, stride, scale);
    const Crossing crossing = CrossingOf(y, next_y);
    Widen(span, crossing.last_here);
    spans.push_back(span);
    span = {std::min(crossing.first_there, next_y), std::max(crossing.first_there, next_y)};
    y = next_y;
  }
  return spans;
}

PixelBox CurrentFrameBox(const WaveScene& scene, double scale) {
  if (scene.frames <= 0 || scene.current_frame < 0) return {};
  const float frame_pixels = PixelsPerFrame(scene.width, scene.frames);
  const double x = PixelOfFrame(scene.current_frame, frame_pixels);
  const PixelBox whole = WholeBox(scene, scale);
  int left = platform::ScaledPixel(x, scale);
  if (scene.current_frame < scene.frames) left = std::min(left, whole.right - 1);
  const int right = platform::ScaledPixel(x + static_cast<double>(frame_pixels), scale);
  return {left, 0, std::max(left + 1, right), whole.bottom};
}

void DrawWave(const PixelView& canvas, const WaveScene& scene) {
  const PixelView view = canvas.Within(WholeBox(scene, canvas.scale));
  if (view.clip.Empty()) return;
  LayGround(view, scene.width, scene.height, scene.ground, kGroundDegrees);
  platform::DrawPen(view, 0, kZeroLine, 0, kZeroLine, scene.wave);
  FillSpans(view, WaveColumns(scene.sound, scene.width, view.scale), scene.wave);
  if (scene.frames > 0) DrawTicks(view, scene);
  platform::InvertBox(view, CurrentFrameBox(scene, view.scale));
}

std::vector<PixelBox> WavePicture::DrawOn(const PixelView& canvas) {
  std::vector<PixelBox> changed;
  const PixelBox whole = WholeBox(scene_, canvas.scale);
  if (!drawn_valid_ || drawn_scale_ != canvas.scale || !SameBelowBox(scene_, drawn_)) {
    DrawWave(canvas, scene_);
    changed = {whole};
  } else if (scene_.current_frame != drawn_.current_frame) {
    changed = {CurrentFrameBox(drawn_, canvas.scale), CurrentFrameBox(scene_, canvas.scale)};
    for (const PixelBox& box : changed) platform::InvertBox(canvas.Within(whole), box);
  }
  drawn_ = scene_;
  drawn_scale_ = canvas.scale;
  drawn_valid_ = true;
  return changed;
}

}  // namespace timeline
