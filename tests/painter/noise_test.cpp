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

TEST(Noise, AnswersNonsense) {
  EXPECT_EQ(At(NAN, 0.5, 0.5), 0);
  EXPECT_EQ(At(0.5, INFINITY, 0.5), 0);
  EXPECT_EQ(At(0.5, 0.5, -3e38), 0);
}

TEST(RandomSequence, IsUniformAndStartsTheSameEachTime) {
  UniformSequence draws;
  // The upper 24 of 64 bits, worked out apart; what a run draws must not change.
  EXPECT_EQ(UniformSequence().Next(), 128855.0f / 16777216.0f);
  double sum = 0;
  for (int i = 0; i < 10000; ++i) {
    const float draw = draws.Next();
    ASSERT_GE(draw, 0);
    ASSERT_LT(draw, 1);
    sum += draw;
  }
  EXPECT_NEAR(sum / 10000, 0.5, 0.02);
}

}  // namespace
}  // namespace painter
