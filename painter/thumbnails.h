// The film strips: where thumbnails stand, what they sample, and how a strip is painted.
#pragma once

#include <cstdint>
#include <optional>

#include "painter/cell_store.h"
#include "painter/planes.h"

namespace painter {

/// Size of the thumbnails of a strip, in pixels.
struct ThumbGeometry {
  double exact_width = 0;  // by the frame's proportions, not rounded: scrolling goes by it
  std::int32_t width = 0;  // what a thumbnail takes, at least 1
  std::int32_t height = 0;
  float step_x = 0, step_y = 0;  // samples of the frame per pixel
};

/// The geometry for a frame of that width and height in a strip of that inner height. Nothing if no
/// thumbnail can be had: an empty frame or strip, or a frame so tall that its thumbnail rounds to nothing.
std::optional<ThumbGeometry> MeasureThumbnails(std::int32_t frame_width, std::int32_t frame_height,
                                               std::int32_t strip_height);

/// Thumbnails first to last, inclusive; none if last is below first.
struct ThumbRange {
  std::int32_t first = 0;
  std::int32_t last = -1;
};

/// Of `count` thumbnails, those that lie at least partly in a strip of that width. `offset` is added to
/// every x, zero or negative.
ThumbRange ThumbnailsInStrip(const ThumbGeometry& thumb, std::int32_t offset, std::int32_t strip_width,
                             std::int32_t count);

/// The frames of a roll that a repaint visits.
ThumbRange RollFramesToVisit(const ThumbGeometry& thumb, std::int32_t offset, std::int32_t strip_width,
                             std::int32_t roll_length);

/// The thumbnail under a pixel, cut toward zero: less than one thumbnail left of the strip still gives 0.
std::int32_t ThumbnailAt(const ThumbGeometry& thumb, double x, std::int32_t offset);

/// The offset that brings thumbnail `position` to the left edge, by the unrounded width.
std::int32_t OffsetForPosition(const ThumbGeometry& thumb, std::int32_t position);

/// The left edge of a thumbnail in pixels; may lie far outside the strip.
std::int64_t ThumbnailLeft(const ThumbGeometry& thumb, std::int32_t offset, std::int32_t index);

/// What part of a strip is shown, and how large. Thumbnails and offset are in design pixels; the planes that
/// it is drawn on have `scale` screen pixels for each of them.
struct StripView {
  ThumbGeometry thumb;
  std::int32_t offset = 0;
  double scale = 1;
};

enum class Tone { kAsIs, kNegative };

/// Draws a cell as thumbnail `index` of the strip, cut at both of its edges. The strip's planes have one
/// column and one row more than the strip has pixels; those stay.
void DrawThumbnail(const StripView& view, std::int32_t index, const ConstPlanes& cell, Tone tone,
                   const Planes& strip);

/// A blank frame: white.
void DrawBlank(const StripView& view, std::int32_t index, const Planes& strip);

/// A frame with no cell behind it: white with a cross from corner to corner.
void DrawMissing(const StripView& view, std::int32_t index, const Planes& strip);

/// All cells that the strip shows, the selected one as a negative. What no thumbnail covers stays.
void DrawCellsStrip(const StripView& view, const Retrieval& retrieval, std::int32_t selected,
                    const Planes& strip);

/// One frame of the roll.
void DrawRollFrame(const StripView& view, const Retrieval& retrieval, const FilmRoll& roll,
                   std::int32_t frame, const Planes& strip);

}  // namespace painter
