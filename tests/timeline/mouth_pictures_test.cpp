#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <set>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

constexpr std::size_t kSide = 128, kHeader = 14 + 40, kPixels = kHeader + 4 * 256;

std::uint32_t Number(const Bytes& file, std::size_t at, std::size_t width) {
  std::uint32_t n = 0;
  for (std::size_t i = width; i-- > 0;) n = n * 256 + file.at(at + i);
  return n;
}

/// The levels of a band of 4 pixels along all four edges.
std::set<int> LevelsAlongEdges(const Bytes& file) {
  std::set<int> levels;
  const auto at_edge = [](std::size_t place) { return place < 4 || place >= kSide - 4; };
  for (std::size_t i = 0; i < kSide * kSide; ++i)
    if (at_edge(i % kSide) || at_edge(i / kSide)) levels.insert(file.at(kPixels + i));
  return levels;
}

double MeanDifference(const Bytes& a, const Bytes& b) {
  double sum = 0;
  for (std::size_t i = kPixels; i < a.size(); ++i) sum += std::abs(int{a[i]} - int{b.at(i)});
  return sum / (kSide * kSide);
}

/// Eleven uncompressed grey bitmaps of 128 by 128 pixels on the ground of their set, any two of them
/// different enough to be told apart: by a least mean difference in grey levels.
void CheckMouths(const std::string& folder, const std::set<int>& ground, double least_difference) {
  std::vector<Bytes> mouths;
  for (int number = 1; number <= 11; ++number) {
    SCOPED_TRACE(folder + "/" + std::to_string(number));
    std::ifstream stream(SOURCE_DIR "/assets/mouths/" + folder + "/" + std::to_string(number) + ".bmp");
    const Bytes file((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
    ASSERT_EQ(file.size(), kPixels + kSide * kSide);
    for (const auto& [at, value] : {std::pair{10u, kPixels}, {18u, kSide}, {22u, kSide}, {30u, 0}})
      EXPECT_EQ(Number(file, at, 4), value) << "at " << at;
    EXPECT_EQ(Number(file, 28, 2), 8u);
    for (std::uint32_t n = 0; n < 256; ++n) ASSERT_EQ(Number(file, kHeader + 4 * n, 4), n * 0x010101);
    EXPECT_EQ(LevelsAlongEdges(file), ground);
    for (const Bytes& other : mouths) EXPECT_GT(MeanDifference(file, other), least_difference);
    mouths.push_back(file);
  }
}

TEST(MouthPictures, AreElevenGreyBitmapsThatOneTellsApart) {
  CheckMouths("sketch", {163, 164}, 4.0);
  CheckMouths("cartoon", {255}, 10.0);
}

}  // namespace
