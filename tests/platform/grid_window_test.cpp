// The grid: what it raises and when, the texts that it keeps, and what of it is seen.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>

#include "platform/Grid.h"
#include "platform/PictureBox.h"
#include "platform/Window.h"
#include "support/UserInput.h"
#include "support/desk.h"

namespace platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

struct Sample : Window {
  Sample()
      : Window({.name = "Sample", .caption = "", .client_width = 300, .client_height = 200, .icons = {}}) {
    grid.Move(0, 0, 200, 150);
    canvas.Move(200, 0, 50, 40);
  }
  Grid grid{*this, "grid", 5, 3};
  PictureBox canvas{*this, "canvas"};
};

/// A shown grid and what it raised, with the cell that was current at that time.
struct ShownGrid : testing::Test {
  ShownGrid() {
    sample.Show();
    support::HandleEvents();
    grid.LeaveCell = [this] { Note("leave "); };
    grid.SelChange = [this] { Note("reach "); };
    grid.Click = [this] { Note("click "); };
  }
  void Note(const char* what) {
    seen.push_back(what + std::to_string(grid.Row()) + "," + std::to_string(grid.Col()));
  }
  Texts Take() { return std::exchange(seen, {}); }

  Sample sample;
  Grid& grid = sample.grid;
  QTableView* view = static_cast<QTableView*>(grid.Widget());
  Texts seen;
};

TEST_F(ShownGrid, RaisesItsEventsInsideTheMoveAndOnlyWhenTheCellChanges) {
  grid.SetRow(2);
  EXPECT_THAT(Take(), ElementsAre("leave 0,0", "reach 2,0"));
  grid.SetRow(2);
  grid.SetCol(0);
  EXPECT_THROW(grid.SetRow(5), ControlError);
  EXPECT_THROW(grid.SetRow(-1), ControlError);
  EXPECT_THROW(grid.SetCol(3), ControlError);
  EXPECT_THAT(Take(), IsEmpty());
  const int row_1 = PixelsFromTwips(grid.RowPos(2) - grid.RowPos(1)) / 2;
  const int col_1 = PixelsFromTwips(grid.ColPos(1)) + 3;
  for (const QPoint at : {QPoint(col_1, row_1), QPoint(3, 140)}) {
    support::Press(view->viewport(), at);
    const QModelIndex before = view->currentIndex();
    support::DragTo(view->viewport(), QPointF(col_1, 2 * row_1 + 3));
    EXPECT_EQ(view->currentIndex(), before) << "a drag is no more than its press";
    support::Release(view->viewport(), at);
  }
  EXPECT_THAT(Take(), ElementsAre("leave 2,0", "reach 1,1", "click 1,1", "click 1,1"))
      << "below the last row nothing is left or reached";
  for (const Qt::MouseButton button : {Qt::RightButton, Qt::LeftButton})
    support::Release(view->horizontalHeader()->viewport(), {5, 5}, button);
  EXPECT_THAT(Take(), ElementsAre("click 1,1")) << "the header is a row of the grid";
}

TEST_F(ShownGrid, PassesOverAPressOnARowThatHasJustGone) {
  const auto press = [this](int row, Qt::MouseButton button, QEvent::Type type = QEvent::MouseButtonPress) {
    const QPoint at = view->visualRect(view->model()->index(row - 1, 0)).center();
    support::Mouse(view->viewport(), type, at, button);
    support::HandleEvents();
    return grid.Row();
  };
  grid.SetRows(3);
  EXPECT_EQ(press(3, Qt::LeftButton), 0);
  EXPECT_EQ(press(1, Qt::RightButton), 0) << "nor does the right button choose a cell";
  EXPECT_EQ(press(2, Qt::LeftButton), 2);
  EXPECT_EQ(press(1, Qt::LeftButton, QEvent::MouseButtonDblClick), 1);
}

TEST_F(ShownGrid, KeepsTheTextsOfTheCellsThatRemain) {
  int changes = 0;
  QObject::connect(view->model(), &QAbstractItemModel::dataChanged, [&] { ++changes; });
  const auto texts = [this] {
    support::HandleEvents();
    EXPECT_EQ(view->model()->rowCount(), grid.Rows() - 1);
    std::string all;
    for (int row = 0; row < grid.Rows(); ++row, all += ";")
      for (int col = 0; col < view->model()->columnCount(); ++col) all += grid.TextMatrix(row, col) + ",";
    return all;
  };
  for (int cell = 0; cell < 15; ++cell) {
    grid.SetRow(cell / 3);
    grid.SetCol(cell % 3);
    grid.SetText(std::string(1, static_cast<char>('a' + cell)));
  }
  Take();
  for (const int rows : {4, 3, 4}) grid.SetRows(rows);
  EXPECT_EQ(texts(), "a,b,c,;d,e,f,;g,h,i,;,,,;");
  grid.SetCols(2);
  EXPECT_THAT(Take(),
              ElementsAre("leave 4,2", "reach 3,2", "leave 3,2", "reach 2,2", "leave 2,2", "reach 2,1"));
  EXPECT_EQ(texts(), "a,b,;d,e,;g,h,;,,;");
  EXPECT_THROW(grid.SetRows(0), ControlError);
  EXPECT_THROW(grid.SetCols(0), ControlError);
  changes = 0;
  grid.SetText("z");
  support::HandleEvents();
  grid.Clear();
  support::HandleEvents();
  EXPECT_EQ(changes, 2) << "seen without a move";
  for (const auto& [text, tip] :
       {std::pair("a<b", ""), {"twice as long as <b>", "<qt>twice as long as &lt;b&gt;</qt>"}}) {
    grid.SetText(text);
    EXPECT_EQ(view->model()->index(grid.Row() - 1, 1).data(Qt::ToolTipRole).toString(), tip)
        << "whole where it is cut";
  }
  grid.SetRows(1);
  EXPECT_EQ(texts(), ",,;");
}

