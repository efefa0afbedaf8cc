#include "convert/draft/frame_mouths.h"

#include <algorithm>
#include <map>

namespace convert {
namespace {

double WeightOf(const std::string& mouth) {
  if (mouth == "M" || mouth == "B" || mouth == "P") return 3;
  if (mouth == "F" || mouth == "V" || mouth == "W") return 2;
  return 1;
}

bool IsVowel(const std::string& mouth) {
  return mouth == "A" || mouth == "E" || mouth == "I" || mouth == "O" || mouth == "U";
}

/// A vowel that its neighbours have crowded out gets the frame that most of it falls on, if the mouth there
/// goes on for another frame.
void ShowCrowdedVowel(const MouthSpan& span, double frame_seconds, std::vector<std::string>& shown) {
  const auto frame = static_cast<std::size_t>((span.start_seconds + span.end_seconds) / 2 / frame_seconds);
  if (frame + 1 >= shown.size() || shown[frame] == span.mouth) return;
  const bool just_shown = frame > 0 && shown[frame - 1] == span.mouth;
  if (!just_shown && shown[frame] == shown[frame + 1]) shown[frame] = span.mouth;
}

}  // namespace

std::vector<std::string> MouthsOfFrames(const std::vector<MouthSpan>& spans, std::int64_t frames,
                                        double seconds) {
  std::vector<std::string> shown(static_cast<std::size_t>(frames));
  if (frames <= 0 || seconds <= 0) return shown;
  const double frame_seconds = seconds / static_cast<double>(frames);
  std::size_t first = 0;
  for (std::size_t frame = 0; frame < shown.size(); ++frame) {
    const double begin = static_cast<double>(frame) * frame_seconds, end = begin + frame_seconds;
    while (first < spans.size() && spans[first].end_seconds <= begin) ++first;
    std::map<std::string, double> shares;
    for (std::size_t i = first; i < spans.size() && spans[i].start_seconds < end; ++i) {
      const double overlap = std::min(end, spans[i].end_seconds) - std::max(begin, spans[i].start_seconds);
      shares[spans[i].mouth] += overlap * WeightOf(spans[i].mouth);
    }
    const auto most = std::max_element(shares.begin(), shares.end(),
                                       [](const auto& a, const auto& b) { return a.second < b.second; });
    shown[frame] = most != shares.end() ? most->first : frame > 0 ? shown[frame - 1] : std::string();
  }
  for (const MouthSpan& span : spans) {
    if (IsVowel(span.mouth)) ShowCrowdedVowel(span, frame_seconds, shown);
  }
  for (std::size_t frame = shown.size(); frame-- > 1;) {
    if (shown[frame] == shown[frame - 1]) shown[frame].clear();
  }
  return shown;
}

}  // namespace convert
