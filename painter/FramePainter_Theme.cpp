// The frame painter's twins of the main window's theme routines.
#include "look/ThemeWalk.h"
#include "painter/FramePainter.h"

namespace painter {

/// Unlike the main window's, this one leaves buttons as they are. Only the host calls it.
void FramePainter::PrefsCallback(platform::Window& form) {
  const look::ThemeColors theme = look::ReadHostTheme();
  form.SetBackColor(look::kBackdrop);
  look::DressControls(form, theme, look::ButtonsAre::LeftAlone);
}

void FramePainter::Draw_Pattern(platform::Window& form) { look::TileWindow(form, Image1); }

}  // namespace painter
