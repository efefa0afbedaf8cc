#include "recorder/level.h"

#include <gtest/gtest.h>

#include <tuple>
#include <vector>

namespace recorder {
namespace {

using Samples = std::vector<std::int16_t>;

TEST(Level, IsThePeakInDecibelsOfFullScaleAtWhoseEndsTheSoundIsCut) {
  const std::tuple<Samples, double, bool> cases[] = {{{}, -60, false},
                                                     {{1, -1}, -60, false},
                                                     {{100, -16384, 3}, -6.0206, false},
                                                     {{32766, -32766}, 0, false},
                                                     {{32767}, 0, true},
                                                     {{-32768}, 0, true}};
  for (const auto& [samples, decibels, overloaded] : cases) {
    Meter meter(1000);
    meter.Take(samples);
    EXPECT_NEAR(meter.Bar(), decibels, 0.001);
    meter.Take(Samples(100, 0));
    EXPECT_EQ(meter.Overloaded(), overloaded) << decibels;
  }
}

TEST(Level, TheMeterJumpsUpAndFallsByTheTimeOfTheSamples) {
  Meter meter(1000);
  meter.Take(Samples(1000, 16384));
  meter.Take(Samples{-16384});  // the mark stands anew
  EXPECT_NEAR(meter.Bar(), -6.02, 0.01);
  meter.Take(Samples(500, 0));
  EXPECT_NEAR(meter.Bar(), -18.02, 0.01);
  EXPECT_NEAR(meter.Mark(), -6.02, 0.01);
  // The mark has stood for half a second; after one more it begins to fall.
  meter.Take(Samples(1250, 0));
  EXPECT_NEAR(meter.Bar(), -48.02, 0.01);
  EXPECT_NEAR(meter.Mark(), -12.02, 0.01);
  meter.Take(Samples(10000, 0));
  EXPECT_EQ(meter.Bar(), -60);
  EXPECT_EQ(meter.Mark(), -60);
}

}  // namespace
}  // namespace recorder
