#include "sheet/sheet_cells.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace sheet {
namespace {

TEST(CellTable, GrowsWithTheRowsAndTellsWhatHasChanged) {
  CellTable cells;
  cells.Resize(1);
  EXPECT_TRUE(cells.TakeChanges().everything);
  for (const int column : {0, 1, 2, 3, -1}) cells.Record(4, column, "c" + std::to_string(column));
  cells.Record(-1, 0, "no such frame");
  cells.Record(2, 1, "");
  cells.Record(0, 0, "first");
  EXPECT_EQ(cells.LastFrame(), 4);
  std::string texts;
  for (const int frame : {-1, 0, 4, 5})
    for (const int column : {-1, 0, 1, 2, 3}) texts += cells.Text(frame, column) + "|";
  EXPECT_EQ(texts, "||||||first|||||c0|c1|c2|||||||");
  EXPECT_EQ(cells.TakeChanges().frames, (std::vector<std::int32_t>{4, 4, 4, 0}));
  cells.Record(0, 0, "");
  EXPECT_EQ(cells.TakeChanges().frames, (std::vector<std::int32_t>{0}));
  cells.Resize(4);
  EXPECT_EQ(cells.LastFrame(), 4);
  EXPECT_EQ(cells.Text(4, 1), "") << "nothing is kept";
}

}  // namespace
}  // namespace sheet
