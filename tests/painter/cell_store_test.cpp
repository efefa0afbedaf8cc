#include "painter/cell_store.h"

#include <gtest/gtest.h>

namespace painter {
namespace {

TEST(CellStore, KeepsXRunningFastestThenYThenCell) {
  auto store = MakeCellStore({4, 2}, 3);  // 5 columns by 3 rows
  ASSERT_TRUE(store);
  for (std::size_t i = 0; i < 45; ++i) store->CellG[i] = static_cast<std::uint8_t>(i);
  EXPECT_EQ(CellPlanes(*store, 0).green[1 * 5 + 3], 8);
  EXPECT_EQ(CellPlanes(*store, 2).green[2 * 5 + 4], 44);
  EXPECT_EQ(StoreBytes({1919, 1079}, 200), 1244160000);
}

TEST(CellStore, IsRefusedWhereThereIsNoMemoryForIt) {
  EXPECT_FALSE(MakeCellStore({INT32_MAX, INT32_MAX}, INT32_MAX));
  EXPECT_FALSE(MakeCellStore({-1, 0}, 0) || MakeCellStore({0, -1}, 0) || MakeCellStore({0, 0}, -1));
  EXPECT_TRUE(MakeCellStore({0, 0}, 0));
  EXPECT_EQ(RefusalOfSize({0, 0}), "");
  EXPECT_EQ(RefusalOfSize({-1, 0}), "The host gives its frames a size of -1 by 0. No frame can have that.");
  EXPECT_NE(RefusalOfSize({0, -1}), "");
  EXPECT_EQ(RollBytes(5), 10);
}

// After a retrieval that found too few frames the numbers are new and the store is old.
TEST(CellStore, FindsOnlyCellsThatFitTheNumbers) {
  Retrieval retrieval;
  retrieval.cells = std::move(*MakeCellStore({4, 2}, 3));
  const auto found = [&retrieval](int width, int height, int count, int cell) {
    retrieval.FrameWidth = width, retrieval.FrameHeight = height, retrieval.CellCount = count;
    return FindCell(retrieval, cell).has_value();
  };
  EXPECT_TRUE(found(4, 2, 3, 2) && found(4, 2, 1, 0));
  EXPECT_FALSE(found(4, 2, 3, -1) || found(4, 2, 9, 3) || found(4, 2, 1, 1));
  EXPECT_FALSE(found(5, 2, 3, 0) || found(4, 9, 3, 0));
  EXPECT_FALSE(FindCell(Retrieval{}, 0));
}

TEST(FilmRoll, TakesItsLengthFromTheText) {
  const std::pair<const char*, double> cases[] = {{"24.5", 24}, {"25.5", 26}, {" 12 fps", 12},
                                                  {"", 0},      {"abc", 0},   {"0.5", 0},
                                                  {"0.6", 1},   {"-5", -5},   {"5000000000", 5e9}};
  for (const auto& [text, length] : cases) EXPECT_EQ(RollLengthFromText(text), length) << text;
}

}  // namespace
}  // namespace painter
