#include "look/theme.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace look {
namespace {

using platform::Color;
using platform::Rgb;

ThemeColors ThemeFrom(const std::map<std::string, std::string, std::less<>>& store) {
  return ReadTheme([&store](std::string_view key) -> std::optional<std::string> {
    const auto found = store.find(key);
    if (found == store.end()) return std::nullopt;
    return found->second;
  });
}

TEST(Theme, ReadsNineteenKeysInOrderAndFallsBackOnTheDefaults) {
  const std::vector<std::pair<std::string, Color>> expected = {{"Shine_Color", 14737632},
                                                               {"Shadow_Color", 2105376},
                                                               {"Half_Shine_Color", 12632256},
                                                               {"Half_Shadow_Color", 7368816},
                                                               {"Button_Fill_Color", 12632256},
                                                               {"Scroll_Fill_Color", 10392975},
                                                               {"Scroll_Bar_Color", 16777215},
                                                               {"Tab_Highlight_Color", 13694207},
                                                               {"Ruler_Color", 12118266},
                                                               {"Textbox_Fill_Color", 6706517},
                                                               {"Textbox_Text_Color", 8974079},
                                                               {"Special_Backdrop_Color", 10392975},
                                                               {"Special_Tool_Color", 12697289},
                                                               {"Special_Setting_Color", 12961206},
                                                               {"Special_Action_Color", 11911101},
                                                               {"Borderless_Buttons", 0},
                                                               {"Borderless_Scrollers", 0},
                                                               {"Borderless_Strings", 0},
                                                               {"Borderless_Tabs", 0}};
  std::vector<std::string> asked;
  const ThemeColors theme = ReadTheme([&](std::string_view key) -> std::optional<std::string> {
    asked.emplace_back(key);
    return std::nullopt;
  });
  ASSERT_EQ(asked.size(), expected.size());
  for (std::size_t at = 0; at < expected.size(); ++at) {
    EXPECT_EQ(asked[at], expected[at].first);
    EXPECT_EQ(theme[static_cast<ThemeKey>(at)], expected[at].second) << asked[at];
  }
}

TEST(Theme, TakesNumbersAndNothingElse) {
  constexpr Color kDefault = 12632256;
  const struct {
    const char* text;
    Color number;
  } cases[] = {{"255", 255},
               {" 16711680 ", 16711680},
               {"-1", -1},
               {"0", 0},
               {"2.5", 2},
               {"", kDefault},
               {"  ", kDefault},
               {"red", kDefault},
               {"12 apples", kDefault},
               {"#FF0000", kDefault},
               {"0x10", kDefault},
               {"1,2", kDefault},
               {"1.2.3", kDefault},
               {"-", kDefault},
               {".", kDefault},
               {"--5", kDefault},
               {"99999999999", 2147483647}};
  for (const auto& row : cases)
    EXPECT_EQ(ThemeFrom({{"Button_Fill_Color", row.text}})[ThemeKey::ButtonFill], row.number) << row.text;
}

TEST(Theme, ButtonsAreDressedByTagAndTrackButtonsNever) {
  const ThemeColors theme = ThemeFrom({{"Button_Fill_Color", "1"},
                                       {"Special_Tool_Color", "2"},
                                       {"Special_Setting_Color", "3"},
                                       {"Special_Action_Color", "4"}});
  const struct {
    const char *name, *tag;
    Color fill;
    double gradient;
  } dressed[] = {{"vl_button1", "", 1, 1.2},
                 {"vl_button18", "", 1, 1.2},
                 {"vl_button17", "Tool", 2, 1.3},
                 {"vl_button1", "Setting", 3, 1.3},
                 {"vl_button1", "Action", 4, 1.3},
                 // Tags and names count in their exact case.
                 {"vl_button1", "tool", 1, 1.2},
                 {"VL_Button6", "", 1, 1.2},
                 {"vl_button60", "", 1, 1.2}};
  for (const auto& row : dressed) {
    const auto dress = DressOfButton(row.name, row.tag, theme);
    ASSERT_TRUE(dress) << row.name;
    EXPECT_EQ(dress->fill, row.fill) << row.name << " " << row.tag;
    EXPECT_EQ(dress->gradient, row.gradient) << row.name << " " << row.tag;
  }
  for (const int number : {6, 7, 8, 9, 13, 14, 15, 16})
    EXPECT_FALSE(DressOfButton("vl_button" + std::to_string(number), "Tool", theme)) << number;
  EXPECT_FALSE(DressOfButton("vl_button1", "Color", theme));
}

}  // namespace
}  // namespace look
