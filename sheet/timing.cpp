#include "sheet/timing.h"

#include <algorithm>
#include <charconv>

#include "platform/numbers.h"

namespace sheet {

namespace {

/// The rate as it stands in a message: a great one would fill the screen with digits.
std::string MessageNumber(double value) {
  char buffer[40];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 15).ptr;
  return std::string(buffer, end);
}

}  // namespace

RowCount GridRows(double frames_per_second, double seconds) {
  if (frames_per_second < 0) {
    return {std::nullopt, "A frame rate of " + MessageNumber(frames_per_second) +
                              " can't be used: it must not be negative."};
  }
  // Rounded with the header row in it, which moves the ties: 24.5 frames make 26 rows.
  const std::int64_t rows = platform::RoundToInt64(1 + frames_per_second * seconds);
  if (rows > kMostRows) {
    return {std::nullopt, "A frame rate of " + MessageNumber(frames_per_second) + " gives more than the " +
                              std::to_string(kMostRows) + " rows that a sheet can have."};
  }
  return {static_cast<std::int32_t>(rows), {}};
}

std::int32_t TrackFrames(double frames_per_second, double seconds) {
  return std::clamp(platform::RoundToLong(frames_per_second * seconds), 0, kMostRows - 1);
}

std::int32_t WholeFrames(double frames_per_second, double seconds) {
  return std::clamp(platform::FloorToLong(frames_per_second * seconds), 0, kMostRows - 1);
}

std::string TitleText(std::string_view app_title, double frames_per_second, double seconds,
                      std::string_view decimal_sign) {
  return std::string(app_title) + ":  Project audio is " +
         platform::OneDecimalPicture(seconds, decimal_sign) + " seconds, " +
         std::to_string(WholeFrames(frames_per_second, seconds)) + " frames at " +
         platform::NumberText(frames_per_second) + " fps";
}

}  // namespace sheet
