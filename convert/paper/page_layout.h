// How a sheet is ruled on paper: rows to the page, and the counts that stand beside each frame.
#pragma once

#include <cstdint>
#include <string>

namespace convert {

/// All lengths on paper are in hundredths of a millimetre.
struct PageRows {
  std::int64_t rows_per_page = 0;
  double row_height = 0;
};

/// Whole seconds to the page where the rows can be read then, else an even part of a second: so that every
/// page begins at a mark.
PageRows RowsOfPage(double frames_per_second, double body_height);

/// At least one: a sheet without frames is an empty page.
std::int64_t PageCount(std::int64_t frames, std::int64_t rows_per_page);

/// What stands beside a frame in the column of seconds: the second that it begins, or the frames since.
struct SecondMark {
  std::int64_t second = 0, frames_since = 0;
  bool Begins() const { return frames_since == 0; }
};
SecondMark SecondOf(std::int64_t frame, double frames_per_second);
/// Whether half a second, in whole frames, has passed at this frame.
bool IsHalfSecond(std::int64_t frame, double frames_per_second);

/// Feet of 35 mm film, which have 16 frames whatever the rate.
inline constexpr std::int64_t kFramesPerFoot = 16;
/// "4+07"
std::string FeetText(std::int64_t frame);

}  // namespace convert
