#include "painter/noise.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "painter/random.h"

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

TEST(Noise, FillsTheRangeOnBothSides) {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> place(-300, 300);
  float least = 0, most = 0;
  double sum = 0;
  constexpr int kPoints = 200000;
  for (int i = 0; i < kPoints; ++i) {
    const float value = At(place(random), place(random), place(random));
    least = std::min(least, value);
    most = std::max(most, value);
    sum += value;
  }
  EXPECT_LT(least, -0.6f);
  EXPECT_GT(most, 0.6f);
  EXPECT_GT(least, -1.1f);
  EXPECT_LT(most, 1.1f);
  EXPECT_NEAR(sum / kPoints, 0, 0.01);
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

/// The first and second differences of the field to the left and to the right of a border between cells.
TEST(Noise, HasNoKinkAtTheBordersOfCells) {
  constexpr double kStep = 1.0 / 128;
  for (int axis = 0; axis < 3; ++axis)
    for (int cell = 1; cell < 40; ++cell) {
      const auto value = [&](int steps) {
        double point[3] = {0.3 + cell, 0.7, 0.45};
        point[axis] = cell + steps * kStep;
        return static_cast<double>(At(point[0], point[1], point[2]));
      };
      const double first_left = (value(0) - value(-1)) / kStep, first_right = (value(1) - value(0)) / kStep;
      const double second_left = (value(0) - 2 * value(-1) + value(-2)) / kStep / kStep;
      const double second_right = (value(2) - 2 * value(1) + value(0)) / kStep / kStep;
      EXPECT_NEAR(first_left, first_right, 0.1) << axis << " " << cell;
      EXPECT_NEAR(second_left, second_right, 3.0) << axis << " " << cell;
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

TEST(RandomSequence, GoesOnWithinARun) {
  UniformSequence expected;
  for (int i = 0; i < 5; ++i) EXPECT_EQ(NextRandom(), expected.Next());
}

}  // namespace
}  // namespace painter
