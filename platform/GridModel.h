// The grid's texts and their model. For the grid's own files only.
#pragma once

#include <QAbstractTableModel>
#include <QColor>
#include <QTableView>
#include <memory>
#include <string>
#include <vector>

namespace platform {

/// In pixels; the header row is a little taller.
inline constexpr int kGridRowHeight = 19, kGridHeaderHeight = kGridRowHeight + 2;

class GridModel;

/// Model and view are updated late: when code moves the current cell or writes a text, the view is only
/// marked as stale. It catches up once, when events are handled or something asks where a cell stands.
struct GridState {
  int rows = 1, cols = 0;
  int row = 0, col = 0;
  std::vector<std::string> cells;
  GridModel* model = nullptr;
  QTableView* view = nullptr;
  bool stale = false;
  bool moved = false;
  /// Whether the last move changed the row, and not by a click: a clicked row stays under the pointer.
  bool stepped = false;
  std::shared_ptr<bool> alive = std::make_shared<bool>(true);

  std::size_t IndexOf(int r, int c) const {
    return static_cast<std::size_t>(r) * static_cast<std::size_t>(cols) + static_cast<std::size_t>(c);
  }
};

class GridModel : public QAbstractTableModel {
 public:
  explicit GridModel(const GridState& state) : state_(state) {}

  int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : shown_rows_; }
  int columnCount(const QModelIndex& parent = {}) const override {
    return parent.isValid() ? 0 : shown_cols_;
  }

  QVariant data(const QModelIndex& index, int role) const override {
    const int row = index.row() + 1, col = index.column();
    if (!index.isValid() || row >= state_.rows || col >= state_.cols) return {};
    if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole)
      return QString::fromStdString(state_.cells[state_.IndexOf(row, col)]);
    if (role == Qt::ToolTipRole)
      return TipFor(QString::fromStdString(state_.cells[state_.IndexOf(row, col)]), col);
    if (role == Qt::BackgroundRole && row == state_.row) return QColor(226, 232, 240);
    if (role == Qt::TextAlignmentRole && col == 0) return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    return {};
  }

  QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    // Never seen: what a row is called by assistive technology.
    if (orientation == Qt::Vertical && role == Qt::DisplayRole) return "Frame " + QString::number(section);
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
  /// The whole text, if the cell is too narrow to show it.
  QVariant TipFor(const QString& text, int col) const {
    constexpr int kCellMargins = 8;
    const bool cut =
        state_.view->fontMetrics().horizontalAdvance(text) > state_.view->columnWidth(col) - kCellMargins;
    return cut ? QVariant("<qt>" + text.toHtmlEscaped() + "</qt>") : QVariant();
  }

  const GridState& state_;
  int shown_rows_ = 0, shown_cols_ = 0;
};

}  // namespace platform
