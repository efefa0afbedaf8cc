// The main window's part in the host's colours: it dresses itself and its two dialogs.
#include "app/Form1.h"
#include "audio/Form2.h"
#include "look/ThemeWalk.h"
#include "look/theme.h"
#include "platform/Application.h"
#include "sheet/Form3.h"

void Form1::PrefsCallback(platform::Window& form_object) {
  const look::ThemeColors theme = look::ReadHostTheme();
  form_object.SetBackColor(look::kBackdrop);
  look::DressControls(form_object, theme, look::ButtonsAre::Dressed);
  // Always the main window's mouth preview, whichever window was passed: a change of the settings since the
  // start shows there as soon as a dialog is first loaded.
  Picture1.SetBackColor(theme[look::ThemeKey::SpecialBackdrop]);
}

void Form1::DressDialogs() {
  if (form2.IfLoaded() != nullptr) PrefsCallback(*form2);
  if (form3.IfLoaded() != nullptr) PrefsCallback(*form3);
}

void Form1::LoadWallpaper() { look::HangWallpaper(Image1); }

void Form1::Draw_Pattern(platform::Window& this_object) {
  platform::Guarded([&] { look::TileWindow(this_object, Image1); });
}
