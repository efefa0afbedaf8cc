#include "painter/thumbnails.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace painter {
namespace {

/// A strip of that many pixels, with one more column and row of samples than pixels, all of them 7.
struct Strip {
  Strip(int width, int height)
      : shape{width, height}, samples(3, std::vector<std::uint8_t>(shape.Samples(), 7)) {}
  Planes Write() { return {shape, samples[0].data(), samples[1].data(), samples[2].data()}; }
  int At(int plane, int x, int y) const {
    return samples[static_cast<std::size_t>(plane)][static_cast<std::size_t>(y * (shape.right + 1) + x)];
  }
  PlaneShape shape;
  std::vector<std::vector<std::uint8_t>> samples;
};

// 20 by 12 in 6 rows is 10 wide; on a screen of twice the pixels every sample of the frame has one.
TEST(Thumbnails, ADenseScreenSamplesAtItsOwnSize) {
  const auto thumb = MeasureThumbnails(20, 12, 6);
  CellStore store = *MakeCellStore({20, 12}, 1);
  const Planes cell = CellPlanes(store, 0);  // red spells x, green and blue y
  for (int place = 0; place < 21 * 13; ++place) {
    cell.red[place] = static_cast<std::uint8_t>(place % 21);
    cell.green[place] = cell.blue[place] = static_cast<std::uint8_t>(place / 21);
  }
  Strip twice(60, 12), odd(45, 9);
  DrawThumbnail({*thumb, -3, 2.0}, 1, ReadOnly(cell), Tone::kAsIs, twice.Write());
  EXPECT_EQ(twice.At(0, 13, 0), 7);
  for (int x = 0; x < 20; ++x) EXPECT_EQ(twice.At(0, 14 + x, 0), x);
  EXPECT_EQ(twice.At(0, 34, 0), 7);
  EXPECT_EQ(twice.At(2, 14, 11), 11);
  // The first ends, and the second begins, at 10.5, so 11.
  for (const int index : {0, 1})
    DrawThumbnail({*thumb, -3, 1.5}, index, ReadOnly(cell), Tone::kAsIs, odd.Write());
  const int wanted[] = {20, 0, 1, 2, 4};
  for (int x = 0; x < 5; ++x) EXPECT_EQ(odd.At(0, 10 + x, 8), wanted[x]) << x;
  EXPECT_EQ(odd.At(0, 25, 8), 18);
  EXPECT_EQ(odd.At(0, 26, 8), 7);
}

TEST(Thumbnails, AreNotToBeHadOfNothing) {
  EXPECT_FALSE(MeasureThumbnails(0, 480, 76) || MeasureThumbnails(640, 0, 76));
  EXPECT_FALSE(MeasureThumbnails(1, 10000, 76));
  EXPECT_FALSE(MeasureThumbnails(640, 480, 0));
  EXPECT_EQ(MeasureThumbnails(1, 1, 1)->width, 1);
  EXPECT_EQ(MeasureThumbnails(5, 2, 1)->width, 2);  // 2.5, to the even neighbour
}

/// White is '.', black '#', the cell below 'c', its negative 'n'; what wasn't drawn '-'.
std::string Shown(const Strip& strip, int plane) {
  std::string text;
  for (int y = 0; y <= strip.shape.bottom; ++y, text += ' ')
    for (int x = 0; x <= strip.shape.right; ++x) {
      const int value = strip.At(plane, x, y);
      const int known[] = {plane + 1, 254 - plane, 7, 0, 255};
      text += "cn-#.?"[std::find(known, known + 5, value) - known];
    }
  return text;
}

TEST(Thumbnails, ShowBlankFramesWhiteAndMissingCellsCrossed) {
  // The host says three cells, of which the store has two.
  Retrieval retrieval{4, 4, 3, std::move(*MakeCellStore({4, 4}, 2))};
  const Planes all = CellPlanes(retrieval.cells, 0);
  for (std::uint8_t value = 1; auto* plane : {all.red, all.green, all.blue}) std::fill_n(plane, 50, value++);
  const FilmRoll roll{{kBlankFrame, 1, 5, 0}};
  const auto thumb = *MeasureThumbnails(4, 4, 4);
  Strip strip(15, 4), narrow(3, 4), left(3, 4), cells(18, 4);
  for (int frame = 0; frame < 3; ++frame) DrawRollFrame({thumb, -2}, retrieval, roll, frame, strip.Write());
  for (const int offset : {-16, 15}) DrawRollFrame({thumb, offset}, retrieval, roll, 0, strip.Write());
  DrawMissing({thumb, 0}, 0, narrow.Write());
  DrawMissing({thumb, -1}, 0, left.Write());
  DrawCellsStrip({*MeasureThumbnails(4, 2, 2), -3, 2}, retrieval, 1, cells.Write());
  for (const int plane : {0, 1, 2}) {
    EXPECT_EQ(Shown(strip, plane),
              "..cccc#..#------ ..cccc.##.------ ..cccc.##.------ ..cccc#..#------ ---------------- ");
    EXPECT_EQ(Shown(narrow, plane), "#..- .##- .##- #..- ---- ");
    EXPECT_EQ(Shown(left, plane), "..#- ##.- ##.- ..#- ---- ");
    EXPECT_EQ(Shown(cells, plane),
              "ccnnnnnnnn#......#- ccnnnnnnnn..#..#..- ccnnnnnnnn...##...- "
              "ccnnnnnnnn#......#- ------------------- ");
  }
  retrieval.FrameWidth = 9;  // the store no longer fits
  DrawRollFrame({thumb, -12}, retrieval, roll, 3, narrow.Write());
  EXPECT_EQ(Shown(narrow, 0), "#..- .##- .##- #..- ---- ");
}

TEST(Thumbnails, OnlyThoseThatTouchTheStripAreVisited) {
  const auto thumb = *MeasureThumbnails(10, 10, 10);
  const auto ends = [](const ThumbRange& range) { return std::pair(range.first, range.last); };
  EXPECT_EQ(ends(ThumbnailsInStrip(thumb, 0, 100, 10000)), std::pair(0, 9));
  EXPECT_EQ(ends(ThumbnailsInStrip(thumb, -50001, 100, 10000)), std::pair(5000, 5010));
  EXPECT_EQ(ends(ThumbnailsInStrip(thumb, -500, 100, 3)), std::pair(50, 2));
  EXPECT_EQ(ends(ThumbnailsInStrip(thumb, 0, 100, INT32_MIN)), std::pair(0, -1));
  EXPECT_EQ(ends(RollFramesToVisit(thumb, -105, 105, 10000)), std::pair(10, 21));
  EXPECT_EQ(ends(RollFramesToVisit(thumb, 0, 100, 5)), std::pair(0, 4));
}

TEST(Thumbnails, AreFoundUnderThePointer) {
  const auto thumb = MeasureThumbnails(640, 480, 76);
  const std::pair<double, int> unscrolled[] = {{100, 0}, {101, 1}, {-100, 0}, {-101, -1}, {100.6, 1}};
  for (const auto& [x, index] : unscrolled) EXPECT_EQ(ThumbnailAt(*thumb, x, 0), index) << x;
  EXPECT_EQ(ThumbnailAt(*thumb, 0, -1013), 10);
  EXPECT_EQ(OffsetForPosition(*thumb, 10), -1013);  // 1013.33, not 10 thumbnails of 101
  EXPECT_EQ(ThumbnailLeft(*thumb, -1013232, 30000000), 3028986768);
}

}  // namespace
}  // namespace painter
