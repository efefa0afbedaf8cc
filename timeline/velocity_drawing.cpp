#include "timeline/velocity_drawing.h"

#include <algorithm>
#include <cmath>

#include "platform/numbers.h"
#include "timeline/highlight_box.h"

namespace timeline {
namespace {

using platform::Color;
using platform::PixelBox;
using platform::PixelView;
using platform::RoundToLong;

constexpr Color kNumberColor = platform::Rgb(34, 34, 34);
constexpr Color kShapeColor = platform::Rgb(34, 68, 136);
constexpr Color kMarkColor = platform::Rgb(136, 68, 34);
constexpr int kNumberTop = 2, kShapeTop = 12, kMarkTop = 2, kCommentTop = 52;
constexpr int kTextIndent = 4;
constexpr int kGroundDegrees = 63;
/// Captions of rows far beyond the last frame are drawn no further right than this, so that no sum overflows.
constexpr double kFarRight = 1 << 28;
/// More captions changed than this: their common box costs less than one for each.
constexpr std::size_t kMostBoxes = 32;

PixelBox At(const CaptionReach& reach, int x, int y) {
  if (reach.Empty()) return {};
  return {x + reach.left, y + reach.top, x + reach.right, y + reach.bottom};
}

/// How far apart the frames stand on the curves: the first at the left edge, the last at the right one. A
/// project of one frame has it at the left edge.
float CurveStep(std::int32_t frames, int canvas_pixels) {
  return frames > 1 ? static_cast<float>(static_cast<double>(canvas_pixels) / (frames - 1)) : 0.0f;
}

/// The whole numbers from first to last, held to 0 and count - 1.
FrameSpan HeldSpan(double first, double last, std::int32_t count) {
  const double top = count - 1;
  return {static_cast<std::int32_t>(std::clamp(std::floor(first), 0.0, top)),
          static_cast<std::int32_t>(std::clamp(std::ceil(last), 0.0, top))};
}

/// Copies what lies in the target's clip.
void CopyClip(const PixelView& from, const PixelView& to) {
  if (to.clip.Empty()) return;
  for (int y = to.clip.top; y < to.clip.bottom; ++y)
    std::copy(from.Row(y) + to.clip.left, from.Row(y) + to.clip.right, to.Row(y) + to.clip.left);
}

/// One channel's curve, as far as it touches the view's clip. It ends where the table does.
void DrawCurve(const PixelView& view, const VelocityScene& scene, int channel) {
  const Color color = scene.tracks[static_cast<std::size_t>(channel)].color;
  platform::DrawPen(view, 0, kCurveStart, 0, kCurveStart, platform::Rgb(0, 0, 0));
  const std::int32_t count = std::min(scene.frames, scene.values.Frames());
  if (count == 0) return;
  const auto step = static_cast<double>(CurveStep(scene.frames, scene.width));
  const double left = view.clip.left / view.scale, right = view.clip.right / view.scale;
  const FrameSpan span =
      step > 0 ? HeldSpan((left - 1) / step, (right + 1) / step + 1, count) : FrameSpan{0, count - 1};
  double x = 0, y = kCurveStart;
  if (span.first > 0) {
    x = step * (span.first - 1);
    y = scene.values.At(span.first - 1, channel);
  }
  for (std::int32_t frame = span.first; frame <= span.last; ++frame) {
    const double next_x = step * frame, next_y = scene.values.At(frame, channel);
    platform::DrawPen(view, x, y, next_x, next_y, color);
    x = next_x;
    y = next_y;
  }
}

/// The columns that change with the values of these frames: the lines that lead there and away.
PixelBox CurveBox(const FrameSpan& span, const VelocityScene& scene, double scale) {
  const auto step = static_cast<double>(CurveStep(scene.frames, scene.width));
  const int left = platform::ScaledPixel(step * std::max(0, span.first - 1), scale);
  const int right = platform::ScaledPixel(step * (static_cast<double>(span.last) + 1), scale);
  return {left, 0, std::min(right, platform::CoveredPixels(scene.width, scale)) + platform::PenPixels(scale),
          platform::CoveredPixels(scene.height, scale)};
}

}  // namespace

void VelocityPicture::ClearShapes(std::int32_t frames) {
  masks_.ForgetTexts();
  shapes_.assign(static_cast<std::size_t>(frames), 0);
  shapes_changed_ = true;
  // The numbers in what was drawn stand for other texts from here on.
  drawn_valid_ = false;
}

void VelocityPicture::CaptureShape(std::int32_t frame, const std::string& shape) {
  const auto place = static_cast<std::size_t>(frame);
  if (place >= shapes_.size()) shapes_.resize(place + 1, 0);
  const std::int32_t number = masks_.NumberOf(shape);
  if (shapes_[place] == number) return;
  shapes_[place] = number;
  shapes_changed_ = true;
}

PixelBox VelocityPicture::WholeBox() const {
  return {0, 0, platform::CoveredPixels(scene_.width, scale_),
          platform::CoveredPixels(scene_.height, scale_)};
}

std::vector<PixelBox> VelocityPicture::DrawOn(const PixelView& canvas) {
  if (canvas.scale != scale_) {
    scale_ = canvas.scale;
    masks_.ForgetMasks();
    drawn_valid_ = false;
  }
  const PixelBox whole = WholeBox();
  const PixelView view = canvas.Within(whole);
  if (!drawn_valid_ || scene_.comment != drawn_.comment)
    comment_mask_ = scene_.comment.empty() ? platform::TextMask{} : masks_.MakeMask(scene_.comment);
  std::vector<PixelBox> changed = view.clip.Empty() ? std::vector<PixelBox>{} : Damage();
  for (const PixelBox& box : changed) Restore(view, box);
  drawn_line_ = MarkLine();
  drawn_text_ = MarkText();
  drawn_ = scene_;
  if (shapes_changed_) drawn_shapes_ = shapes_;
  shapes_changed_ = false;
  drawn_valid_ = !view.clip.Empty();
  return changed;
}

bool VelocityPicture::SameLayout() const {
  return scene_.width == drawn_.width && scene_.height == drawn_.height && scene_.ground == drawn_.ground &&
         scene_.frames == drawn_.frames && scene_.tracks == drawn_.tracks &&
         scene_.values.Frames() == drawn_.values.Frames() && scene_.wave_width == drawn_.wave_width &&
         scene_.rows == drawn_.rows && shapes_.size() == drawn_shapes_.size();
}

/// The boxes in which the picture differs from what is drawn, the layers in them already brought up to date.
std::vector<PixelBox> VelocityPicture::Damage() {
  const PixelBox whole = WholeBox();
  if (!drawn_valid_ || !SameLayout()) {
    FitLayers();
    DrawCurves(whole);
    DrawBelowMark(whole);
    return {whole};
  }
  std::vector<PixelBox> boxes;
  if (scene_.frames == 0) return boxes;
  if (const auto span = scene_.values.DifferenceFrom(drawn_.values)) {
    boxes.push_back(CurveBox(*span, scene_, scale_));
    DrawCurves(boxes.back());
  }
  if (shapes_changed_) AddShapeDamage(boxes);
  for (const PixelBox& box : boxes) DrawBelowMark(box);
  if (scene_.marked_frame != drawn_.marked_frame || scene_.comment != drawn_.comment)
    boxes.insert(boxes.end(), {drawn_line_, drawn_text_, MarkLine(), MarkText()});
  std::erase_if(boxes, [](const PixelBox& box) { return box.Empty(); });
  return boxes;
}

void VelocityPicture::AddShapeDamage(std::vector<PixelBox>& boxes) {
  const CaptionReach& reach = masks_.TextReach();
  PixelBox common;
  std::size_t changed = 0;
  for (std::size_t i = 0; i < shapes_.size(); ++i) {
    if (shapes_[i] == drawn_shapes_[i]) continue;
    const PixelBox box = At(reach, CaptionX(static_cast<std::int32_t>(i)) + Px(kTextIndent), Px(kShapeTop));
    if (++changed <= kMostBoxes) boxes.push_back(box);
    common = Union(common, box);
  }
  if (changed <= kMostBoxes) return;
  boxes.resize(boxes.size() - kMostBoxes);
  boxes.push_back(common);
}

void VelocityPicture::FitLayers() {
  const PixelBox whole = WholeBox();
  for (Layer* layer : {&curves_, &below_mark_}) {
    layer->pixels.resize(static_cast<std::size_t>(whole.right) * static_cast<std::size_t>(whole.bottom));
    layer->view = platform::MakeView(layer->pixels.data(), whole.right, whole.bottom, whole.right, scale_);
  }
}

void VelocityPicture::DrawCurves(const PixelBox& box) {
  const PixelView view = curves_.view.Within(box);
  LayGround(view, scene_.width, scene_.height, scene_.ground, kGroundDegrees);
  if (scene_.frames == 0) return;
  for (int channel = 0; channel < kChannels; ++channel)
    if (scene_.tracks[static_cast<std::size_t>(channel)].visible) DrawCurve(view, scene_, channel);
}

void VelocityPicture::DrawBelowMark(const PixelBox& box) {
  const PixelView view = below_mark_.view.Within(box);
  CopyClip(curves_.view, view);
  if (scene_.frames > 0) DrawCaptions(view, 0, scene_.rows - 1);
}

void VelocityPicture::Restore(const PixelView& view, const PixelBox& box) {
  const PixelView part = view.Within(box);
  CopyClip(below_mark_.view, part);
  if (scene_.frames > 0 && Marked()) DrawMark(part);
}

int VelocityPicture::CaptionX(std::int32_t frame) const {
  const double x = frame * (static_cast<double>(scene_.wave_width) / scene_.frames);
  return Px(std::min(x, kFarRight));
}

/// The box that holds every caption of a row, as seen from the row's place.
CaptionReach VelocityPicture::AllCaptionsReach() {
  return Union(At(masks_.NumberReach(), 0, Px(kNumberTop)),
               At(masks_.TextReach(), Px(kTextIndent), Px(kShapeTop)));
}

/// Lays the captions of those of the rows that can reach into the view's clip, each over those before it.
void VelocityPicture::DrawCaptions(const PixelView& view, std::int32_t first_row, std::int32_t last_row) {
  if (first_row > last_row || view.clip.Empty()) return;
  const CaptionReach reach = AllCaptionsReach();
  if (view.clip.top >= reach.bottom || view.clip.bottom <= reach.top) return;
  const double row_pixels = static_cast<double>(scene_.wave_width) / scene_.frames * scale_;
  if (row_pixels > 0) {
    const FrameSpan span = HeldSpan((view.clip.left - reach.right) / row_pixels - 1,
                                    (view.clip.right - reach.left) / row_pixels + 1, scene_.rows);
    first_row = std::max(first_row, span.first);
    last_row = std::min(last_row, span.last);
  }
  const auto shape_count = static_cast<std::int32_t>(shapes_.size());
  for (std::int32_t frame = first_row; frame <= last_row; ++frame) {
    const int x = CaptionX(frame);
    masks_.DrawFrameNumber(view, x, Px(kNumberTop), frame, kNumberColor);
    if (frame < shape_count)
      masks_.DrawText(view, x + Px(kTextIndent), Px(kShapeTop), shapes_[static_cast<std::size_t>(frame)],
                      kShapeColor);
  }
}

/// Lays the mark where it belongs: over the captions of its own row and of those before, below those behind.
/// `view` shows all captions.
void VelocityPicture::DrawMark(const PixelView& view) {
  const PixelBox line = MarkLine(), text = MarkText();
  const std::int32_t last_row = scene_.rows - 1;
  const CaptionReach reach = AllCaptionsReach();
  if (text.Empty() || (text.top >= reach.bottom && text.top >= line.bottom)) {
    // The line covers whatever was there, and the comment stands clear of it all.
    DrawLineAndComment(view);
    DrawCaptions(view.Within(line), scene_.marked_frame + 1, last_row);
    return;
  }
  for (const PixelBox& box : {line, text}) {
    const PixelView part = view.Within(box);
    CopyClip(curves_.view, part);
    DrawCaptions(part, 0, std::min(scene_.marked_frame, last_row));
    DrawLineAndComment(part);
    DrawCaptions(part, scene_.marked_frame + 1, last_row);
  }
}

void VelocityPicture::DrawLineAndComment(const PixelView& view) const {
  platform::FillBox(view, MarkLine(), kMarkColor);
  const int x = CaptionX(scene_.marked_frame);
  platform::BlendMask(view, x + Px(kTextIndent), Px(kCommentTop), comment_mask_, kMarkColor);
}

PixelBox VelocityPicture::MarkLine() const {
  if (!Marked() || scene_.frames == 0) return {};
  const int x = CaptionX(scene_.marked_frame);
  const int pen = platform::PenPixels(scale_);
  return {x, Px(kMarkTop), x + pen, Px(kCommentTop) + pen};
}

PixelBox VelocityPicture::MarkText() const {
  if (!Marked() || scene_.frames == 0 || comment_mask_.width == 0) return {};
  const int left = CaptionX(scene_.marked_frame) + Px(kTextIndent) + comment_mask_.left;
  const int top = Px(kCommentTop) + comment_mask_.top;
  return {left, top, left + comment_mask_.width, top + comment_mask_.height};
}

}  // namespace timeline
