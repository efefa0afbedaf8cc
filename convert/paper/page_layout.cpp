#include "convert/paper/page_layout.h"

#include <algorithm>
#include <cmath>

namespace convert {
namespace {

/// Below this a row's texts can't be read, nor its mouth seen.
constexpr double kLeastRowHeight = 380;
constexpr std::int64_t kRowsWithoutRate = 48;
/// Of a rate from 0.5 on; a greater one than this has no mark worth a page's beginning.
constexpr double kGreatestRate = 10'000;

std::int64_t RowsByRate(std::int64_t rate, std::int64_t most) {
  if (rate <= most) return most / rate * rate;
  for (std::int64_t part = 2; part < rate; ++part) {
    if (rate % part == 0 && rate / part <= most) return rate / part;
  }
  return most;
}

}  // namespace

PageRows RowsOfPage(double frames_per_second, double body_height) {
  const auto most = static_cast<std::int64_t>(body_height / kLeastRowHeight);
  const bool usable = frames_per_second >= 0.5 && frames_per_second <= kGreatestRate;
  std::int64_t rows = usable ? RowsByRate(std::llround(frames_per_second), most) : kRowsWithoutRate;
  // A part of a rate such as 2 times a prime would leave the page nearly empty.
  if (rows * 2 <= most) rows = std::min(kRowsWithoutRate, most);
  return {rows, body_height / static_cast<double>(rows)};
}

std::int64_t PageCount(std::int64_t frames, std::int64_t rows_per_page) {
  return std::max<std::int64_t>((frames + rows_per_page - 1) / rows_per_page, 1);
}

SecondMark SecondOf(std::int64_t frame, double frames_per_second) {
  if (frames_per_second <= 0) return {0, frame};
  const auto second = static_cast<std::int64_t>(static_cast<double>(frame) / frames_per_second);
  const auto first = static_cast<std::int64_t>(std::ceil(static_cast<double>(second) * frames_per_second));
  return {second, std::max<std::int64_t>(frame - first, 0)};
}

bool IsHalfSecond(std::int64_t frame, double frames_per_second) {
  const std::int64_t half = std::llround(frames_per_second / 2);
  return half > 1 && SecondOf(frame, frames_per_second).frames_since == half;
}

std::string FeetText(std::int64_t frame) {
  const std::string frames = std::to_string(frame % kFramesPerFoot);
  return std::to_string(frame / kFramesPerFoot) + (frames.size() < 2 ? "+0" : "+") + frames;
}

}  // namespace convert
