#include <cstdint>

#include "painter/FramePainter.h"
#include "painter/cell_store.h"
#include "painter/strip_state.h"
#include "painter/thumbnails.h"

namespace painter {

void FramePainter::Picture1_MouseDown(std::int16_t button, std::int16_t /*shift*/, float x, float /*y*/) {
  const auto view = CellsView();
  if (button == 0 || !view) return;
  const std::int32_t cell = ThumbnailAt(view->thumb, x, view->offset);
  // A press beside the cells chooses nothing, nor does one on a cell that the roll couldn't hold.
  if (cell < 0 || cell >= TheRetrieval().CellCount || cell > kLastUsableCell) return;
  TheStrips().SelectedCell = cell;
  Picture1_Paint();
}

void FramePainter::Picture2_MouseDown(std::int16_t button, std::int16_t shift, float x, float y) {
  Picture2_MouseMove(button, shift, x, y);
}

void FramePainter::Picture2_MouseMove(std::int16_t button, std::int16_t /*shift*/, float x, float /*y*/) {
  const auto view = RollView();
  if (button == 0 || !view) return;
  const std::int32_t frame = ThumbnailAt(view->thumb, x, view->offset);
  if (frame >= 0 && frame < TheRoll().RollLength()) TheStrips().FrameForKeys = frame;
  SetRollFrame(frame, static_cast<std::int16_t>(TheStrips().SelectedCell));
}

void FramePainter::SetRollFrame(std::int32_t frame, std::int16_t cell) {
  FilmRoll& roll = TheRoll();
  if (frame >= 0 && frame < roll.RollLength()) roll.entries[static_cast<std::size_t>(frame)] = cell;
  StripState& strips = TheStrips();
  strips.PaintOnlyFrame = frame;
  Picture2_Paint();
  strips.PaintOnlyFrame = kWholeStrip;
}

void FramePainter::HGlide1_Scroll() {
  const auto view = CellsView();
  if (!view) return;
  TheStrips().CellScrollOffset = OffsetForPosition(view->thumb, HGlide1.Position());
  Picture1_Paint();
  Picture7_Paint();
}

void FramePainter::HGlide2_Scroll() {
  const auto view = RollView();
  if (!view) return;
  StripState& strips = TheStrips();
  strips.RollScrollOffset = OffsetForPosition(view->thumb, HGlide2.Position());
  strips.PaintOnlyFrame = kWholeStrip;
  Picture2_Paint();
  Picture4_Paint();
}

}  // namespace painter
