#include "look/ThemeWalk.h"

#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "host/HostSession.h"
#include "host/variant.h"
#include "look/HGlide.h"
#include "look/VlButton.h"
#include "platform/Application.h"
#include "platform/Picture.h"
#include "platform/Settings.h"

namespace look {
namespace {

using platform::Control;
using platform::ControlKind;

/// One statement of the walk.
template <typename Statement>
void Try(const Statement& statement) {
  try {
    statement();
  } catch (const std::exception&) {
    // A control that lacks a property keeps what it has.
  }
}

void DressGround(Control& control) {
  Try([&] { control.SetBackColor(kBackdrop); });
}

void DressText(Control& control, const ThemeColors& theme) {
  Try([&] { control.SetBackColor(theme[ThemeKey::TextboxFill]); });
  Try([&] { control.SetForeColor(theme[ThemeKey::TextboxText]); });
}

void DressList(Control& control, const ThemeColors& theme) {
  Try([&] { control.SetForeColor(theme[ThemeKey::TextboxText]); });
  Try([&] { control.SetBackColor(theme[ThemeKey::TextboxFill]); });
}

/// The settings give labels no colour of their own.
void DressLabel(Control& control) {
  Try([&] { control.SetForeColor(platform::Rgb(0, 0, 0)); });
}

void DressVlButton(vl_button& button, const ThemeColors& theme) {
  const auto dress = DressOfButton(button.Name(), button.Tag, theme);
  if (!dress) return;
  Try([&] { button.SetHighlight(theme[ThemeKey::Shine]); });
  Try([&] { button.SetShadow(theme[ThemeKey::Shadow]); });
  Try([&] { button.SetBackColor(dress->fill); });
  Try([&] { button.SetGradient(dress->gradient); });
  Try([&] { button.SetBorderless(theme[ThemeKey::BorderlessButtons] == 1); });
  Try([&] { button.Refresh(); });
}

void DressGlide(HGlide& glide, const ThemeColors& theme) {
  const bool raised = theme[ThemeKey::BorderlessScrollers] == 0;
  Try([&] { glide.SetBackColor(theme[ThemeKey::ScrollFill]); });
  Try([&] { glide.SetForeColor(theme[ThemeKey::ScrollBar]); });
  Try([&] { glide.SetHighlight(theme[raised ? ThemeKey::Shine : ThemeKey::ScrollFill]); });
  Try([&] { glide.SetShadow(theme[raised ? ThemeKey::Shadow : ThemeKey::ScrollFill]); });
  Try([&] { glide.Refresh(); });
}

/// A control of any other kind takes nothing.
void DressPlain(Control& control, const ThemeColors& theme) {
  switch (control.Kind()) {
    case ControlKind::CheckBox:
      return DressGround(control);
    case ControlKind::TextBox:
      return DressText(control, theme);
    case ControlKind::Label:
      return DressLabel(control);
    case ControlKind::ListBox:
      return DressList(control, theme);
    case ControlKind::StatusBar:
    case ControlKind::Other:
      return;
  }
}

}  // namespace

ThemeColors ReadHostTheme() {
  return ReadTheme(
      [](std::string_view key) { return platform::ReadSetting("vellumark", "Startup", std::string(key)); });
}

void DressControls(platform::Window& window, const ThemeColors& theme, ButtonsAre buttons) {
  for (Control* control : window.Controls()) {
    if (auto* button = dynamic_cast<vl_button*>(control)) {
      if (buttons == ButtonsAre::Dressed) DressVlButton(*button, theme);
    } else if (auto* glide = dynamic_cast<HGlide*>(control)) {
      DressGlide(*glide, theme);
    } else {
      // The linter takes a cast that gives null for one of a null pointer; a window lists none.
      // NOLINTNEXTLINE(clang-analyzer-core.NonNullParamChecker)
      DressPlain(*control, theme);
    }
  }
}

void HangWallpaper(platform::ImageHolder& tile) {
  std::shared_ptr<const platform::Picture> picture;
  platform::Guarded([&] {
    const auto name = host::HostSession.Call("Vel_WallpaperFilename");
    picture = platform::Picture::Load(host::AsText(name, "Vel_WallpaperFilename"));
  });
  tile.SetPicture(std::move(picture));
}

void TileWindow(platform::Window& window, const platform::ImageHolder& tile) {
  if (tile.Picture() && window.Visible()) window.TilePicture(*tile.Picture());
}

}  // namespace look
