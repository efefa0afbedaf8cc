// The main window's layout, the canvases' zoom and their scrolling.
#include <cstdint>

#include "app/Form1.h"
#include "platform/numbers.h"
#include "timeline/layout.h"
#include "timeline/zoom.h"

using timeline::ZoomFactor;

namespace {

constexpr std::int16_t kControl = 2;
/// What one notch of the wheel scrolls.
constexpr int kNotchPixels = 64;

}  // namespace

void Form1::Form_Resize() {
  const auto layout = timeline::LayoutFor(ScaleWidth(), ScaleHeight());
  if (!layout) return;
  Grid1.SetCol(2);
  Grid1.SetColWidth(2, layout->comment_column_twips);
  Picture3.SetWidth(layout->width);
  CalcPictureWidths();
  Grid1.SetWidth(layout->width);
  Grid1.SetHeight(layout->grid_height);
  List1.SetHeight(layout->list_height);
  if (Text2.Visible()) PlaceCommentEditor();
  HScroll1.SetWidth(layout->width);
  PaintWav();
  PaintVelocity();
  Picture2.Refresh();
  Picture4.Refresh();
  HScroll1.Refresh();
}

void Form1::CalcPictureWidths() {
  const int width = timeline::CanvasWidth(Picture3.Width(), ZoomFactor);
  Picture2.SetWidth(width);
  Picture4.SetWidth(width);
}

/// The value isn't set: a maximum that falls below it pulls it down, and the canvases with it.
void Form1::AdjustHscroll() {
  const auto range = timeline::ScrollRangeFor(Picture2.ScaleWidth(), Picture3.ScaleWidth());
  HScroll1.SetMin(0);
  HScroll1.SetMax(range.maximum);
  HScroll1.SetLargeChange(range.step);
}

void Form1::vl_button3_Click() {
  if (timeline::CanZoomIn(Picture3.Width(), ZoomFactor)) ChangeZoom(ZoomFactor + timeline::kZoomStep);
}

void Form1::vl_button4_Click() {
  if (timeline::CanZoomOut(ZoomFactor)) ChangeZoom(ZoomFactor - timeline::kZoomStep);
}

void Form1::ChangeZoom(float factor) {
  ZoomFactor = factor;
  Label2.SetCaption(platform::NumberText(static_cast<double>(ZoomFactor) * 100));
  CalcPictureWidths();
  AdjustHscroll();
  PaintMouth();
  Picture1.Refresh();
  PaintWav();
  PaintVelocity();
  Picture2.Refresh();
}

void Form1::TurnWheel(float notches, std::int16_t shift, float x) {
  if ((shift & kControl) == 0) {
    HScroll1.SetValue(HScroll1.Value() - platform::RoundToLong(static_cast<double>(notches) * kNotchPixels));
    return;
  }
  zoom_turn_ += notches;
  for (; zoom_turn_ >= 1; zoom_turn_ -= 1) ZoomAbout(true, x);
  for (; zoom_turn_ <= -1; zoom_turn_ += 1) ZoomAbout(false, x);
}

/// What is under the pointer stays there, as far as the canvas reaches.
void Form1::ZoomAbout(bool in, float x) {
  const int width = Picture2.ScaleWidth();
  const double share = static_cast<double>(x) / width, in_view = static_cast<double>(x) - HScroll1.Value();
  in ? vl_button3_Click() : vl_button4_Click();
  if (Picture2.ScaleWidth() != width)
    HScroll1.SetValue(platform::RoundToLong(share * Picture2.ScaleWidth() - in_view));
}

void Form1::HScroll1_Change() {
  const int left = -HScroll1.Value();
  Picture2.SetLeft(left);
  Picture4.SetLeft(left);
}

void Form1::HScroll1_Scroll() { HScroll1_Change(); }
