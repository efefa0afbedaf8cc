#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

constexpr std::size_t kSide = 128;
constexpr std::size_t kHeader = 14 + 40;
constexpr std::size_t kPixels = kHeader + 4 * 256;
constexpr int kMouths = 11;

Bytes ReadMouth(const std::string& look, int number) {
  const std::string path = SOURCE_DIR "/assets/mouths/" + look + "/" + std::to_string(number) + ".bmp";
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << path;
  return Bytes(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

std::uint32_t Number(const Bytes& file, std::size_t at, std::size_t width) {
  std::uint32_t n = 0;
  for (std::size_t i = width; i-- > 0;) n = n * 256 + file.at(at + i);
  return n;
}

/// The levels of a band of `margin` pixels along all four edges.
std::set<int> LevelsAlongEdges(const Bytes& file, std::size_t margin) {
  std::set<int> levels;
  for (std::size_t i = 0; i < kSide * kSide; ++i) {
    const std::size_t x = i % kSide, y = i / kSide;
    const bool edge = x < margin || y < margin || x >= kSide - margin || y >= kSide - margin;
    if (edge) levels.insert(file.at(kPixels + i));
  }
  return levels;
}

double MeanDifference(const Bytes& a, const Bytes& b) {
  double sum = 0;
  for (std::size_t i = kPixels; i < a.size(); ++i) sum += std::abs(int{a[i]} - int{b.at(i)});
  return sum / (kSide * kSide);
}

struct Look {
  const char* name;
  std::set<int> ground;
  double least_difference;  // of any two mouths, in grey levels a pixel
};

class MouthPictures : public testing::TestWithParam<Look> {};

TEST_P(MouthPictures, AreUncompressedGreyBitmapsOf128By128) {
  struct Field {
    std::size_t at, width;
    std::uint32_t value;
  };
  const Field fields[] = {{2, 4, kPixels + kSide * kSide},
                          {10, 4, kPixels},
                          {14, 4, 40},
                          {18, 4, kSide},
                          {22, 4, kSide},
                          {26, 2, 1},
                          {28, 2, 8},
                          {30, 4, 0}};
  for (int number = 1; number <= kMouths; ++number) {
    SCOPED_TRACE(number);
    const Bytes file = ReadMouth(GetParam().name, number);
    ASSERT_EQ(file.size(), kPixels + kSide * kSide);
    EXPECT_EQ(std::string(file.begin(), file.begin() + 2), "BM");
    for (const Field& f : fields) EXPECT_EQ(Number(file, f.at, f.width), f.value) << "at " << f.at;
    for (std::uint32_t n = 0; n < 256; ++n)
      ASSERT_EQ(Number(file, kHeader + 4 * n, 4), n * 0x010101) << "entry " << n;
  }
}

TEST_P(MouthPictures, StandOnTheGroundOfTheirSet) {
  for (int number = 1; number <= kMouths; ++number)
    EXPECT_EQ(LevelsAlongEdges(ReadMouth(GetParam().name, number), 4), GetParam().ground) << number;
}

TEST_P(MouthPictures, AreElevenMouthsThatOneTellsApart) {
  std::vector<Bytes> mouths;
  for (int number = 1; number <= kMouths; ++number) mouths.push_back(ReadMouth(GetParam().name, number));
  for (std::size_t a = 0; a < mouths.size(); ++a)
    for (std::size_t b = 0; b < a; ++b)
      EXPECT_GT(MeanDifference(mouths[a], mouths[b]), GetParam().least_difference)
          << a + 1 << " and " << b + 1;
}

INSTANTIATE_TEST_SUITE_P(Sets, MouthPictures,
                         testing::Values(Look{"sketch", {163, 164}, 4.0}, Look{"cartoon", {255}, 10.0}),
                         [](const auto& param) { return std::string(param.param.name); });

}  // namespace
