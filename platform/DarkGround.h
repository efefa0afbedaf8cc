// What no setting has a colour for follows the ground of its window: over a dark one it is dark too, or
// legible. For toolkit code only.
#pragma once

#include <QPalette>

class QPainter;
class QWidget;

namespace platform {

class Window;

/// The colours of what stands on a ground.
QPalette PaletteOn(bool dark_ground);

/// Tells a window's widget how its ground is; its scroll bars follow, but for those of a grid, which keeps
/// its own ground.
void NoteDarkGround(QWidget& window, bool dark);

/// A dialog takes on the darkness of the window that it stands over, if there is one.
void DressOver(const QWidget* owner, QWidget& dialog);

/// Labels stay black: on a dark ground each has a bright plate under it, a little larger than its text.
void PaintLabelPlates(const Window& window, QPainter& painter);

}  // namespace platform
