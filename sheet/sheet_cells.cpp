#include "sheet/sheet_cells.h"

#include <utility>

namespace sheet {

void CellTable::Resize(std::int32_t last_frame) {
  rows_.assign(static_cast<std::size_t>(last_frame) + 1, {});
  changes_ = {.everything = true, .frames = {}};
}

const std::string& CellTable::Text(std::int32_t frame, int column) const {
  static const std::string empty;
  if (!Has(frame) || column < 0 || column >= kSheetColumns) return empty;
  return rows_[static_cast<std::size_t>(frame)][static_cast<std::size_t>(column)];
}

void CellTable::Record(std::int32_t frame, int column, const std::string& text) {
  if (frame < 0 || column < 0 || column >= kSheetColumns) return;
  if (!Has(frame)) rows_.resize(static_cast<std::size_t>(frame) + 1);
  std::string& cell = rows_[static_cast<std::size_t>(frame)][static_cast<std::size_t>(column)];
  if (cell == text) return;
  cell = text;
  if (!changes_.everything) changes_.frames.push_back(frame);
}

CellTable::Changes CellTable::TakeChanges() { return std::exchange(changes_, {}); }

}  // namespace sheet
