#include "look/theme.h"

#include <algorithm>
#include <cctype>

namespace look {
namespace {

using platform::Rgb;

/// NumberAtStart takes "12 apples" for 12; a setting must be a number as a whole.
bool IsNumber(std::string_view text) {
  const auto blank = [](char letter) { return std::isspace(static_cast<unsigned char>(letter)) != 0; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
  const auto digits =
      std::count_if(text.begin(), text.end(), [](char letter) { return letter >= '0' && letter <= '9'; });
  const auto points = std::count(text.begin(), text.end(), '.');
  return digits > 0 && points <= 1 && digits + points == static_cast<std::ptrdiff_t>(text.size());
}

platform::Color NumberOr(const std::optional<std::string>& text, platform::Color default_number) {
  if (!text || !IsNumber(*text)) return default_number;
  return platform::RoundToLong(platform::NumberAtStart(*text));
}

constexpr std::array<std::string_view, 8> kTrackButtons = {"vl_button6",  "vl_button7",  "vl_button8",
                                                           "vl_button9",  "vl_button13", "vl_button14",
                                                           "vl_button15", "vl_button16"};

struct TagDress {
  std::string_view tag;
  ThemeKey fill;
};
constexpr std::array<TagDress, 3> kTagDresses = {{{"Setting", ThemeKey::SpecialSetting},
                                                  {"Action", ThemeKey::SpecialAction},
                                                  {"Tool", ThemeKey::SpecialTool}}};
constexpr double kGradient = 1.2, kTaggedGradient = 1.3;

}  // namespace

const std::array<ThemeSetting, kThemeKeys>& ThemeSettings() {
  static constexpr std::array<ThemeSetting, kThemeKeys> settings = {{
      {"Shine_Color", Rgb(224, 224, 224)},
      {"Shadow_Color", Rgb(32, 32, 32)},
      {"Half_Shine_Color", Rgb(192, 192, 192)},
      {"Half_Shadow_Color", Rgb(112, 112, 112)},
      {"Button_Fill_Color", Rgb(192, 192, 192)},
      {"Scroll_Fill_Color", Rgb(143, 149, 158)},
      {"Scroll_Bar_Color", Rgb(255, 255, 255)},
      {"Tab_Highlight_Color", Rgb(255, 244, 208)},
      {"Ruler_Color", Rgb(250, 232, 184)},
      {"Textbox_Fill_Color", Rgb(85, 85, 102)},
      {"Textbox_Text_Color", Rgb(255, 238, 136)},
      {"Special_Backdrop_Color", Rgb(143, 149, 158)},
      {"Special_Tool_Color", Rgb(201, 190, 193)},
      {"Special_Setting_Color", Rgb(182, 197, 197)},
      {"Special_Action_Color", Rgb(189, 191, 181)},
      {"Borderless_Buttons", 0},
      {"Borderless_Scrollers", 0},
      {"Borderless_Strings", 0},
      {"Borderless_Tabs", 0},
  }};
  return settings;
}

ThemeColors ReadTheme(const SettingReader& read) {
  ThemeColors theme;
  for (int key = 0; key < kThemeKeys; ++key) {
    const ThemeSetting& setting = ThemeSettings()[static_cast<std::size_t>(key)];
    theme[static_cast<ThemeKey>(key)] = NumberOr(read(setting.key), setting.default_number);
  }
  return theme;
}

std::optional<ButtonDress> DressOfButton(std::string_view name, std::string_view tag,
                                         const ThemeColors& theme) {
  if (std::find(kTrackButtons.begin(), kTrackButtons.end(), name) != kTrackButtons.end()) return std::nullopt;
  if (tag == "Color") return std::nullopt;
  for (const TagDress& dress : kTagDresses) {
    if (dress.tag == tag) return ButtonDress{theme[dress.fill], kTaggedGradient};
  }
  return ButtonDress{theme[ThemeKey::ButtonFill], kGradient};
}

}  // namespace look
