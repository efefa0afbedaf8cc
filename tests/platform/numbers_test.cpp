#include "platform/numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <tuple>

namespace platform {
namespace {

TEST(Numbers, RoundToNearestWithTiesToEvenAndStayInRange) {
  const std::tuple<double, std::int32_t, std::int32_t> cases[] = {{1.5, 2, 1},
                                                                  {2.5, 2, 2},
                                                                  {-0.5, 0, -1},
                                                                  {2.49, 2, 2},
                                                                  {1e300, INT32_MAX, INT32_MAX},
                                                                  {-1e300, INT32_MIN, INT32_MIN}};
  for (const auto& [value, nearest, below] : cases) {
    EXPECT_EQ(RoundToLong(value), nearest) << value;
    EXPECT_EQ(FloorToLong(value), below) << value;
  }
  EXPECT_EQ(RoundToShort(40000), INT16_MAX);
  EXPECT_EQ(RoundToLong(0.0 / 0.0), 0);
  EXPECT_EQ(IntegerDivide(-100.4, 101.33), 0) << "cut toward zero, not down";
  EXPECT_EQ(IntegerDivide(-152, 101.33), -1);
  EXPECT_EQ(IntegerDivide(7, 0.4), 0);
}

TEST(Numbers, ReadTheNumberAtTheStartOfAText) {
  const std::pair<const char*, double> cases[] = {
      {"20.97", 20.97}, {"12 fps", 12},           {"+3", 3},
      {".5", 0.5},      {"1.2.3", 1.2},           {"12,5", 12},
      {"1e3", 1},       {" - 1\t2 . 5 x", -12.5}, {"1 2.3 .4", 12.3}};
  for (const auto& [text, value] : cases) EXPECT_EQ(NumberAtStart(text), value) << text;
  for (const char* none : {"", "fps 12", "+-1", ".", "0x10", "inf"})
    EXPECT_EQ(NumberAtStart(none), 0) << none;
  EXPECT_FALSE(std::signbit(NumberAtStart("-0")));
  const std::string nines(400, '9');
  EXPECT_EQ(NumberAtStart(nines), std::numeric_limits<double>::max());
  EXPECT_EQ(NumberAtStart("-" + nines + ".5"), std::numeric_limits<double>::lowest());
  EXPECT_EQ(NumberAtStart("0." + std::string(400, '0') + nines), 0);
}

TEST(Numbers, AreWrittenInTheirForms) {
  EXPECT_EQ(NumberText(29.97), "29.97");
  EXPECT_EQ(NumberText(1e15), "1000000000000000");
  EXPECT_EQ(SignedForm(13), " 13");
  EXPECT_EQ(SignedForm(-13), "-13");
  const std::pair<double, const char*> pictures[] = {{12.34, "12,3"}, {0.5, ",5"},   {3, "3,"},
                                                     {0, ","},        {0.25, ",3"},  {9.96, "10,"},
                                                     {-0.04, ","},    {-2.3, "-2,3"}};
  for (const auto& [value, picture] : pictures) EXPECT_EQ(OneDecimalPicture(value, ","), picture);
  EXPECT_EQ(OneDecimalPicture(12.34, "\u066B"), "12\u066B3");
}

TEST(Numbers, NameAnAmountOfMemory) {
  for (const auto& [bytes, above, below] :
       {std::tuple{1e9, "1 GB", "1 GB"}, {135., "0.1 MB", "0 MB"}, {25e6, "25 MB", "25 MB"}}) {
    EXPECT_EQ(SizeText(bytes, RoundTo::Above), above);
    EXPECT_EQ(SizeText(bytes, RoundTo::Below), below);
  }
}

}  // namespace
}  // namespace platform
