#include "platform/pixels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <tuple>

namespace platform {
namespace {

constexpr Color kBlack = Rgb(0, 0, 0);
constexpr Color kWhite = Rgb(255, 255, 255);

class Sheet {
 public:
  /// Its rows lie a pixel apart.
  Sheet(int width, int height, double scale = 1)
      : pixels_(static_cast<std::size_t>((width + 1) * height), PixelFrom(kWhite)) {
    view = MakeView(pixels_.data(), width, height, width + 1, scale);
  }

  /// Rows of '#' where the pixel isn't white any more.
  std::string Shown() const {
    std::string text;
    for (int y = 0; y < view.height; ++y) {
      for (int x = 0; x < view.width; ++x) text += view.Row(y)[x] == PixelFrom(kWhite) ? '.' : '#';
      text += '\n';
    }
    return text;
  }

  PixelView view;

 private:
  std::vector<Pixel> pixels_;
};

TEST(DrawLine, TakesOnePixelInEachStepOfItsLongerDirection) {
  const struct {
    const char* what;
    double x1, y1, x2, y2;
    const char* shown;
  } cases[] = {
      {"ends to the nearest, ties to even", 0.5, 1.5, 4.4, 2.4, "......\n......\n#####.\n"},
      {"beyond all numbers", -1e300, 1, 1e300, 1, "......\n######\n......\n"},
  };
  for (const auto& c : cases) {
    Sheet sheet(6, 3);
    DrawLine(sheet.view, c.x1, c.y1, c.x2, c.y2, kBlack);
    EXPECT_EQ(sheet.Shown(), c.shown) << c.what;
  }
}

// The rule told without any cutting: along the shorter direction to the nearest, ties toward the start.
bool OnLine(int x1, int y1, int x2, int y2, int x, int y) {
  const int length = std::abs(x2 - x1);
  if (length < std::abs(y2 - y1)) return OnLine(y1, x1, y2, x2, y, x);
  if (x < std::min(x1, x2) || x > std::max(x1, x2)) return false;
  const double rise = length == 0 ? 0 : static_cast<double>(std::abs((y2 - y1) * (x - x1))) / length;
  return std::abs(y - y1) == std::ceil(rise - 0.5) && (y == y1 || (y < y1) == (y2 < y1));
}

TEST(DrawLine, ACutNeverMovesAPixel) {
  unsigned seed = 1;
  const auto next = [&seed] {
    return static_cast<int>((seed = seed * 1664525u + 1013904223u) >> 8) % 41 - 16;
  };
  for (int i = 0; i < 2000; ++i) {
    const int x1 = next(), y1 = next(), x2 = next(), y2 = next();
    Sheet sheet(9, 7);
    DrawLine(sheet.view.Within({2, 1, 8, 6}), x1, y1, x2, y2, kBlack);
    for (int y = 0; y < 7; ++y)
      for (int x = 0; x < 9; ++x) {
        const bool inside = x >= 2 && x < 8 && y >= 1 && y < 6;
        ASSERT_EQ(sheet.view.Row(y)[x] == PixelFrom(kBlack), inside && OnLine(x1, y1, x2, y2, x, y))
            << x1 << ',' << y1 << " to " << x2 << ',' << y2 << " at " << x << ',' << y;
      }
  }
}

TEST(DrawPen, PutsLinesBelowAFlatOneAndBesideASteepOne) {
  const struct {
    double scale, x1, y1, x2, y2;
    const char* shown;
  } cases[] = {{2, 1, 1, 2, 1, "......\n......\n..###.\n..###.\n"},
               {2, 1, 0, 1, 1, "..##..\n..##..\n..##..\n......\n"},
               {2, 0, 0, 1, 1, "#.....\n##....\n.##...\n..#...\n"},
               {1.75, 1, 1, 1, 1, "......\n......\n..#...\n..#...\n"},
               {1.5, 2, 1, 2, 1, "......\n......\n...#..\n......\n"}};
  for (const auto& c : cases) {
    Sheet sheet(6, 4, c.scale);
    DrawPen(sheet.view, c.x1, c.y1, c.x2, c.y2, kBlack);
    EXPECT_EQ(sheet.Shown(), c.shown);
  }
}

TEST(Boxes, FillAndInvertAreCut) {
  Sheet sheet(4, 3);
  FillBox(sheet.view, {-5, 1, 2, 99}, Rgb(1, 2, 3));
  EXPECT_EQ(sheet.Shown(), "....\n##..\n##..\n");
  InvertBox(sheet.view, {1, 1, 9, 2});
  EXPECT_EQ(sheet.view.Row(1)[0], 0xFF010203u);
  EXPECT_EQ(sheet.view.Row(1)[1], 0xFFFEFDFCu);
  EXPECT_EQ(sheet.Shown(), "....\n####\n##..\n");
}

TEST(BlendMask, MixesByCoverageAtItsOffsetAndStaysInTheClip) {
  const TextMask mask{1, -1, 3, 2, 0, {255, 51, 0, 0, 255, 255}};
  for (const auto& [clip, shown] : {std::pair(PixelBox{0, 0, 3, 2}, ".##.\n..#.\n"),
                                    {PixelBox{0, 1, 3, 2}, "....\n..#.\n"},
                                    {PixelBox{2, 0, 4, 2}, "..#.\n..##\n"}}) {
    Sheet sheet(4, 2);
    BlendMask(sheet.view.Within(clip), 0, 1, mask, kBlack);
    EXPECT_EQ(sheet.Shown(), shown);
  }
}

TEST(BlendMask, MixesToTheNearestOfEverySum) {
  TextMask mask;
  mask.width = mask.height = 1;
  for (int coverage = 1; coverage < 256; ++coverage)
    for (int under = 0; under < 256; under += 3)
      for (int over : {0, 34, 200, 255}) {
        Pixel pixel = PixelFrom(Rgb(under, over, 255 - under));
        mask.coverage = {static_cast<std::uint8_t>(coverage)};
        BlendMask(MakeView(&pixel, 1, 1, 1), 0, 0, mask, Rgb(over, under, over));
        const auto mixed = [coverage](int below, int above) {
          return (2 * (above * coverage + below * (255 - coverage)) + 255) / 510;
        };
        ASSERT_EQ(pixel, PixelFrom(Rgb(mixed(under, over), mixed(over, under), mixed(255 - under, over))))
            << coverage << ' ' << under << ' ' << over;
      }
}

TEST(Trimmed, KeepsThePlaceOfWhatIsCovered) {
  TextMask mask{-2, 3, 4, 4, 2.5, {0, 0, 0, 0, 0, 0, 9, 0, 0, 8, 0, 0, 0, 0, 0, 0}};
  const TextMask falls{-2, 3, 4, 4, 2.5, {0, 0, 0, 0, 0, 9, 0, 0, 0, 0, 8, 0, 0, 0, 0, 0}};
  const auto parts = [](const TextMask& m) {
    return std::tuple(m.left, m.top, m.width, m.height, m.advance, m.coverage);
  };
  EXPECT_EQ(parts(Trimmed(mask)), std::tuple(-1, 4, 2, 2, 2.5, std::vector<std::uint8_t>{0, 9, 8, 0}));
  EXPECT_EQ(parts(Trimmed(falls)), std::tuple(-1, 4, 2, 2, 2.5, std::vector<std::uint8_t>{9, 0, 0, 8}));
  mask.coverage.assign(16, 0);
  EXPECT_EQ(Trimmed(mask).width, 0);
  EXPECT_EQ(Trimmed(mask).advance, 2.5);
}

}  // namespace
}  // namespace platform
