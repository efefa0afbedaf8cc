// The host's colours: which settings there are, their defaults, and what a control takes of them.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/numbers.h"

namespace look {

/// The settings, in the order in which they are read.
enum class ThemeKey {
  Shine,
  Shadow,
  HalfShine,
  HalfShadow,
  ButtonFill,
  ScrollFill,
  ScrollBar,
  TabHighlight,
  Ruler,
  TextboxFill,
  TextboxText,
  SpecialBackdrop,
  SpecialTool,
  SpecialSetting,
  SpecialAction,
  BorderlessButtons,
  BorderlessScrollers,
  BorderlessStrings,
  BorderlessTabs,
};
inline constexpr int kThemeKeys = 19;

/// The windows' own ground; no setting changes it.
inline constexpr platform::Color kBackdrop = platform::Rgb(143, 149, 158);

struct ThemeSetting {
  std::string_view key;
  platform::Color default_number;
};
/// In the order of ThemeKey: 15 colours, then 4 flags.
const std::array<ThemeSetting, kThemeKeys>& ThemeSettings();

/// The numbers of one run; kept nowhere after it.
class ThemeColors {
 public:
  platform::Color operator[](ThemeKey key) const { return numbers_[static_cast<std::size_t>(key)]; }
  platform::Color& operator[](ThemeKey key) { return numbers_[static_cast<std::size_t>(key)]; }

 private:
  std::array<platform::Color, kThemeKeys> numbers_{};
};

/// Text of a setting by its key, or nothing where it is missing.
using SettingReader = std::function<std::optional<std::string>(std::string_view key)>;

/// Reads the 19 settings in order. A missing one and one that isn't the text of a number (blanks around it
/// count for nothing, a fraction is rounded) give the default.
ThemeColors ReadTheme(const SettingReader& read);

/// What a button takes, beyond the edges that all of them share.
struct ButtonDress {
  platform::Color fill;
  double gradient;
};

/// The dress of a button by its name and tag; nothing for one that is left alone: the eight track buttons,
/// whose colour is a track's, in whatever window, and those with the tag "Color".
std::optional<ButtonDress> DressOfButton(std::string_view name, std::string_view tag,
                                         const ThemeColors& theme);

}  // namespace look
