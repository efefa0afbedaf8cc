// What holds whatever a user has done: two ways to the same state lead to the same.
#pragma once

#include <string>

#include "platform/Grid.h"

class Form1;

namespace random_events {

/// Says what is wrong and ends the process.
[[noreturn]] void Fail(const std::string& what);

/// The windows' controls and the state say the same.
void CheckState();
/// The timeline marks the row that the grid has moved to.
void CheckMarks(Form1& form);
/// Sound and tracks, just painted, are pictures of them drawn from nothing; and the strips of the frame
/// painter are pieces of a strip that is so long that it is never scrolled.
void CheckPictures();
/// The grid shows its texts and its current row.
void CheckGrid(const platform::Grid& grid);
/// What stands on the screen of every window is what a new drawing gives. Nothing waits to be drawn.
void CheckScreen();

/// All that a sheet's file keeps, one line for each thing, without the blanks at a text's ends.
std::string SheetInWords();

}  // namespace random_events
