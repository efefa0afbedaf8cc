#include "sheet/sheet_cells.h"

#include <gtest/gtest.h>

namespace sheet {
namespace {

TEST(CellTable, GrowsWithTheRowsAndTellsWhatHasChanged) {
  CellTable cells;
  cells.Resize(1);
  EXPECT_TRUE(cells.TakeChanges().everything);
  cells.Record(4, 1, "A");
  cells.Record(0, 2, "");
  cells.Record(0, 3, "no such column");
  EXPECT_EQ(cells.LastFrame(), 4);
  EXPECT_EQ(cells.Text(4, 1), "A");
  EXPECT_EQ(cells.Text(5, 1), "");
  EXPECT_EQ(cells.TakeChanges().frames, std::vector<std::int32_t>{4});
}

}  // namespace
}  // namespace sheet
