// The velocity canvas: ground, curves and captions, laid one over the other.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/pixels.h"
#include "timeline/caption_masks.h"
#include "timeline/velocity_values.h"

namespace timeline {

/// All that the picture depends on but the shape captions, taken down at one moment.
struct VelocityScene {
  struct Track {
    platform::Color color = 0;
    bool visible = true;
    friend bool operator==(const Track&, const Track&) = default;
  };

  int width = 0, height = 0;
  platform::Color ground = 0;
  /// Rate x seconds, to the nearest; the table may hold more or fewer while a rate is being changed.
  std::int32_t frames = 0;
  std::array<Track, kChannels> tracks;
  VelocityTable values;
  /// The captions go by the waveform's frames, so that they stand on its ticks; the curves don't.
  int wave_width = 0;
  /// The grid's rows, the header included: as a rule there is one number more than there are frames.
  std::int32_t rows = 0;
  /// The current row's frame and its comment; an empty comment isn't marked.
  std::int32_t marked_frame = -1;
  std::string comment;
};

/// The y that all curves start from at the left edge, whatever their values.
inline constexpr int kCurveStart = 32;

/// Keeps a canvas at the scene captured last, redrawing what has changed. It keeps the layers below: ground
/// and curves, and all but the mark. So a mark that moves is put back from there and laid anew at its next
/// place, however many captions share those pixels.
///
/// What it shows is always the whole picture as of the last capture, drawn layer by layer: ground, the curves
/// of channels 0 to 3, then row by row the frame number, the shape, and at the marked frame the mark with its
/// comment.
class VelocityPicture {
 public:
  /// The maker gives masks of the size that fits the canvas at that moment.
  explicit VelocityPicture(CaptionMasks::MaskMaker make_mask) : masks_(std::move(make_mask)) {}

  void Capture(VelocityScene scene) { scene_ = std::move(scene); }
  const VelocityScene& Scene() const { return scene_; }
  /// All shapes empty, for so many frames.
  void ClearShapes(std::int32_t frames);
  /// The shape of a frame; the frames grow to hold it. frame 0 or above.
  void CaptureShape(std::int32_t frame, const std::string& shape);

  /// The canvas no longer holds what was drawn on it.
  void ForgetDrawn() { drawn_valid_ = false; }
  /// Brings the canvas up to date and tells what has changed.
  std::vector<platform::PixelBox> DrawOn(const platform::PixelView& canvas);

 private:
  std::vector<platform::PixelBox> Damage();
  bool SameLayout() const;
  void AddShapeDamage(std::vector<platform::PixelBox>& boxes);
  void FitLayers();
  void DrawCurves(const platform::PixelBox& box);
  void DrawBelowMark(const platform::PixelBox& box);
  void Restore(const platform::PixelView& view, const platform::PixelBox& box);
  CaptionReach AllCaptionsReach();
  void DrawCaptions(const platform::PixelView& view, std::int32_t first_row, std::int32_t last_row);
  void DrawMark(const platform::PixelView& view);
  void DrawLineAndComment(const platform::PixelView& view) const;
  platform::PixelBox MarkLine() const;
  platform::PixelBox MarkText() const;
  int CaptionX(std::int32_t frame) const;
  int Px(double design_pixels) const { return platform::ScaledPixel(design_pixels, scale_); }
  platform::PixelBox WholeBox() const;
  bool Marked() const { return scene_.marked_frame >= 0 && !scene_.comment.empty(); }

  CaptionMasks masks_;
  /// Of the canvas that was drawn on last; boxes are in its pixels.
  double scale_ = 1;
  VelocityScene scene_, drawn_;
  bool drawn_valid_ = false;
  /// The shapes by frame, as the masks' numbers; what was drawn of them last, and whether they are the same.
  std::vector<std::int32_t> shapes_, drawn_shapes_;
  bool shapes_changed_ = true;
  platform::TextMask comment_mask_;
  platform::PixelBox drawn_line_, drawn_text_;
  struct Layer {
    std::vector<platform::Pixel> pixels;
    platform::PixelView view;
  };
  /// Ground and curves; these and the captions.
  Layer curves_, below_mark_;
};

}  // namespace timeline
