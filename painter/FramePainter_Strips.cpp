#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "painter/DibRelated.h"
#include "painter/FramePainter.h"
#include "painter/cell_store.h"
#include "painter/planes.h"
#include "painter/strip_state.h"
#include "painter/thumbnails.h"
#include "platform/pixels.h"

namespace painter {
namespace {

constexpr platform::Color kBlankEdge = platform::Rgb(208, 208, 208);

std::optional<StripView> ViewOf(const platform::PictureBox& strip, std::int32_t offset) {
  const Retrieval& retrieval = TheRetrieval();
  const auto thumb = MeasureThumbnails(retrieval.FrameWidth, retrieval.FrameHeight, strip.ScaleHeight());
  if (!thumb) return std::nullopt;
  return StripView{*thumb, offset, strip.Scale()};
}

void Blit(platform::PictureBox& strip, StripPlanes& planes) {
  BlitPlanes(strip, planes.shape.right, planes.shape.bottom, planes.red.data(), planes.green.data(),
             planes.blue.data());
  strip.Refresh();
}

void Blacken(StripPlanes& planes) {
  for (auto* plane : {&planes.red, &planes.green, &planes.blue}) std::fill(plane->begin(), plane->end(), 0);
}

void DrawRoll(const StripView& view, StripState& strips) {
  const FilmRoll& roll = TheRoll();
  const auto visited = RollFramesToVisit(view.thumb, view.offset, strips.RollStripWidth, roll.RollLength());
  for (std::int32_t frame = visited.first; frame <= visited.last; ++frame)
    if (strips.PaintOnlyFrame == kWholeStrip || strips.PaintOnlyFrame == frame)
      DrawRollFrame(view, TheRetrieval(), roll, frame, strips.RollPlanes.View());
}

/// Where two blank frames meet: white on white they would look like one.
std::vector<int> EdgesBetweenBlanks(const StripView& view, int strip_width) {
  const FilmRoll& roll = TheRoll();
  const auto visited = RollFramesToVisit(view.thumb, view.offset, strip_width, roll.RollLength());
  std::vector<int> edges;
  for (std::int32_t frame = std::max(visited.first, 1); frame <= visited.last; ++frame) {
    const auto place = static_cast<std::size_t>(frame);
    if (roll.entries[place - 1] < 0 && roll.entries[place] < 0)
      edges.push_back(static_cast<int>(ThumbnailLeft(view.thumb, view.offset, frame)));
  }
  return edges;
}

void FrameThumbnail(platform::PictureBox& strip, const StripView& view, std::int32_t index) {
  const std::int64_t left = ThumbnailLeft(view.thumb, view.offset, index);
  const bool seen = left + view.thumb.width > 0 && left < strip.ScaleWidth();
  strip.FrameColumns(seen ? static_cast<int>(left) : 0, seen ? static_cast<int>(left + view.thumb.width) : 0);
}

std::string FrameInWords(std::int32_t frame) {
  const FilmRoll& roll = TheRoll();
  if (frame >= roll.RollLength()) return {};
  const int cell = roll.entries[static_cast<std::size_t>(frame)];
  return "Frame " + std::to_string(frame) + " of " + std::to_string(roll.RollLength()) + ", " +
         (cell < 0 ? "blank" : "cell " + std::to_string(cell));
}

/// No number is wider: the first ones left of the ruler may still reach into it.
constexpr int kWidestNumberPixels = 100;

void DrawRuler(platform::PictureBox& ruler, const std::optional<StripView>& view, std::int32_t count) {
  ruler.Cls();
  if (!view) return;
  const auto seen = ThumbnailsInStrip(view->thumb, view->offset, ruler.ScaleWidth(), count);
  const std::int32_t before = kWidestNumberPixels / view->thumb.width + 1;
  for (std::int32_t i = std::max(0, seen.first - before); i <= seen.last; ++i) {
    ruler.MovePen(static_cast<double>(ThumbnailLeft(view->thumb, view->offset, i)), 2);
    ruler.Print(std::to_string(i));
  }
}

}  // namespace

PlaneShape PlanesOfStrip(platform::PictureBox& strip) {
  const platform::PixelView pixels = strip.Pixels();
  return {pixels.width, pixels.height};
}

std::optional<StripView> FramePainter::CellsView() const {
  return ViewOf(Picture1, TheStrips().CellScrollOffset);
}

std::optional<StripView> FramePainter::RollView() const {
  return ViewOf(Picture2, TheStrips().RollScrollOffset);
}

void FramePainter::Picture1_Paint() {
  const Retrieval& retrieval = TheRetrieval();
  if (retrieval.CellCount < 1) return;
  StripPlanes planes(PlanesOfStrip(Picture1));
  if (const auto view = CellsView()) {
    const std::int32_t chosen = TheStrips().SelectedCell;
    DrawCellsStrip(*view, retrieval, chosen, planes.View());
    FrameThumbnail(Picture1, *view, chosen);
    Picture1.SetAccessibleItem("Cell " + std::to_string(chosen) + " of " +
                               std::to_string(retrieval.CellCount));
  }
  Blit(Picture1, planes);
}

void FramePainter::Picture2_Paint() {
  StripState& strips = TheStrips();
  if (Picture2.ScaleWidth() != strips.RollStripWidth || Picture2.ScaleHeight() != strips.RollStripHeight)
    return;
  if (strips.PaintOnlyFrame == kWholeStrip) Blacken(strips.RollPlanes);
  if (const auto view = RollView()) {
    DrawRoll(*view, strips);
    Picture2.ShowRules(EdgesBetweenBlanks(*view, Picture2.ScaleWidth()), kBlankEdge);
    FrameThumbnail(Picture2, *view, strips.FrameForKeys);
    Picture2.SetAccessibleItem(FrameInWords(strips.FrameForKeys));
  }
  Blit(Picture2, strips.RollPlanes);
}

void FramePainter::Picture7_Paint() { DrawRuler(Picture7, CellsView(), TheRetrieval().CellCount); }

void FramePainter::Picture4_Paint() { DrawRuler(Picture4, RollView(), TheRoll().RollLength()); }

}  // namespace painter
