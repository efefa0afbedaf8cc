#include "painter/thumbnails.h"

#include <gtest/gtest.h>

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

/// Cells whose red and green spell x, whose blue is y plus 3 times the cell.
Retrieval Spelled(int width, int height, int count) {
  Retrieval retrieval{width, height, count, std::move(*MakeCellStore({width, height}, count))};
  for (int cell = 0; cell < count; ++cell) {
    const Planes planes = CellPlanes(retrieval.cells, cell);
    for (int y = 0; y <= height; ++y)
      for (int x = 0; x <= width; ++x) {
        const int place = y * (width + 1) + x;
        planes.red[place] = static_cast<std::uint8_t>(x);
        planes.green[place] = static_cast<std::uint8_t>(x >> 8);
        planes.blue[place] = static_cast<std::uint8_t>(y + 3 * cell);
      }
  }
  return retrieval;
}

// 640 by 480 in 76 rows: 101 1/3 wide, so 101 columns; the last ones sample x 633 = 2 * 256 + 121 and y 473.
TEST(Thumbnails, SampleTheNearestPixel) {
  const auto thumb = MeasureThumbnails(640, 480, 76);
  ASSERT_TRUE(thumb);
  const Retrieval retrieval = Spelled(640, 480, 1);
  Strip strip(250, 76);
  DrawThumbnail({*thumb, 0}, 1, CellPlanes(retrieval.cells, 0), Tone::kAsIs, strip.Write());
  EXPECT_EQ(strip.At(0, 100, 0), 7);  // left of it
  EXPECT_EQ(strip.At(0, 101, 0), 0);
  EXPECT_EQ(strip.At(0, 201, 75), 121);
  EXPECT_EQ(strip.At(1, 201, 75), 2);
  EXPECT_EQ(strip.At(2, 201, 75), 473 - 256);
  EXPECT_EQ(strip.At(2, 201, 1), 6);
  EXPECT_EQ(strip.At(0, 202, 75), 7);  // right of it
  EXPECT_EQ(strip.At(0, 150, 76), 7);  // the row more than the strip has pixels
}

// 20 by 12 in 6 rows is 10 wide; on a screen of twice the pixels every sample of the frame has one.
TEST(Thumbnails, ADenseScreenSamplesAtItsOwnSize) {
  const auto thumb = MeasureThumbnails(20, 12, 6);
  const Retrieval retrieval = Spelled(20, 12, 1);
  Strip twice(60, 12), odd(45, 9);
  DrawThumbnail({*thumb, -3, 2.0}, 1, CellPlanes(retrieval.cells, 0), Tone::kAsIs, twice.Write());
  EXPECT_EQ(twice.At(0, 13, 0), 7);
  for (int x = 0; x < 20; ++x) EXPECT_EQ(twice.At(0, 14 + x, 0), x);
  EXPECT_EQ(twice.At(0, 34, 0), 7);
  EXPECT_EQ(twice.At(2, 14, 11), 11);
  // From 10.5 to 25.5, so 11 to 25.
  DrawThumbnail({*thumb, -3, 1.5}, 1, CellPlanes(retrieval.cells, 0), Tone::kAsIs, odd.Write());
  const int wanted[] = {7, 0, 1, 2, 4};
  for (int x = 0; x < 5; ++x) EXPECT_EQ(odd.At(0, 10 + x, 8), wanted[x]) << x;
  EXPECT_EQ(odd.At(0, 25, 8), 18);
  EXPECT_EQ(odd.At(0, 26, 8), 7);
}

TEST(Thumbnails, AreNotToBeHadOfNothing) {
  EXPECT_FALSE(MeasureThumbnails(0, 480, 76));
  EXPECT_FALSE(MeasureThumbnails(640, 0, 76));
  EXPECT_FALSE(MeasureThumbnails(1, 10000, 76));
  EXPECT_EQ(MeasureThumbnails(5, 2, 1)->width, 2);  // 2.5, to the even neighbour
}

TEST(Thumbnails, AreCutAtBothEdges) {
  const auto thumb = MeasureThumbnails(8, 8, 8);
  const Retrieval retrieval = Spelled(8, 8, 3);
  Strip strip(13, 8);
  DrawCellsStrip({*thumb, -5}, retrieval, 1, strip.Write());
  EXPECT_EQ(strip.At(0, 0, 0), 5);    // cell 0 from its column 5 on
  EXPECT_EQ(strip.At(0, 3, 0), 255);  // cell 1, the selected one, as a negative
  EXPECT_EQ(strip.At(2, 3, 7), 255 - 10);
  EXPECT_EQ(strip.At(2, 11, 0), 6);  // cell 2, its first two columns
  EXPECT_EQ(strip.At(0, 12, 0), 1);
  EXPECT_EQ(strip.At(0, 13, 0), 7);  // the column more than the strip has pixels
}

TEST(Thumbnails, ShowBlankFramesWhiteAndMissingCellsCrossed) {
  const auto thumb = MeasureThumbnails(8, 8, 8);
  Retrieval retrieval = Spelled(8, 8, 2);
  FilmRoll roll{{kBlankFrame, 1, 5, 0}};
  Strip strip(40, 8);
  for (int frame = 0; frame < 3; ++frame) DrawRollFrame({*thumb, 0}, retrieval, roll, frame, strip.Write());
  EXPECT_EQ(strip.At(0, 0, 0), 255);
  EXPECT_EQ(strip.At(2, 8, 0), 3);
  EXPECT_EQ(strip.At(0, 16, 0), 0);  // the cross's arms
  EXPECT_EQ(strip.At(1, 23, 7), 0);
  EXPECT_EQ(strip.At(2, 23, 0), 0);
  EXPECT_EQ(strip.At(0, 20, 0), 255);
  EXPECT_EQ(strip.At(0, 24, 0), 7);  // frame 3 was not asked for
  retrieval.FrameWidth = 9;          // the store no longer fits
  DrawRollFrame({*thumb, 0}, retrieval, roll, 3, strip.Write());
  EXPECT_EQ(strip.At(0, 24, 0), 0);
  EXPECT_EQ(strip.At(0, 28, 0), 255);
}

TEST(Thumbnails, OnlyThoseThatTouchTheStripAreVisited) {
  const auto thumb = MeasureThumbnails(10, 10, 10);
  struct Case {
    int offset, width, count, first, last;
  };
  for (const Case& c : {Case{0, 100, 10000, 0, 9}, Case{-50001, 100, 10000, 5000, 5010},
                        Case{0, 100, 3, 0, 2}, Case{-500, 100, 3, 50, 2}, Case{0, 100, INT32_MIN, 0, -1}}) {
    const auto range = ThumbnailsInStrip(*thumb, c.offset, c.width, c.count);
    EXPECT_EQ(range.first, c.first) << c.offset;
    EXPECT_EQ(range.last, c.last) << c.offset;
  }
  for (const Case& c : {Case{-105, 105, 10000, 10, 21}, Case{0, 100, 5, 0, 4}}) {
    const auto range = RollFramesToVisit(*thumb, c.offset, c.width, c.count);
    EXPECT_EQ(range.first, c.first) << c.offset;
    EXPECT_EQ(range.last, c.last) << c.offset;
  }
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
