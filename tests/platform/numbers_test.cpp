#include "platform/numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace platform {
namespace {

TEST(Numbers, RoundToNearestWithTiesToEvenAndStayInRange) {
  const struct {
    double value;
    std::int32_t nearest, below;
  } cases[] = {{0.5, 0, 0},
               {1.5, 2, 1},
               {2.5, 2, 2},
               {-0.5, 0, -1},
               {-1.5, -2, -2},
               {2.49, 2, 2},
               {1e300, INT32_MAX, INT32_MAX},
               {-1e300, INT32_MIN, INT32_MIN},
               {-0.0, 0, 0}};
  for (const auto& c : cases) {
    EXPECT_EQ(RoundToLong(c.value), c.nearest) << c.value;
    EXPECT_EQ(FloorToLong(c.value), c.below) << c.value;
  }
  EXPECT_EQ(RoundToShort(40000), INT16_MAX);
  EXPECT_EQ(RoundToLong(0.0 / 0.0), 0);
  EXPECT_EQ(IntegerDivide(-100.4, 101.33), 0) << "cut toward zero, not down";
  EXPECT_EQ(IntegerDivide(-152, 101.33), -1);
}

TEST(Numbers, ReadTheNumberAtTheStartOfAText) {
  const std::string nines(400, '9');
  const struct {
    std::string text;
    double value;
    bool is_number;
  } cases[] = {{"29.97", 29.97, true},
               {"12 fps", 12, true},
               {"", 0, false},
               {"  24", 24, true},
               {"-3", -3, true},
               {"+3", 3, true},
               {".5", 0.5, true},
               {"1.2.3", 1.2, true},
               {"12,5", 12, true},
               {"fps 12", 0, false},
               {"-", 0, false},
               {".", 0, false},
               {"1e3", 1, true},
               {"0x10", 0, true},
               {"inf", 0, false},
               {nines, std::numeric_limits<double>::max(), true},
               {"-" + nines + ".5", std::numeric_limits<double>::lowest(), true},
               {"0." + std::string(400, '0') + nines, 0, true}};
  EXPECT_FALSE(std::signbit(NumberAtStart("-0")));
  for (const auto& c : cases) {
    EXPECT_EQ(NumberAtStart(c.text), c.value) << c.text;
    EXPECT_EQ(StartsWithNumber(c.text), c.is_number) << c.text;
  }
}

TEST(Numbers, AreWrittenInTheirForms) {
  EXPECT_EQ(NumberText(29.97), "29.97");
  EXPECT_EQ(NumberText(12), "12");
  EXPECT_EQ(NumberText(1e15), "1000000000000000");
  EXPECT_EQ(SignedForm(13), " 13");
  EXPECT_EQ(SignedForm(-13), "-13");
  const struct {
    double value;
    const char* point;
    const char* comma;
  } cases[] = {{12.34, "12.3", "12,3"}, {0.5, ".5", ",5"},  {3, "3.", "3,"},
               {0, ".", ","},           {0.25, ".3", ",3"}, {9.96, "10.", "10,"}};
  for (const auto& c : cases) {
    EXPECT_EQ(OneDecimalPicture(c.value, '.'), c.point);
    EXPECT_EQ(OneDecimalPicture(c.value, ','), c.comma);
  }
}

TEST(Colors, HoldRedInTheLowestByte) {
  EXPECT_EQ(Rgb(85, 170, 255), 85 + 256 * 170 + 65536 * 255);
  EXPECT_EQ(RedOf(Rgb(1, 2, 3)), 1);
  EXPECT_EQ(GreenOf(Rgb(1, 2, 3)), 2);
  EXPECT_EQ(BlueOf(Rgb(1, 2, 3)), 3);
}

}  // namespace
}  // namespace platform
