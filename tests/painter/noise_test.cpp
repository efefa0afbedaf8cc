#include "painter/noise.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace painter {
namespace {

float At(double x, double y, double z) {
  const float point[3] = {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
  return noise3(point);
}

// Worked out with an independent script from the rule: shuffled table, 48 gradients, fifth-degree fade.
TEST(Noise, GivesTheSameValuesEverywhere) {
  EXPECT_EQ(At(0.5, 0.5, 0.5), 0.234375f);
  EXPECT_EQ(At(0.25, 3.5, 0.75), 0.162186921f);
  EXPECT_EQ(At(17.125, -2.375, 0.5), 0.267679393f);
  EXPECT_EQ(At(255.5, 256.25, -0.75), 0.0372339487f);
  EXPECT_EQ(At(38.375, 21.5, 0.625), -0.202966124f);
}

// Along the edges of the lattice too, where two of the three coordinates are whole.
TEST(Noise, IsZeroAtLatticePointsAndNotBetweenThem) {
  for (int cell = 0; cell < 200; ++cell) {
    EXPECT_EQ(At(cell, 2 * cell, 7), 0);
    float most = 0;
    for (const double way : {0.25, 0.4, 0.5, 0.75})
      most = std::max({most, std::fabs(At(cell + way, 3, 0)), std::fabs(At(5, cell + way, 1))});
    EXPECT_GT(most, 0) << cell;
  }
}

TEST(Noise, AnswersNonsense) {
  EXPECT_EQ(At(NAN, 0.5, 0.5), 0);
  EXPECT_EQ(At(0.5, INFINITY, 0.5), 0);
  EXPECT_EQ(At(0.5, 0.5, -3e38), 0);
}

TEST(RandomSequence, IsUniformAndStartsTheSameEachTime) {
  UniformSequence first, second;
  double sum = 0;
  int below_a_quarter = 0;
  for (int i = 0; i < 10000; ++i) {
    const float draw = first.Next();
    EXPECT_EQ(draw, second.Next());
    ASSERT_GE(draw, 0);
    ASSERT_LT(draw, 1);
    sum += draw;
    below_a_quarter += draw < 0.25f;
  }
  EXPECT_NEAR(sum / 10000, 0.5, 0.02);
  EXPECT_NEAR(below_a_quarter, 2500, 150);
}

}  // namespace
}  // namespace painter
