// What the stand-in keeps in the per-user settings store: it owns the store, its tools only read there.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "host/standin/theme_presets.h"

namespace host {

/// The theme whose colours the store holds; nothing if they are none of the themes'.
std::optional<Theme> CurrentTheme();
/// Writes the theme's settings; those of the default theme are removed. False if the store can't be written.
bool StoreTheme(Theme theme);

/// The names of the wallpapers that come with the stand-in.
QStringList WallpaperNames();
/// The chosen wallpaper: one of those names, the path of a picture of the user's own, or nothing.
QString ChosenWallpaper();
/// Stores the choice. False if the store can't be written.
bool StoreWallpaper(const QString& name_or_path);

/// The file that tools load as wallpaper, empty for none. A wallpaper that comes with the stand-in is written
/// into the user's data folder first, since tools are given the name of a file.
QString WallpaperFile(const QString& name_or_path);

}  // namespace host
