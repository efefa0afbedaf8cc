#include "platform/Grid.h"

#include <QAbstractTableModel>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTableView>
#include <algorithm>
#include <new>
#include <optional>
#include <utility>
#include <vector>

#include "platform/Application.h"
#include "platform/ToolkitColor.h"

namespace platform {
namespace {

constexpr int kDefaultColumnWidth = 64;
constexpr int kRowHeight = 19;
constexpr int kCurrentCellFrame = 2;
const QColor kCurrentRow(226, 232, 240), kLine(214, 218, 224);

/// Lines that part the cells without outshouting what stands in them. The current cell is framed and stays
/// as readable as the others; the frame greys while another control has the focus.
class CellPainter : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QStyleOptionViewItem plain = option;
    plain.state &= ~(QStyle::State_Selected | QStyle::State_HasFocus | QStyle::State_MouseOver);
    QStyledItemDelegate::paint(painter, plain, index);
    PaintLines(*painter, option.rect);
    if (option.state & QStyle::State_Selected) PaintFrame(*painter, option);
  }

 private:
  /// One pixel of the screen at any scale: a wider line would be uneven from row to row at a scale like 1.25.
  static void PaintLines(QPainter& painter, const QRectF& cell) {
    const double right = cell.right() - 0.5, bottom = cell.bottom() - 0.5;
    painter.setPen(QPen(kLine, 0));
    painter.drawLine(QPointF(cell.left(), bottom), QPointF(right, bottom));
    painter.drawLine(QPointF(right, cell.top()), QPointF(right, bottom));
  }

  static void PaintFrame(QPainter& painter, const QStyleOptionViewItem& option) {
    const bool in_use = option.state & QStyle::State_Active && option.state & QStyle::State_HasFocus;
    const QColor color = in_use ? option.palette.color(QPalette::Highlight) : QColor(140, 148, 160);
    QRegion frame(option.rect);
    frame -=
        option.rect.adjusted(kCurrentCellFrame, kCurrentCellFrame, -kCurrentCellFrame, -kCurrentCellFrame);
    for (const QRect& side : frame) painter.fillRect(side, color);
  }
};

}  // namespace

/// Model and view follow the state from a distance: a move or a text by code only notes that the view is
/// stale, and the view catches up once, when events are handled or something asks where a cell stands.
struct Grid::State {
  int rows = 1, cols = 0;
  int row = 0, col = 0;
  std::vector<std::string> cells;
  Model* model = nullptr;
  View* view = nullptr;
  bool stale = false;
  bool moved = false;
  std::shared_ptr<bool> alive = std::make_shared<bool>(true);

  std::size_t IndexOf(int r, int c) const {
    return static_cast<std::size_t>(r) * static_cast<std::size_t>(cols) + static_cast<std::size_t>(c);
  }
};

class Grid::Model : public QAbstractTableModel {
 public:
  explicit Model(const State& state) : state_(state) {}

  int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : shown_rows_; }
  int columnCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : shown_cols_;
  }

  QVariant data(const QModelIndex& index, int role) const override {
    const int row = index.row() + 1, col = index.column();
    if (row >= state_.rows || col >= state_.cols) return {};
    if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole)
      return QString::fromStdString(state_.cells[state_.IndexOf(row, col)]);
    if (role == Qt::BackgroundRole && row == state_.row) return kCurrentRow;
    if (role == Qt::TextAlignmentRole && col == 0) return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    return {};
  }

  QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    if (orientation != Qt::Horizontal || section >= state_.cols) return {};
    if (role == Qt::DisplayRole)
      return QString::fromStdString(state_.cells[static_cast<std::size_t>(section)]);
    if (role == Qt::TextAlignmentRole) return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
  }

  /// Takes over the state's size and says that every text may have changed.
  void CatchUp() {
    const int rows = state_.rows - 1;
    if (shown_cols_ != state_.cols) {
      beginResetModel();
      shown_rows_ = rows;
      shown_cols_ = state_.cols;
      endResetModel();
    } else if (rows > shown_rows_) {
      beginInsertRows({}, shown_rows_, rows - 1);
      shown_rows_ = rows;
      endInsertRows();
    } else if (rows < shown_rows_) {
      beginRemoveRows({}, rows, shown_rows_ - 1);
      shown_rows_ = rows;
      endRemoveRows();
    }
    if (shown_rows_ > 0) emit dataChanged(index(0, 0), index(shown_rows_ - 1, shown_cols_ - 1));
    emit headerDataChanged(Qt::Horizontal, 0, shown_cols_ - 1);
  }

 private:
  const State& state_;
  int shown_rows_ = 0, shown_cols_ = 0;
};

