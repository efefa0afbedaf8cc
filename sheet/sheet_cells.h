// The timeline's copy of the sheet's texts.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace sheet {

inline constexpr int kSheetColumns = 3;
inline constexpr int kFrameColumn = 0, kShapeColumn = 1, kCommentColumn = 2;

/// A table of text, frame by column. It holds a cell's text from the moment the cell is left, not before; so
/// that drawings needn't copy it, it notes which frames have changed.
class CellTable {
 public:
  /// Frames 0 to last_frame, both included, all texts empty; nothing is kept.
  void Resize(std::int32_t last_frame);
  /// Reserves memory for a Resize. Throws std::bad_alloc if there isn't enough; nothing has changed then.
  void Reserve(std::int32_t last_frame) { rows_.reserve(static_cast<std::size_t>(last_frame) + 1); }
  /// -1 before the first Resize.
  std::int32_t LastFrame() const { return static_cast<std::int32_t>(rows_.size()) - 1; }
  bool Has(std::int32_t frame) const { return frame >= 0 && frame <= LastFrame(); }
  /// Empty for a frame or column that the table doesn't have.
  const std::string& Text(std::int32_t frame, int column) const;
  /// Frame from 0, column 0 to 2. A frame past the end makes the table longer: every row of the grid has its
  /// entry.
  void Record(std::int32_t frame, int column, const std::string& text);

  /// What has changed since the last call: the frames, each at least once, or everything.
  struct Changes {
    bool everything = false;
    std::vector<std::int32_t> frames;
  };
  Changes TakeChanges();

 private:
  std::vector<std::array<std::string, kSheetColumns>> rows_;
  Changes changes_;
};

}  // namespace sheet
