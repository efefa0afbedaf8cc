#include "timeline/mouth_names.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace timeline {
namespace {

TEST(MouthNames, TwentyFourNamesFallOnElevenDrawings) {
  const std::vector<std::vector<std::string>> names = {
      {"A", "I"}, {"B", "M", "P"}, {"Ch", "G", "K", "N", "R", "S", "T"},
      {"Closed"}, {"D"},           {"E"},
      {"F", "V"}, {"L", "Th"},     {"O"},
      {"U"},      {"Q", "W"}};
  ASSERT_EQ(names.size(), static_cast<std::size_t>(kMouths));
  for (std::size_t i = 0; i < names.size(); ++i)
    for (const std::string& name : names[i]) {
      EXPECT_EQ(MouthNumber(name), static_cast<int>(i) + 1) << name;
      EXPECT_EQ(MouthNumber(name + " "), static_cast<int>(i) + 1) << name;
      EXPECT_EQ(MouthNumber(name + "  "), std::nullopt) << name;
      EXPECT_EQ(MouthNumber(" " + name), std::nullopt) << name;
    }
  for (const char* text : {"", " ", "a", "q", "None", "Shape", "TH", "th ", "closed", "Thx", "A\n", "Å"})
    EXPECT_EQ(MouthNumber(text), std::nullopt) << '"' << text << '"';
  EXPECT_EQ(MouthInWords(*MouthNumber("Closed")), "closed, at rest");
  EXPECT_EQ(MouthInWords(*MouthNumber("D")), "half open");
  EXPECT_EQ(MouthInWords(*MouthNumber("M")), "lips pressed together");
  EXPECT_EQ(MouthInWords(*MouthNumber("F")), "upper teeth on the lower lip");
}

}  // namespace
}  // namespace timeline
