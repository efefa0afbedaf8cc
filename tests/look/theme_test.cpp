#include "look/theme.h"

#include <gtest/gtest.h>

#include <map>

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

TEST(Theme, TakesNumbersAndNothingElse) {
  const std::pair<const char*, Color> cases[] = {{"255", 255},   {" 7 ", 7}, {"-1", -1},
                                                 {"+12.75", 13}, {"2.5", 2}, {"99999999999", 2147483647}};
  for (const auto& [text, number] : cases)
    EXPECT_EQ(ThemeFrom({{"Button_Fill_Color", text}})[ThemeKey::ButtonFill], number) << text;
  for (const char* text : {"", "  ", "red", "12 apples", "0x10", "1,2", "1.2.3", "-", ".", "--5"})
    EXPECT_EQ(ThemeFrom({{"Button_Fill_Color", text}})[ThemeKey::ButtonFill], 12632256) << text;
}

TEST(Theme, AHostWithoutSettingsHasItsOwnColours) {
  const ThemeColors theme = ThemeFrom({});
  std::vector<Color> colors;
  for (int key = 0; key < kThemeKeys; ++key) colors.push_back(theme[static_cast<ThemeKey>(key)]);
  EXPECT_EQ(colors, (std::vector<Color>{
                        Rgb(224, 224, 224), Rgb(32, 32, 32), Rgb(192, 192, 192), Rgb(112, 112, 112),
                        Rgb(192, 192, 192), Rgb(143, 149, 158), Rgb(255, 255, 255), Rgb(255, 244, 208),
                        Rgb(250, 232, 184), Rgb(85, 85, 102), Rgb(255, 238, 136), Rgb(143, 149, 158),
                        Rgb(201, 190, 193), Rgb(182, 197, 197), Rgb(189, 191, 181), 0, 0, 0, 0}));
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
  } dressed[] = {{"vl_button18", "", 1, 1.2},
                 {"vl_button17", "Tool", 2, 1.3},
                 {"vl_button1", "Setting", 3, 1.3},
                 {"vl_button1", "Action", 4, 1.3},
                 // Tags and names count in their exact case.
                 {"vl_button1", "tool", 1, 1.2},
                 {"vl_button60", "", 1, 1.2}};
  for (const auto& row : dressed) {
    const auto dress = DressOfButton(row.name, row.tag, theme);
    ASSERT_TRUE(dress) << row.name;
    EXPECT_EQ(dress->fill, row.fill) << row.name << " " << row.tag;
    EXPECT_EQ(dress->gradient, row.gradient) << row.name << " " << row.tag;
  }
  for (const char* name : {"vl_button6", "vl_button9", "vl_button13", "vl_button16"})
    EXPECT_FALSE(DressOfButton(name, "Tool", theme)) << name;
  EXPECT_FALSE(DressOfButton("vl_button1", "Color", theme));
}

}  // namespace
}  // namespace look
