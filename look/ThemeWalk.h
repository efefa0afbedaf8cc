// Dressing a window in the host's colours and wallpaper: what the main window and the frame painter share.
#pragma once

#include "look/theme.h"
#include "platform/Widgets.h"
#include "platform/Window.h"

namespace look {

/// The theme as the host's settings tell it at this moment.
ThemeColors ReadHostTheme();

enum class ButtonsAre { Dressed, LeftAlone };

/// Gives every control of a window, in order, what its kind takes of the theme; kinds that take nothing keep
/// what they have. Whatever a control refuses is passed over, statement by statement.
void DressControls(platform::Window& window, const ThemeColors& theme, ButtonsAre buttons);

/// Fills a picture holder from the file that the host names as its wallpaper; empties it where there is none
/// or it can't be loaded.
void HangWallpaper(platform::ImageHolder& tile);

/// Covers a window, while it is visible, with the tiles of a picture. Without a picture the window shows its
/// background.
void TileWindow(platform::Window& window, const platform::ImageHolder& tile);

}  // namespace look
