#include "painter/noise.h"

#include <gtest/gtest.h>

#include <cmath>

namespace painter {
namespace {

// Worked out with an independent script from the rule: shuffled table, 48 gradients, fifth-degree fade.
TEST(Noise, GivesTheSameValuesEverywhere) {
  EXPECT_EQ(noise3({0.5f, 0.5f, 0.5f}), 0.234375f);
  EXPECT_EQ(noise3({0.25f, 3.5f, 0.75f}), 0.162186921f);
  EXPECT_EQ(noise3({17.125f, -2.375f, 0.5f}), 0.267679393f);
  EXPECT_EQ(noise3({255.5f, 256.25f, -0.75f}), 0.0372339487f);
  EXPECT_EQ(noise3({38.375f, 21.5f, 0.625f}), -0.202966124f);
}

TEST(Noise, AnswersNonsense) {
  EXPECT_EQ(noise3({NAN, 0.5f, 0.5f}), 0);
  EXPECT_EQ(noise3({0.5f, INFINITY, 0.5f}), 0);
  EXPECT_EQ(noise3({0.5f, 0.5f, -1e9f}), 0);
}

// The upper 24 of 64 bits, worked out apart; what a run draws must not change.
TEST(RandomSequence, StartsTheSameEachTime) {
  UniformSequence draws;
  for (const int upper : {128855, 8907799, 2535374})
    EXPECT_EQ(draws.Next(), static_cast<float>(upper) / 16777216.0f);
}

}  // namespace
}  // namespace painter
