#include "host/standin/theme_presets.h"

#include <algorithm>

#include "platform/numbers.h"

namespace host {
namespace {

using platform::Rgb;

constexpr auto kRows = std::to_array<ThemeRow>({
    {"Shine_Color", Rgb(118, 123, 133), Rgb(255, 226, 138)},
    {"Shadow_Color", Rgb(16, 17, 20), Rgb(110, 12, 84)},
    {"Half_Shine_Color", Rgb(96, 101, 110), Rgb(255, 190, 110)},
    {"Half_Shadow_Color", Rgb(34, 36, 41), Rgb(160, 30, 100)},
    {"Button_Fill_Color", Rgb(74, 79, 88), Rgb(255, 122, 66)},
    {"Scroll_Fill_Color", Rgb(50, 54, 61), Rgb(0, 150, 170)},
    {"Scroll_Bar_Color", Rgb(236, 178, 92), Rgb(255, 238, 40)},
    {"Tab_Highlight_Color", Rgb(236, 178, 92), Rgb(255, 238, 40)},
    {"Ruler_Color", Rgb(150, 154, 162), Rgb(255, 214, 90)},
    {"Textbox_Fill_Color", Rgb(30, 32, 37), Rgb(66, 0, 98)},
    {"Textbox_Text_Color", Rgb(226, 228, 232), Rgb(120, 255, 200)},
    {"Special_Backdrop_Color", Rgb(58, 62, 70), Rgb(255, 92, 160)},
    {"Special_Tool_Color", Rgb(84, 76, 80), Rgb(255, 160, 60)},
    {"Special_Setting_Color", Rgb(70, 84, 86), Rgb(80, 200, 120)},
    {"Special_Action_Color", Rgb(82, 84, 72), Rgb(90, 170, 255)},
    {"Borderless_Buttons", 0, 0},
    {"Borderless_Scrollers", 1, 0},
    {"Borderless_Strings", 1, 0},
    {"Borderless_Tabs", 1, 0},
});

}  // namespace

std::string_view ThemeName(Theme theme) {
  switch (theme) {
    case Theme::Dark:
      return "Dark";
    case Theme::Loud:
      return "Loud";
    case Theme::Default:
      break;
  }
  return "Default";
}

std::string_view ThemeWallpaper(Theme theme) {
  switch (theme) {
    case Theme::Dark:
      return "night";
    case Theme::Loud:
      return "paper";
    case Theme::Default:
      break;
  }
  return "slate";
}

std::span<const ThemeRow> ThemeRows() { return kRows; }

std::optional<std::string> ThemeText(const ThemeRow& row, Theme theme) {
  if (theme == Theme::Default) return std::nullopt;
  return std::to_string(theme == Theme::Dark ? row.dark : row.loud);
}

std::optional<Theme> ThemeInStore(
    const std::function<std::optional<std::string>(std::string_view key)>& read) {
  for (const Theme theme : kThemes) {
    const auto matches = [&](const ThemeRow& row) { return read(row.key) == ThemeText(row, theme); };
    if (std::ranges::all_of(kRows, matches)) return theme;
  }
  return std::nullopt;
}

}  // namespace host
