// A window with one control of each kind, which writes down what the user's hands have set off.
#pragma once

#include <QMenu>
#include <QMenuBar>
#include <functional>
#include <sstream>
#include <string>

#include "look/HGlide.h"
#include "look/VlButton.h"
#include "look/VlDropDial.h"
#include "platform/Grid.h"
#include "platform/Menu.h"
#include "platform/PictureBox.h"
#include "platform/Widgets.h"
#include "platform/Window.h"
#include "support/UserInput.h"
#include "support/desk.h"

namespace platform {

struct ControlsBench : Window {
  ControlsBench()
      : Window({.name = "Bench", .caption = "", .client_width = 640, .client_height = 300, .icons = {}}) {
    int left = 0;
    for (Control* control : Controls()) control->Move(left, 40, 40, 40), left += 44;
    list.SetHeight(200);
    grid.Move(480, 90, 150, 150);
    bar.Move(100, 262, 300, 20);
    small.Move(4, 280, 9, 9);
    glide.SetRange(10);
    glide.Move(480, 244, 150, 19);
    bar.SetMin(5);
    bar.SetMax(500);
    bar.SetLargeChange(50);
    label.Click = Told("label");
    text.Change = [this] { log << "text " << text.Text() << ','; };
    text.Entered = Told("entered");
    text.LostFocus = Told("left");
    text.PressedElsewhere = Told("elsewhere");
    list.Click = [this] { log << "list " << list.Text() << ','; };
    bar.Change = [this] { log << "bar " << bar.Value() << ','; };
    bar.Scroll = [this] { log << "dragged " << bar.Value() << ','; };
    check.Click = [this] { log << "check " << check.Value() << ','; };
    button.Click = Told("button");
    ticked.Click = [this] { log << (ticked.Checked() ? "ticked," : "unticked,"); };
    push.Click = Told("push");
    toggle.Click = Told("wrong");
    canvas.MouseDown = canvas.MouseUp = push.MouseUp =
        toggle.MouseUp = [this](int pressed, int keys, float x, float y) {
          log << "mouse " << pressed << keys << ' ' << x << ' ' << y << (toggle.value() ? " on," : ",");
        };
    glide.Scroll = [this] { log << "at " << glide.Position() << ','; };
    canvas.Wheel = [this](float notches, int keys, float x) {
      log << "wheel " << notches << ' ' << keys << ' ' << x << ',';
    };
    Show();
    while (!TopWidget()->isActiveWindow()) QApplication::processEvents();
  }
  std::function<void()> Told(const std::string& what) {
    return [this, what] { log << what << ','; };
  }
  bool Form_KeyDown(const KeyPress& press) override {
    log << "key " << static_cast<int>(press.key) << press.text << (press.control ? " Ctrl" : "")
        << (press.alt ? " Alt" : "") << (press.shift ? " Shift" : "") << (press.repeated ? " again" : "")
        << ',';
    return true;
  }
  /// What was set off by this.
  std::string After(const std::function<void()>& hands) {
    support::HandleEvents();
    log.str({});
    hands();
    support::HandleEvents();
    return log.str();
  }
  QAction& Item() { return *MenuBar()->actions()[0]->menu()->actions()[0]; }

  Menu menu{*this, "menu", "&Menu"};
  MenuItem ticked{menu, "ticked", "Tick", "Ctrl+T"};
  Label label{*this, "label", "Words", Label::Align::Center};
  TextBox text{*this, "text", "12"};
  ListBox list{*this, "list", {"ant", "bee", "bug", "cat"}};
  HScrollBar bar{*this, "bar"};
  CheckBox check{*this, "check"};
  CommandButton button{*this, "button", "Go"};
  PictureBox canvas{*this, "canvas"};
  Grid grid{*this, "grid", 3, 2};
  look::vl_button push{*this, "push"}, toggle{*this, "toggle", look::vl_button::TwoState};
  look::vl_button small{*this, "small", look::vl_button::TwoState};
  look::HGlide glide{*this, "glide"};
  look::VL_DropDial dial{*this, "dial", "4", "1", "20"};
  LineControl rule{*this, "rule", 5, 270, 5, 290, Rgb(9, 9, 9)};
  std::ostringstream log;
};

}  // namespace platform
