#include "timeline/mouth_names.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace timeline {
namespace {

TEST(MouthNames, TwentyFourNamesFallOnElevenDrawings) {
  const std::pair<std::vector<std::string>, const char*> mouths[kMouths] = {
      {{"A", "I"}, "open wide"},
      {{"B", "M", "P"}, "lips pressed together"},
      {{"Ch", "G", "K", "N", "R", "S", "T"}, "teeth together, lips drawn apart"},
      {{"Closed"}, "closed, at rest"},
      {{"D"}, "half open"},
      {{"E"}, "open, lips spread"},
      {{"F", "V"}, "upper teeth on the lower lip"},
      {{"L", "Th"}, "tongue raised behind the upper teeth"},
      {{"O"}, "round, open"},
      {{"U"}, "round, smaller, lips pushed forward"},
      {{"Q", "W"}, "small, pursed"}};
  int number = 0;
  for (const auto& [names, words] : mouths) {
    EXPECT_EQ(MouthInWords(++number), words);
    for (const std::string& name : names) {
      EXPECT_EQ(MouthNumber(name), number) << name;
      EXPECT_EQ(MouthNumber(name + " "), number) << name;
      EXPECT_EQ(MouthNumber(name + "  "), std::nullopt) << name;
    }
  }
  for (const char* text : {"", " ", "a", "q", "None", "Shape", "TH", "th ", "closed", "Thx", "A\n", "Å"})
    EXPECT_EQ(MouthNumber(text), std::nullopt) << '"' << text << '"';
}

}  // namespace
}  // namespace timeline
