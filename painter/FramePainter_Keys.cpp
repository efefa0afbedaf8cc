// The strips by keyboard: arrows choose a cell in the upper one and go along the roll in the lower one, where
// Space stamps the chosen cell.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

#include "painter/FramePainter.h"
#include "painter/cell_store.h"
#include "painter/strip_state.h"
#include "painter/thumbnails.h"
#include "platform/numbers.h"

namespace painter {
namespace {

using platform::KeyPress;

/// Which of `count` thumbnails a key leads to; nothing for another key.
std::optional<std::int32_t> KeyTarget(KeyPress::Key key, std::int32_t from, std::int32_t count) {
  if (count < 1) return std::nullopt;
  switch (key) {
    case KeyPress::Key::Left:
      return std::max(from - 1, 0);
    case KeyPress::Key::Right:
      return std::min(from + 1, count - 1);
    case KeyPress::Key::Home:
      return 0;
    case KeyPress::Key::End:
      return count - 1;
    default:
      return std::nullopt;
  }
}

/// Scrolls as little as brings the thumbnail whole into the strip, or else its left edge; whether that was
/// anything. A position counts unrounded widths, so far along a roll it is no thumbnail's number.
bool ScrollTo(look::HGlide& glide, const StripView& view, std::int32_t index, std::int32_t strip_width) {
  const std::int64_t left = ThumbnailLeft(view.thumb, view.offset, index);
  const double room = strip_width - view.thumb.width;
  if (left >= 0 && static_cast<double>(left) <= room) return false;
  const auto from_start = static_cast<double>(ThumbnailLeft(view.thumb, 0, index));
  const double at_left_edge = std::floor(from_start / view.thumb.exact_width);
  const double at_right_edge = std::ceil((from_start - room) / view.thumb.exact_width);
  glide.SetPosition(platform::RoundToLong(left < 0 ? at_left_edge : std::min(at_left_edge, at_right_edge)));
  return true;
}

}  // namespace

bool FramePainter::Form_KeyDown(const KeyPress& press) {
  if (press.control || press.alt) return false;
  const StripState& strips = TheStrips();
  if (Picture1.HasFocus()) {
    const std::int32_t cells = std::min(TheRetrieval().CellCount, kLastUsableCell + 1);
    const auto cell = KeyTarget(press.key, strips.SelectedCell, cells);
    if (cell) ChooseCell(*cell);
    return cell.has_value();
  }
  if (!Picture2.HasFocus()) return false;
  const bool stamps = press.key == KeyPress::Key::Space;
  const auto frame =
      KeyTarget(stamps ? KeyPress::Key::Right : press.key, strips.FrameForKeys, TheRoll().RollLength());
  if (!frame) return false;
  const std::int32_t stamped = strips.FrameForKeys;
  GoToFrame(*frame);
  if (stamps) SetRollFrame(stamped, static_cast<std::int16_t>(strips.SelectedCell));
  return true;
}

void FramePainter::ChooseCell(std::int32_t cell) {
  TheStrips().SelectedCell = cell;
  const auto view = CellsView();
  if (view && ScrollTo(HGlide1, *view, cell, Picture1.ScaleWidth())) return HGlide1_Scroll();
  Picture1_Paint();
}

void FramePainter::GoToFrame(std::int32_t frame) {
  StripState& strips = TheStrips();
  strips.FrameForKeys = frame;
  const auto view = RollView();
  if (view && ScrollTo(HGlide2, *view, frame, Picture2.ScaleWidth())) return HGlide2_Scroll();
  // Only the frame around it has moved.
  strips.PaintOnlyFrame = frame;
  Picture2_Paint();
  strips.PaintOnlyFrame = kWholeStrip;
}

}  // namespace painter
