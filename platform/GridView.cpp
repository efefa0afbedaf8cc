// How the grid is seen, and how mouse and keys move in it.
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <chrono>
#include <optional>

#include "platform/Application.h"
#include "platform/Grid.h"
#include "platform/GridModel.h"
#include "platform/ToolkitColor.h"

namespace platform {
namespace {

constexpr int kDefaultColumnWidth = 64;
constexpr int kCurrentCellFrame = 2;
/// About the time between two repeats of a held key.
constexpr std::chrono::milliseconds kMostWait{30};
const QColor kLine(214, 218, 224);

/// Draws faint lines between the cells. The current cell gets a frame and stays as readable as the others;
/// the frame is grey while another control has the focus.
class CellPainter : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    RunEvent([&] {
      QStyleOptionViewItem plain = option;
      plain.state &= ~(QStyle::State_Selected | QStyle::State_HasFocus | QStyle::State_MouseOver);
      QStyledItemDelegate::paint(painter, plain, index);
      PaintLines(*painter, option.rect);
      if (option.state & QStyle::State_Selected) PaintFrame(*painter, option);
    });
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

/// The fixed row: a click in it is a click in the grid, and it shows when it is current.
class Grid::HeaderView : public QHeaderView {
 public:
  HeaderView(Grid& grid, QWidget* parent) : QHeaderView(Qt::Horizontal, parent), grid_(grid) {
    setSectionResizeMode(QHeaderView::Fixed);
    setHighlightSections(false);
    setFixedHeight(kGridHeaderHeight);
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
    verticalHeader()->setMinimumSectionSize(kGridRowHeight);
    verticalHeader()->setDefaultSectionSize(kGridRowHeight);
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
    // The view may still show rows that the grid has lost.
    if (event->button() != Qt::LeftButton || !at.isValid() || at.row() + 1 >= grid_.Rows()) return;
    RunEvent([&] { grid_.MoveTo(at.row() + 1, at.column()); });
    grid_.state_->stepped = false;
  }
  void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
  void mouseMoveEvent(QMouseEvent*) override {}
  void mouseReleaseEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton && grid_.Click) RunEvent(grid_.Click);
  }

  void keyPressEvent(QKeyEvent* event) override {
    bool moved = false;
    RunEvent([&] { moved = MoveByKey(*event); });
    if (moved) return;
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
    // With Ctrl or Shift these keys belong to the window.
    const bool up_or_down = event.key() == Qt::Key_Up || event.key() == Qt::Key_Down;
    if (up_or_down && (event.modifiers() & (Qt::ControlModifier | Qt::ShiftModifier))) return false;
    const bool to_end = event.key() == Qt::Key_Home || event.key() == Qt::Key_End;
    const auto action = ActionOf(event);
    if (!action && !to_end) return false;
    // A held key repeats faster than a slow host follows. Repeats that were queued during a move are dropped,
    // so that the grid doesn't go on moving after the key is released.
    if (!HasWaited(event)) Move(action, event);
    return true;
  }

  /// Whether this is a held key's repeat that has been queued for a while. How long it was queued can only be
  /// told by comparing it with the key's other events, because the display server's clock is not ours.
  bool HasWaited(const QKeyEvent& event) {
    using namespace std::chrono;
    const auto now = duration_cast<milliseconds>(steady_clock::now().time_since_epoch());
    const milliseconds way = now - milliseconds(event.timestamp());
    shortest_way_ = event.isAutoRepeat() ? std::min(shortest_way_, way) : way;
    return event.isAutoRepeat() && event.timestamp() != 0 && way - shortest_way_ > kMostWait;
  }

  void Move(std::optional<CursorAction> action, const QKeyEvent& event) {
    const bool to_end = !action;
    grid_.ShowCurrent();
    if (model()->rowCount() == 0) return;
    // Home and End go to the first and the last frame, not to the first and the last column.
    if (to_end) {
      grid_.MoveTo(event.key() == Qt::Key_Home ? 1 : grid_.Rows() - 1, grid_.Col());
      return;
    }
    if (!currentIndex().isValid()) {
      grid_.MoveTo(1, grid_.Col());
      return;
    }
    const QModelIndex target = moveCursor(*action, event.modifiers());
    if (target.isValid()) grid_.MoveTo(target.row() + 1, target.column());
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
  std::chrono::milliseconds shortest_way_{0};
};

void Grid::HeaderView::paintSection(QPainter* painter, const QRect& rect, int section) const {
  // The base class leaves a clip behind through which nothing more would be seen.
  painter->save();
  QHeaderView::paintSection(painter, rect, section);
  painter->restore();
  if (grid_.Row() == 0 && grid_.Col() == section)
    painter->fillRect(rect.adjusted(0, rect.height() - 2, -1, 0), palette().color(QPalette::Highlight));
}

QTableView* Grid::MakeView(Grid& grid) { return new View(grid); }

}  // namespace platform
