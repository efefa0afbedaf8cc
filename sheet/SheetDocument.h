// The sheet beside the grid: its copy for the timeline, its rate, its length.
#pragma once

#include <cstdint>
#include <optional>

#include "platform/numbers.h"
#include "sheet/sheet_cells.h"

namespace sheet {

/// True while the grid and SheetCells agree in size, so that a cell's text may be recorded.
extern platform::Flag GridReady;

/// The timeline's copy of the grid's texts. Cell (row r, column c) of the grid is frame r - 1.
extern CellTable SheetCells;

/// The project's seconds from the loaded sound; no value without one, which counts as 0.
std::optional<double> CalcTime();

/// FrameRateText, the text of Text7 on Form3, read as a number at this moment.
double FrameRate();

/// Frames of the tracks at this moment: rate x seconds, ties to even. Worked out afresh at each use, never
/// stored.
std::int32_t TrackFramesNow();

}  // namespace sheet
