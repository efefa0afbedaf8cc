#include "platform/Grid.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>
#include <algorithm>
#include <new>
#include <utility>
#include <vector>

#include "platform/Application.h"
#include "platform/GridModel.h"
#include "platform/numbers.h"

namespace platform {

Grid::Grid(Container& container, std::string name, int rows, int cols)
    : Control(container, ControlKind::Other, std::move(name), MakeView(*this)),
      state_(std::make_unique<GridState>()) {
  state_->rows = rows;
  state_->cols = cols;
  state_->cells.resize(static_cast<std::size_t>(rows) * static_cast<std::size_t>(cols));
  state_->view = static_cast<QTableView*>(Widget());
  state_->model = new GridModel(*state_);
  state_->model->setParent(state_->view);
  state_->view->setModel(state_->model);
  state_->model->CatchUp();
}

Grid::~Grid() = default;

int Grid::Rows() const { return state_->rows; }

void Grid::ReserveRows(int rows) {
  state_->cells.reserve(static_cast<std::size_t>(rows) * static_cast<std::size_t>(state_->cols));
}

void Grid::SetRows(int rows) {
  if (rows < 1) throw ControlError(Name() + " can't have " + std::to_string(rows) + " rows");
  if (state_->row >= rows) MoveTo(rows - 1, state_->col);
  try {
    state_->cells.resize(static_cast<std::size_t>(rows) * static_cast<std::size_t>(state_->cols));
  } catch (const std::bad_alloc&) {
    throw ControlError(Name() + ": there is not enough memory for " + std::to_string(rows) + " rows");
  }
  state_->rows = rows;
  NoteStale();
}

void Grid::SetCols(int cols) {
  if (cols < 1) throw ControlError(Name() + " can't have " + std::to_string(cols) + " columns");
  if (cols == state_->cols) return;
  if (state_->col >= cols) MoveTo(state_->row, cols - 1);
  std::vector<std::string> cells(static_cast<std::size_t>(state_->rows) * static_cast<std::size_t>(cols));
  for (int r = 0; r < state_->rows; ++r)
    for (int c = 0; c < std::min(cols, state_->cols); ++c)
      cells[static_cast<std::size_t>(r) * static_cast<std::size_t>(cols) + static_cast<std::size_t>(c)] =
          std::move(state_->cells[state_->IndexOf(r, c)]);
  state_->cells = std::move(cells);
  state_->cols = cols;
  NoteStale();
}

int Grid::Row() const { return state_->row; }
int Grid::Col() const { return state_->col; }
void Grid::SetRow(int row) { MoveTo(row, state_->col); }
void Grid::SetCol(int col) { MoveTo(state_->row, col); }

void Grid::MoveTo(int row, int col) {
  if (row < 0 || row >= state_->rows) throw ControlError(Name() + " has no row " + std::to_string(row));
  if (col < 0 || col >= state_->cols) throw ControlError(Name() + " has no column " + std::to_string(col));
  if (row == state_->row && col == state_->col) return;
  if (LeaveCell) LeaveCell();
  if (row != state_->row) state_->stepped = true;
  state_->row = row;
  state_->col = col;
  state_->moved = true;
  NoteStale();
  if (SelChange) SelChange();
}

const std::string& Grid::Text() const { return TextMatrix(state_->row, state_->col); }
void Grid::SetText(const std::string& text) {
  state_->cells[state_->IndexOf(state_->row, state_->col)] = text;
  NoteStale();
}
const std::string& Grid::TextMatrix(int row, int col) const {
  return state_->cells[state_->IndexOf(row, col)];
}

void Grid::Clear() {
  for (std::string& cell : state_->cells) cell.clear();
  NoteStale();
}

int Grid::ColWidth(int col) const { return TwipsFromPixels(state_->view->columnWidth(col)); }
void Grid::SetColWidth(int col, int twips) {
  state_->view->setColumnWidth(col, std::max(0, PixelsFromTwips(twips)));
}
int Grid::ColPos(int col) const { return TwipsFromPixels(state_->view->columnViewportPosition(col)); }
int Grid::RowPos(int row) const {
  const_cast<Grid*>(this)->ShowCurrent();
  if (row == 0) return 0;
  const int header = state_->view->horizontalHeader()->height();
  return TwipsFromPixels(header + state_->view->rowViewportPosition(row - 1));
}

void Grid::BringIntoView() {
  state_->stale = true;
  ShowCurrent();
}

void Grid::Refresh() {
  ShowCurrent();
  if (RefreshIsPaused() || !Widget()->isVisible()) return;
  state_->view->viewport()->repaint();
}

void Grid::NoteStale() {
  if (state_->stale) return;
  state_->stale = true;
  RunLater([alive = std::weak_ptr<bool>(state_->alive), this] {
    if (alive.lock()) ShowCurrent();
  });
}

void Grid::ShowCurrent() {
  if (!state_->stale) return;
  state_->stale = false;
  state_->model->CatchUp();
  const QModelIndex current =
      state_->row == 0 ? QModelIndex() : state_->model->index(state_->row - 1, state_->col);
  state_->view->setCurrentIndex(current);
  const bool moved = std::exchange(state_->moved, false);
  const bool stepped = std::exchange(state_->stepped, false);
  if (current.isValid()) {
    state_->view->scrollTo(current);
    if (stepped) KeepRowsAhead();
  } else if (moved) {
    // Code that goes to the header has made the rows anew: they are seen from the first one on.
    state_->view->scrollToTop();
  }
}

void Grid::KeepRowsAhead() {
  QScrollBar& bar = *state_->view->verticalScrollBar();
  const int seen = state_->view->viewport()->height() / kGridRowHeight;
  const int top = state_->row - std::max(1, seen * 2 / 3);
  if (bar.value() < top) bar.setValue(top);
}

}  // namespace platform
