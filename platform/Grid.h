// A grid of texts with a fixed header row.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Control.h"

class QTableView;

namespace platform {

struct GridState;

/// A grid of texts, row 0 fixed as the header. It holds hundreds of thousands of rows: texts stand in one
/// table, model and view are apart. There is always a current cell.
///
/// LeaveCell comes before the current cell changes, SelChange after; for a user's move and a move by code
/// alike, inside the call, and only when the cell really changes.
class Grid : public Control {
 public:
  Grid(Container& container, std::string name, int rows, int cols);
  ~Grid() override;

  int Rows() const;
  /// Reserves memory for this many rows without adding them. Throws std::bad_alloc if there isn't enough
  /// memory; nothing has changed then.
  void ReserveRows(int rows);
  /// Keeps the texts of the rows that remain; new rows are empty. A current row that is cut off moves to the
  /// last one. Throws ControlError below 1 (the header), or if there isn't enough memory.
  void SetRows(int rows);
  void SetCols(int cols);
  int Row() const;
  /// Throws ControlError for a row that the grid doesn't have.
  void SetRow(int row);
  int Col() const;
  void SetCol(int col);

  /// The current cell's text.
  const std::string& Text() const;
  void SetText(const std::string& text);
  const std::string& TextMatrix(int row, int col) const;
  /// Empties every cell, the header too.
  void Clear();

  /// In twips.
  int ColWidth(int col) const;
  void SetColWidth(int col, int twips);
  /// Left edge of a column and top edge of a row within the grid, as scrolled at the moment, in twips.
  int ColPos(int col) const;
  int RowPos(int row) const;

  /// Scrolls the current cell into view, the header row aside, which always is.
  void BringIntoView();
  /// Puts the current cell and all texts on the screen at once, unless a RefreshPause lives.
  void Refresh() override;

  std::function<void()> Click;
  std::function<void(int key_code, int shift)> KeyUp;
  std::function<void()> LeaveCell;
  std::function<void()> SelChange;
  /// Enter or F2 was pressed in the grid.
  std::function<void()> EditKey;
  /// The view was scrolled.
  std::function<void()> Scroll;

  static constexpr int kDeleteKey = 46;

 private:
  class View;
  class HeaderView;
  static QTableView* MakeView(Grid& grid);
  void MoveTo(int row, int col);
  void NoteStale();
  void ShowCurrent();
  /// Scrolls so far that the current row stands no lower than two thirds of the way down, as long as there
  /// are rows below.
  void KeepRowsAhead();

  std::unique_ptr<GridState> state_;
};

}  // namespace platform
