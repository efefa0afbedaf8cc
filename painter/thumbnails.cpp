#include "painter/thumbnails.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "platform/numbers.h"
#include "platform/pixels.h"

namespace painter {
namespace {

/// The columns of a strip that a thumbnail covers, inclusive, and the strip's x of its left edge.
struct Columns {
  std::int64_t left;
  std::int32_t first, last;
};

std::int64_t Scaled(std::int64_t design_pixels, double scale) {
  return std::llround(static_cast<double>(design_pixels) * scale);
}

Columns VisibleColumns(const StripView& view, std::int32_t index, const Planes& strip) {
  const std::int64_t design_left = ThumbnailLeft(view.thumb, view.offset, index);
  const std::int64_t left = Scaled(design_left, view.scale);
  const std::int64_t last =
      std::min<std::int64_t>(Scaled(design_left + view.thumb.width, view.scale), strip.shape.right) - 1;
  const auto first = std::clamp<std::int64_t>(left, 0, strip.shape.right);
  return {left, static_cast<std::int32_t>(first), static_cast<std::int32_t>(std::max(last, first - 1))};
}

std::int32_t VisibleRows(const StripView& view, const Planes& strip) {
  return std::min(platform::CoveredPixels(view.thumb.height, view.scale), strip.shape.bottom);
}

/// The frame's sample under one of the strip's pixels. A thumbnail's edge that falls within one of the
/// screen's pixels must not lead past the frame's last sample.
std::int32_t SampleAt(std::int64_t pixel, float step, double scale, std::int32_t last) {
  const double sample = std::floor(static_cast<double>(pixel) * static_cast<double>(step) / scale);
  return std::min(static_cast<std::int32_t>(sample), last);
}

std::vector<std::int32_t> SampledColumns(const StripView& view, const Columns& columns, std::int32_t last) {
  std::vector<std::int32_t> samples;
  for (std::int32_t x = columns.first; x <= columns.last; ++x)
    samples.push_back(SampleAt(x - columns.left, view.thumb.step_x, view.scale, last));
  return samples;
}

std::size_t RowStart(const PlaneShape& shape, std::int32_t y) {
  return static_cast<std::size_t>(y) * shape.Columns();
}

void SampleRow(const std::vector<std::int32_t>& samples, const std::uint8_t* from, std::uint8_t flip,
               std::uint8_t* to) {
  for (std::size_t i = 0; i < samples.size(); ++i) to[i] = static_cast<std::uint8_t>(from[samples[i]] ^ flip);
}

void SetBlack(const Planes& strip, std::int64_t x, std::int32_t y) {
  const std::size_t place = RowStart(strip.shape, y) + static_cast<std::size_t>(x);
  strip.red[place] = strip.green[place] = strip.blue[place] = 0;
}

}  // namespace

std::optional<ThumbGeometry> MeasureThumbnails(std::int32_t frame_width, std::int32_t frame_height,
                                               std::int32_t strip_height) {
  if (frame_width < 1 || frame_height < 1 || strip_height < 1) return std::nullopt;
  ThumbGeometry thumb;
  thumb.exact_width = static_cast<double>(frame_width) / frame_height * strip_height;
  thumb.width = platform::RoundToLong(thumb.exact_width);
  thumb.height = strip_height;
  if (thumb.width < 1) return std::nullopt;
  thumb.step_x = static_cast<float>(1.0 / thumb.width * frame_width);
  thumb.step_y = static_cast<float>(1.0 / thumb.height * frame_height);
  return thumb;
}

ThumbRange ThumbnailsInStrip(const ThumbGeometry& thumb, std::int32_t offset, std::int32_t strip_width,
                             std::int32_t count) {
  const std::int64_t first = -std::int64_t{offset} / thumb.width;
  const std::int64_t last = (strip_width - 1 - std::int64_t{offset}) / thumb.width;
  return {static_cast<std::int32_t>(std::max<std::int64_t>(first, 0)),
          static_cast<std::int32_t>(std::min<std::int64_t>(last, std::max(count, 0) - 1))};
}

ThumbRange RollFramesToVisit(const ThumbGeometry& thumb, std::int32_t offset, std::int32_t strip_width,
                             std::int32_t roll_length) {
  const std::int64_t first = -std::int64_t{offset} / thumb.width;
  const std::int64_t end = std::min<std::int64_t>(first + strip_width / thumb.width + 2, roll_length);
  return {static_cast<std::int32_t>(std::max<std::int64_t>(first, 0)), static_cast<std::int32_t>(end - 1)};
}

std::int32_t ThumbnailAt(const ThumbGeometry& thumb, double x, std::int32_t offset) {
  return platform::IntegerDivide(x - offset, thumb.exact_width);
}

std::int32_t OffsetForPosition(const ThumbGeometry& thumb, std::int32_t position) {
  return platform::RoundToLong(0 - thumb.exact_width * position);
}

std::int64_t ThumbnailLeft(const ThumbGeometry& thumb, std::int32_t offset, std::int32_t index) {
  return std::int64_t{index} * thumb.width + offset;
}

void DrawThumbnail(const StripView& view, std::int32_t index, const ConstPlanes& cell, Tone tone,
                   const Planes& strip) {
  const Columns columns = VisibleColumns(view, index, strip);
  const auto samples = SampledColumns(view, columns, cell.shape.right);
  const std::uint8_t flip = tone == Tone::kNegative ? 255 : 0;
  for (std::int32_t y = 0; y < VisibleRows(view, strip); ++y) {
    const std::size_t from =
        RowStart(cell.shape, SampleAt(y, view.thumb.step_y, view.scale, cell.shape.bottom));
    const std::size_t to = RowStart(strip.shape, y) + static_cast<std::size_t>(columns.first);
    SampleRow(samples, cell.red + from, flip, strip.red + to);
    SampleRow(samples, cell.green + from, flip, strip.green + to);
    SampleRow(samples, cell.blue + from, flip, strip.blue + to);
  }
}

void DrawBlank(const StripView& view, std::int32_t index, const Planes& strip) {
  const Columns columns = VisibleColumns(view, index, strip);
  const std::int32_t count = columns.last - columns.first + 1;
  for (std::int32_t y = 0; y < VisibleRows(view, strip); ++y) {
    const std::size_t to = RowStart(strip.shape, y) + static_cast<std::size_t>(columns.first);
    std::fill_n(strip.red + to, count, std::uint8_t{255});
    std::fill_n(strip.green + to, count, std::uint8_t{255});
    std::fill_n(strip.blue + to, count, std::uint8_t{255});
  }
}

void DrawMissing(const StripView& view, std::int32_t index, const Planes& strip) {
  DrawBlank(view, index, strip);
  const Columns columns = VisibleColumns(view, index, strip);
  const std::int64_t width = Scaled(view.thumb.width, view.scale);
  const std::int32_t height = platform::CoveredPixels(view.thumb.height, view.scale);
  for (std::int32_t y = 0; y < VisibleRows(view, strip); ++y) {
    const std::int64_t across = y * (width - 1) / std::max(height - 1, 1);
    for (const std::int64_t x : {columns.left + across, columns.left + width - 1 - across})
      if (x >= columns.first && x <= columns.last) SetBlack(strip, x, y);
  }
}

void DrawCellsStrip(const StripView& view, const Retrieval& retrieval, std::int32_t selected,
                    const Planes& strip) {
  const auto width = static_cast<std::int32_t>(std::ceil(strip.shape.right / view.scale));
  const auto range = ThumbnailsInStrip(view.thumb, view.offset, width, retrieval.CellCount);
  for (std::int32_t i = range.first; i <= range.last; ++i) {
    if (const auto cell = FindCell(retrieval, i)) {
      DrawThumbnail(view, i, *cell, i == selected ? Tone::kNegative : Tone::kAsIs, strip);
    } else {
      DrawMissing(view, i, strip);
    }
  }
}

void DrawRollFrame(const StripView& view, const Retrieval& retrieval, const FilmRoll& roll,
                   std::int32_t frame, const Planes& strip) {
  const std::int16_t entry = roll.entries[static_cast<std::size_t>(frame)];
  if (entry < 0) return DrawBlank(view, frame, strip);
  if (const auto cell = FindCell(retrieval, entry))
    return DrawThumbnail(view, frame, *cell, Tone::kAsIs, strip);
  DrawMissing(view, frame, strip);
}

}  // namespace painter
