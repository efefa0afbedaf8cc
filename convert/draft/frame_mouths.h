// From mouths at times to one mouth a frame.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace convert {

/// A mouth that is shown for some time. Spans come in the order of their time.
struct MouthSpan {
  double start_seconds = 0, end_seconds = 0;
  std::string mouth;
};

/// For each frame the mouth that takes up most of it, lips that are closed or teeth on the lip counting for
/// more, since the eye misses them at once; empty where the one before is held. Frames are equal parts of the
/// whole.
std::vector<std::string> MouthsOfFrames(const std::vector<MouthSpan>& spans, std::int64_t frames,
                                        double seconds);

}  // namespace convert
