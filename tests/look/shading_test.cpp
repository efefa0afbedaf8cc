#include "look/shading.h"

#include <gtest/gtest.h>

namespace look {
namespace {

using platform::Color;
using platform::Rgb;

constexpr Color kBlack = Rgb(0, 0, 0), kWhite = Rgb(255, 255, 255);

TEST(Shading, BrightensEachPartAndStopsAtWhite) {
  EXPECT_EQ(Scaled(Rgb(100, 200, 10), 1.2), Rgb(120, 240, 12));
  EXPECT_EQ(Scaled(Rgb(250, 200, 0), 1.3), Rgb(255, 255, 0));
  EXPECT_EQ(Scaled(Rgb(100, 50, 200), -1), kBlack);
  EXPECT_EQ(Mix(Rgb(0, 100, 200), Rgb(200, 100, 0), 0.25), Rgb(50, 100, 150));
}

TEST(Shading, ContrastFollowsPublishedValues) {
  EXPECT_NEAR(Contrast(kBlack, kWhite), 21, 1e-9);
  // The grey that is quoted as the lightest one to read on white.
  EXPECT_NEAR(Contrast(Rgb(118, 118, 118), kWhite), 4.54, 0.01);
}

TEST(Shading, TextIsBlackOnBrightAndWhiteOnDarkGrounds) {
  for (const Color bright : {Rgb(192, 192, 192), Rgb(0, 255, 0)})
    EXPECT_EQ(ReadableOn(bright), kBlack) << bright;
  // Blue looks dark and green bright, though their numbers are alike.
  for (const Color dark : {Rgb(85, 85, 102), Rgb(0, 0, 255)}) EXPECT_EQ(ReadableOn(dark), kWhite) << dark;
}

TEST(Shading, TurningLightnessKeepsTheHue) {
  EXPECT_EQ(LightnessTurned(Rgb(40, 40, 40)), Rgb(215, 215, 215));
  EXPECT_EQ(LightnessTurned(Rgb(120, 0, 0)), Rgb(255, 135, 135));
  EXPECT_EQ(LightnessTurned(Rgb(255, 0, 0)), Rgb(255, 0, 0));
}

}  // namespace
}  // namespace look
