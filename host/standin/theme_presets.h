// The colour themes that the stand-in offers for its tools.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace host {

/// Colours are red + 256 x green + 65536 x blue, flags 0 or 1. The default theme has no numbers: its settings
/// are missing from the store.
enum class Theme { Default, Dark, Loud };
inline constexpr std::array kThemes = {Theme::Default, Theme::Dark, Theme::Loud};

std::string_view ThemeName(Theme theme);
/// The name of the wallpaper that goes with the colours; every theme has its own.
std::string_view ThemeWallpaper(Theme theme);

struct ThemeRow {
  std::string_view key;
  std::int32_t dark, loud;
};
/// Every setting that a theme has, by its key in the store.
std::span<const ThemeRow> ThemeRows();

/// The text that a theme puts into the store for a setting, or nothing where the setting is removed.
std::optional<std::string> ThemeText(const ThemeRow& row, Theme theme);

/// The theme that a store holds, read by key; nothing if it holds colours of the user's own.
std::optional<Theme> ThemeInStore(
    const std::function<std::optional<std::string>(std::string_view key)>& read);

}  // namespace host