/// The fixed row: a click in it is a click in the grid, and it shows when it is current.
class Grid::HeaderView : public QHeaderView {
 public:
  HeaderView(Grid& grid, QWidget* parent) : QHeaderView(Qt::Horizontal, parent), grid_(grid) {
    setSectionResizeMode(QHeaderView::Fixed);
    setHighlightSections(false);
    setFixedHeight(kRowHeight + 2);
  }

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override {
    QHeaderView::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && grid_.Click) RunEvent(grid_.Click);
  }
  void paintSection(QPainter* painter, const QRect& rect, int section) const override;

 private:
  Grid& grid_;
};

class Grid::View : public QTableView {
 public:
  explicit View(Grid& grid) : grid_(grid) {
    setHorizontalHeader(new HeaderView(grid, this));
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(kRowHeight);
    verticalHeader()->setDefaultSectionSize(kRowHeight);
    horizontalHeader()->setDefaultSectionSize(kDefaultColumnWidth);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    setWordWrap(false);
    setShowGrid(false);
    setItemDelegate(new CellPainter(this));
    setTabKeyNavigation(false);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, [this] {
      if (grid_.Scroll) RunEvent(grid_.Scroll);
    });
  }

 protected:
  bool event(QEvent* event) override {
    const bool handled = QTableView::event(event);
    if (event->type() == QEvent::Paint && hasFocus()) PaintFocusFrame(this);
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) update();
    return handled;
  }
  void mousePressEvent(QMouseEvent* event) override {
    const QModelIndex at = indexAt(event->pos());
    if (event->button() == Qt::LeftButton && at.isValid())
      RunEvent([&] { grid_.MoveTo(at.row() + 1, at.column()); });
  }
  void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
  void mouseMoveEvent(QMouseEvent*) override {}
  void mouseReleaseEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton && grid_.Click) RunEvent(grid_.Click);
  }

  void keyPressEvent(QKeyEvent* event) override {
    if (MoveByKey(*event)) return;
    const bool opens =
        event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter || event->key() == Qt::Key_F2;
    if (opens && grid_.EditKey) return RunEvent(grid_.EditKey);
    // Keys that the grid has no use for may be shortcuts of the window.
    event->ignore();
  }

  void keyReleaseEvent(QKeyEvent* event) override {
    const int key = event->key() == Qt::Key_Delete ? kDeleteKey : event->key();
    if (!event->isAutoRepeat() && grid_.KeyUp) RunEvent([&] { grid_.KeyUp(key, 0); });
  }

 private:
  bool MoveByKey(const QKeyEvent& event) {
    const bool to_end = event.key() == Qt::Key_Home || event.key() == Qt::Key_End;
    const auto action = ActionOf(event);
    if (!action && !to_end) return false;
    grid_.ShowCurrent();
    if (model()->rowCount() == 0) return true;
    // A sheet is read downward: its ends are the first and the last frame, not the outer columns.
    if (to_end) {
      RunEvent([&] { grid_.MoveTo(event.key() == Qt::Key_Home ? 1 : grid_.Rows() - 1, grid_.Col()); });
      return true;
    }
    if (!currentIndex().isValid()) {
      RunEvent([&] { grid_.MoveTo(1, grid_.Col()); });
      return true;
    }
    const QModelIndex target = moveCursor(*action, event.modifiers());
    if (target.isValid()) RunEvent([&] { grid_.MoveTo(target.row() + 1, target.column()); });
    return true;
  }

  static std::optional<CursorAction> ActionOf(const QKeyEvent& event) {
    switch (event.key()) {
      case Qt::Key_Up:
        return MoveUp;
      case Qt::Key_Down:
        return MoveDown;
      case Qt::Key_Left:
        return MoveLeft;
      case Qt::Key_Right:
        return MoveRight;
      case Qt::Key_PageUp:
        return MovePageUp;
      case Qt::Key_PageDown:
        return MovePageDown;
      default:
        return std::nullopt;
    }
  }

  Grid& grid_;
};

void Grid::HeaderView::paintSection(QPainter* painter, const QRect& rect, int section) const {
  // The base class leaves a clip behind through which nothing more would be seen.
  painter->save();
  QHeaderView::paintSection(painter, rect, section);
  painter->restore();
  if (grid_.Row() == 0 && grid_.Col() == section)
    painter->fillRect(rect.adjusted(0, rect.height() - 2, -1, 0), palette().color(QPalette::Highlight));
}

Grid::Grid(Container& container, std::string name, int rows, int cols)
    : Control(container, ControlKind::Grid, std::move(name), new View(*this)),
      state_(std::make_unique<State>()) {
  state_->rows = rows;
  state_->cols = cols;
  state_->cells.resize(static_cast<std::size_t>(rows) * static_cast<std::size_t>(cols));
  state_->view = static_cast<View*>(Widget());
  state_->model = new Model(*state_);
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

int Grid::Cols() const { return state_->cols; }

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
  if (current.isValid()) {
    state_->view->scrollTo(current);
  } else if (moved) {
    // Code that goes to the header has made the rows anew: they are seen from the first one on.
    state_->view->scrollToTop();
  }
}

}  // namespace platform
