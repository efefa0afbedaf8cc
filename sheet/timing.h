// How the sound's seconds and the frame rate become rows, frames and a title.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace sheet {

/// The longest sheet, header row included: four and a half days at 25 frames per second. Beyond it the grid's
/// texts and the tracks' undo states would no longer fit a desktop machine's memory.
inline constexpr std::int32_t kMostRows = 10'000'000;

/// The grid's row count, header row included: 1 + rate x seconds, ties to even; or the reason why such a
/// sheet can't be made (a negative rate, more than kMostRows rows).
struct RowCount {
  std::optional<std::int32_t> rows;
  std::string reason;
};
RowCount GridRows(double frames_per_second, double seconds);

/// Frames of the tracks: rate x seconds, ties to even; never below 0 nor more than a sheet's frames. It isn't
/// always the grid's rows less one: 24.5 gives 25 frames in the grid and 24 in the tracks.
std::int32_t TrackFrames(double frames_per_second, double seconds);

/// Whole frames that the sound fills: rate x seconds, rounded down, held like TrackFrames. Title and the
/// proposed length of a new animation.
std::int32_t WholeFrames(double frames_per_second, double seconds);

/// The main window's title: project seconds with at most one decimal behind the machine's decimal sign, whole
/// frames, and the rate as a number.
std::string TitleText(std::string_view app_title, double frames_per_second, double seconds,
                      std::string_view decimal_sign);

}  // namespace sheet
