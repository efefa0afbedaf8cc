#include "look/ThemeWalk.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <utility>

#include "app/Guarded.h"
#include "app/HostSession.h"
#include "look/HGlide.h"
#include "look/VlButton.h"
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

void DressGround(Control& control, const ThemeColors&) {
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
void DressLabel(Control& control, const ThemeColors&) {
  Try([&] { control.SetForeColor(platform::Rgb(0, 0, 0)); });
}

void DressVlButton(Control& control, const ThemeColors& theme) {
  const auto dress = DressOfButton(control.Name(), control.Tag, theme);
  if (!dress) return;
  auto& button = dynamic_cast<vl_button&>(control);
  Try([&] { button.SetHighlight(theme[ThemeKey::Shine]); });
  Try([&] { button.SetShadow(theme[ThemeKey::Shadow]); });
  Try([&] { button.SetBackColor(dress->fill); });
  Try([&] { button.SetGradient(dress->gradient); });
  Try([&] { button.SetBorderless(theme[ThemeKey::BorderlessButtons] == 1); });
  Try([&] { button.Refresh(); });
}

void DressGlide(Control& control, const ThemeColors& theme) {
  auto& glide = dynamic_cast<HGlide&>(control);
  const bool raised = theme[ThemeKey::BorderlessScrollers] == 0;
  Try([&] { glide.SetBackColor(theme[ThemeKey::ScrollFill]); });
  Try([&] { glide.SetForeColor(theme[ThemeKey::ScrollBar]); });
  Try([&] { glide.SetHighlight(theme[raised ? ThemeKey::Shine : ThemeKey::ScrollFill]); });
  Try([&] { glide.SetShadow(theme[raised ? ThemeKey::Shadow : ThemeKey::ScrollFill]); });
  Try([&] { glide.Refresh(); });
}

struct Row {
  ControlKind kind;
  void (*dress)(Control&, const ThemeColors&);
};
/// A kind that isn't here takes nothing.
constexpr Row kRows[] = {{ControlKind::CheckBox, DressGround}, {ControlKind::TextBox, DressText},
                         {ControlKind::Label, DressLabel},     {ControlKind::VlButton, DressVlButton},
                         {ControlKind::HGlide, DressGlide},    {ControlKind::ListBox, DressList}};

}  // namespace

ThemeColors ReadHostTheme() {
  return ReadTheme(
      [](std::string_view key) { return platform::ReadSetting("vellumark", "Startup", std::string(key)); });
}

void DressControls(platform::Window& window, const ThemeColors& theme, ButtonsAre buttons) {
  for (Control* control : window.Controls()) {
    if (control->Kind() == ControlKind::VlButton && buttons == ButtonsAre::LeftAlone) continue;
    const auto* row = std::find_if(std::begin(kRows), std::end(kRows),
                                   [&](const Row& candidate) { return candidate.kind == control->Kind(); });
    if (row != std::end(kRows)) row->dress(*control, theme);
  }
}

void HangWallpaper(platform::ImageHolder& tile) {
  std::shared_ptr<const platform::Picture> picture;
  app::Guarded([&] {
    const auto name = app::HostSession.Call("Vel_WallpaperFilename");
    picture = platform::Picture::Load(host::AsText(name, "Vel_WallpaperFilename"));
  });
  tile.SetPicture(std::move(picture));
}

void TileWindow(platform::Window& window, const platform::ImageHolder& tile) {
  if (tile.Picture() && window.Visible()) window.TilePicture(*tile.Picture());
}

}  // namespace look
