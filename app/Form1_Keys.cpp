// What the main window does with keys that no control had a use for, and with files dropped on it.
#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>

#include "app/Form1.h"
#include "platform/Clock.h"
#include "sheet/sheet_cells.h"

using platform::KeyPress;

namespace {

bool HasShape(const platform::Grid& grid, int row) {
  const std::string& text = grid.TextMatrix(row, sheet::kShapeColumn);
  return !text.empty() && text != " ";
}

bool EndsWith(std::string path, std::string_view ending) {
  std::ranges::transform(path, path.begin(), [](unsigned char c) { return std::tolower(c); });
  return path.ends_with(ending);
}

}  // namespace

bool Form1::Form_KeyDown(const KeyPress& press) {
  if (press.alt) return false;
  const bool up = press.key == KeyPress::Key::Up, down = press.key == KeyPress::Key::Down;
  if (press.control && (up || down)) return GoToShape(up ? -1 : 1), true;
  if (press.key == KeyPress::Key::Undo) return vl_button11_Click(), true;
  if (press.control) return false;
  if (press.shift && (up || down)) return BendTrack(up ? -1 : 1, press.repeated), true;
  const bool running = Timer1.Enabled();
  // A held key must neither start and stop the playback in turn nor queue up slices to be played.
  if (press.key == KeyPress::Key::Space && !press.repeated) {
    running ? vl_button5_Click() : vl_button1_Click();
  } else if (press.key == KeyPress::Key::Escape && running) {
    vl_button5_Click();
  } else if (press.text == "." && !press.repeated) {
    vl_button2_Click();
  } else if (press.text == "+") {
    vl_button3_Click();
  } else if (press.text == "-") {
    vl_button4_Click();
  } else if (press.text.size() == 1 && Grid1.HasFocus() && Grid1.Col() == sheet::kShapeColumn) {
    TypeShape(press.text[0]);
  } else {
    return false;
  }
  return true;
}

void Form1::TypeShape(char letter) {
  const auto shape = shape_typing_.Type(letter, Grid1.Row(), platform::SecondsSinceMidnight());
  if (shape) PutShape(*shape);
}

void Form1::GoToShape(int direction) {
  for (int row = Grid1.Row() + direction; row >= 1 && row < Grid1.Rows(); row += direction) {
    if (!HasShape(Grid1, row)) continue;
    Grid1.SetRow(row);
    break;
  }
  Grid1.SetFocus();
}

void Form1::OpenDropped(const std::string& path) {
  EndsWith(path, ".exp") ? OpenSheet(path) : OpenSound(path);
}
