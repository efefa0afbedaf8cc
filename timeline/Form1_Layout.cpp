// The main window's layout, the canvases' zoom and their scrolling.
#include "app/Form1.h"
#include "platform/numbers.h"
#include "timeline/layout.h"
#include "timeline/zoom.h"

using timeline::ZoomFactor;

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

void Form1::HScroll1_Change() {
  const int left = -HScroll1.Value();
  Picture2.SetLeft(left);
  Picture4.SetLeft(left);
}

void Form1::HScroll1_Scroll() { HScroll1_Change(); }
