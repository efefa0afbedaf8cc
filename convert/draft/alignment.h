// Lays the sounds of words along the hops of a voice.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "convert/draft/speech_sounds.h"
#include "convert/draft/voice_features.h"

namespace convert {

/// A stretch of hops, the end not included.
struct HopSpan {
  std::int64_t begin = 0, end = 0;
};

/// For each sound of each word its stretch. Between two words, before the first and behind the last there may
/// be a pause; the sounds of a word follow each other without one.
///
/// The stretches are those that together fit best: how loud and bright each sound is where it lies, and how
/// far its length is from the one expected at this voice's pace. Each sound is sought within a few seconds of
/// where its share of the voiced time puts it, so that an hour of speech takes seconds and a few megabytes
/// for each minute. With fewer hops than sounds they are spread evenly.
std::vector<std::vector<HopSpan>> Align(std::span<const VoiceHop> hops,
                                        const std::vector<std::vector<SpeechSound>>& words);

}  // namespace convert