TEST_F(ShownGrid, IsWalkedByKeys) {
  grid.SetRows(100);
  grid.SetCol(1);
  const struct {
    int key, row, col;
  } steps[] = {{Qt::Key_Down, 1, 1}, {Qt::Key_Up, 1, 1},   {Qt::Key_Down, 2, 1}, {Qt::Key_Right, 2, 2},
               {Qt::Key_End, 99, 2}, {Qt::Key_Home, 1, 2}, {Qt::Key_Left, 1, 1}};
  for (const auto& step : steps) {
    support::Key(view, step.key);
    EXPECT_EQ(std::pair(grid.Row(), grid.Col()), std::pair(step.row, step.col)) << step.key;
  }
  support::Key(view, Qt::Key_PageDown);
  EXPECT_GT(grid.Row(), 4);
  int let_go = 0, opened = 0;
  grid.EditKey = [&] { ++opened; };
  for (const int key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2}) support::Key(view, key);
  EXPECT_EQ(opened, 3);
  grid.KeyUp = [&](int, int) { ++let_go; };
  for (const bool repeats : {true, false}) {
    QKeyEvent up(QEvent::KeyRelease, Qt::Key_Delete, Qt::NoModifier, {}, repeats);
    QApplication::sendEvent(view, &up);
    EXPECT_EQ(let_go, repeats ? 0 : 1) << "a held key is let go once";
  }
}

TEST_F(ShownGrid, ShowsWhereTheCurrentCellIs) {
  QScrollBar& bar = *view->verticalScrollBar();
  int scrolled = 0;
  grid.SetRows(100);
  grid.SetRow(50);
  // Six rows are seen, 19 pixels each, below a header of 21; a step leaves a third of them ahead.
  EXPECT_EQ(grid.RowPos(50), TwipsFromPixels(21 + 3 * 19));
  EXPECT_EQ(std::pair(bar.value(), grid.RowPos(0)), std::pair(46, 0));
  grid.SetRow(49);
  grid.Refresh();
  EXPECT_EQ(view->currentIndex().row(), 48);
  support::Press(view->viewport(), {5, 5 * 19 + 5});
  support::HandleEvents();
  EXPECT_EQ(std::pair(bar.value(), grid.Row()), std::pair(46, 52)) << "a clicked row stays where it is";
  grid.Scroll = [&scrolled] { ++scrolled; };
  bar.setValue(90);
  EXPECT_EQ(scrolled, 1);
  grid.Scroll = nullptr;
  grid.BringIntoView();
  EXPECT_EQ(bar.value(), 51);
  bar.setValue(20);
  grid.SetText("M ");
  support::HandleEvents();
  EXPECT_EQ(bar.value(), 46) << "a text is no step";
  grid.SetHeight(65);
  grid.SetRow(60);
  support::HandleEvents();
  EXPECT_EQ(bar.value(), 59) << "the only row that is seen";
  for (const int seen_from : {0, 30}) {
    grid.SetRow(0);
    grid.SetText("Frame");
    support::HandleEvents();
    EXPECT_EQ(bar.value(), seen_from) << "only going there shows the first rows";
    bar.setValue(30);
  }
}

TEST_F(ShownGrid, HasAFormThatIsNotTheUsersToChange) {
  const QHeaderView &rows = *view->verticalHeader(), &cols = *view->horizontalHeader();
  EXPECT_TRUE(rows.isHidden() && !cols.highlightSections() && !view->wordWrap() && !view->tabKeyNavigation());
  EXPECT_EQ(cols.sectionResizeMode(0), QHeaderView::Fixed);
  EXPECT_EQ(view->editTriggers(), QAbstractItemView::NoEditTriggers);
  EXPECT_EQ(view->selectionMode(), QAbstractItemView::SingleSelection);
  EXPECT_EQ(view->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
}

}  // namespace
}  // namespace platform
