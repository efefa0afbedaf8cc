// Where the main window's controls stand, in pixels, and what follows the window's size.
#pragma once

#include <optional>
#include <string_view>

namespace timeline {

/// The client area as designed.
inline constexpr int kDesignWidth = 654, kDesignHeight = 395;
/// Below this client area the layout stays as it was; the window itself may become smaller.
inline constexpr int kLeastWidth = 300, kLeastHeight = 188;

struct ControlPlace {
  std::string_view control;
  int left, top, width, height;
};

/// On the window. What follows the window stands here as for the design's client area.
inline constexpr ControlPlace kWindowPlaces[] = {
    {"vl_button18", 4, 4, 22, 24},   {"Picture1", 4, 32, 129, 129},   {"List1", 4, 164, 129, 229},
    {"vl_button5", 136, 4, 23, 23},  {"vl_button1", 162, 4, 23, 23},  {"vl_button2", 194, 4, 23, 23},
    {"vl_button3", 226, 4, 23, 23},  {"vl_button4", 252, 4, 23, 23},  {"Label2", 278, 8, 23, 17},
    {"vl_button10", 308, 4, 23, 23}, {"vl_button11", 334, 4, 23, 23}, {"vl_button12", 360, 4, 23, 23},
    {"vl_button6", 386, 4, 11, 11},  {"vl_button7", 386, 16, 11, 11}, {"vl_button8", 398, 4, 11, 11},
    {"vl_button9", 398, 16, 11, 11}, {"Label1", 412, 8, 69, 15},      {"Label3", 480, 8, 43, 15},
    {"Picture3", 136, 32, 514, 147}, {"Grid1", 136, 180, 514, 213},
};

/// In the viewport Picture3, in its coordinates.
inline constexpr ControlPlace kViewportPlaces[] = {
    {"Picture2", 0, 0, 514, 64},    {"Picture4", 0, 65, 514, 64},   {"vl_button13", 0, 120, 9, 9},
    {"vl_button14", 10, 120, 9, 9}, {"vl_button15", 20, 120, 9, 9}, {"vl_button16", 30, 120, 9, 9},
    {"HScroll1", 0, 130, 514, 17},
};

/// The vertical lines that divide the tool strip, a dark and a light one in turn.
struct StripLine {
  std::string_view control;
  int x;
  bool dark;
};
inline constexpr int kStripLineTop = 4, kStripLineBottom = 26;
inline constexpr StripLine kStripLines[] = {{"Line2", 188, true}, {"Line3", 190, false},
                                            {"Line4", 220, true}, {"Line5", 222, false},
                                            {"Line7", 302, true}, {"Line6", 304, false}};

/// The place of a control by name; null for one that has none of its own.
const ControlPlace* FindPlace(std::string_view control);

/// The rule of the tool strip by name, which must be one of kStripLines.
const StripLine& StripLineOf(std::string_view control);

/// What follows the window's client area.
struct WindowLayout {
  /// Of the viewport, the grid and the scroll bar alike.
  int width;
  int grid_height, list_height;
  int comment_column_twips;
};

/// Nothing if the client area is below the least one.
std::optional<WindowLayout> LayoutFor(int client_width, int client_height);

/// The Comment column takes what the other columns leave.
int CommentColumnTwips(int client_width);

}  // namespace timeline
