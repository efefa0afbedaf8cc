#include "convert/draft/Draft.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "convert/draft/Synthesizer.h"
#include "convert/draft/alignment.h"
#include "convert/draft/frame_mouths.h"
#include "convert/draft/phrases.h"
#include "convert/draft/speech_sounds.h"
#include "convert/draft/voice_features.h"
#include "convert/message.h"

namespace convert {
namespace {

/// Below this a pause is a stop's or a breath's: the mouth before it is held.
constexpr double kClosedAfterSeconds = 0.12;
/// The mouth closes for a stop before it is heard.
constexpr double kClosureSeconds = 0.035;

using SoundsOfWords = std::vector<std::vector<SpeechSound>>;

/// A word with its sounds laid along the whole sound.
struct LaidWord {
  std::string text;
  std::vector<SpeechSound> sounds;
  std::vector<HopSpan> spans;
};

SoundsOfWords SoundsOf(const Phrase& phrase, Synthesizer* synthesizer) {
  if (synthesizer) return synthesizer->SoundsOf(phrase.words);
  SoundsOfWords sounds;
  for (const std::string& word : phrase.words) sounds.push_back(EnglishSounds(word));
  return sounds;
}

std::vector<VoiceHop> ListenTo(SoundFile& sound) {
  VoiceListener listener(sound.SamplesPerSecond());
  sound.Play([&](std::span<const double> samples) {
    listener.Listen(samples);
    return true;
  });
  return listener.Finish();
}

/// Each run of phrases up to the next start that the text tells, along its part of the sound.
std::vector<LaidWord> LayWords(const std::vector<Phrase>& phrases, const std::vector<VoiceHop>& hops,
                               Synthesizer* synthesizer) {
  std::vector<LaidWord> laid;
  for (std::size_t i = 0; i < phrases.size();) {
    const auto hop_of = [&](const Phrase& phrase) {
      const double hop =
          std::min(phrase.start_seconds.value_or(0) / kHopSeconds, static_cast<double>(hops.size()));
      return static_cast<std::size_t>(hop);
    };
    const std::size_t begin = hop_of(phrases[i]), first_word = laid.size();
    SoundsOfWords sounds;
    do {
      for (auto& of_word : SoundsOf(phrases[i], synthesizer)) sounds.push_back(std::move(of_word));
      for (const std::string& word : phrases[i].words) laid.push_back({word, {}, {}});
    } while (++i < phrases.size() && !phrases[i].start_seconds);
    const std::size_t end = i < phrases.size() ? hop_of(phrases[i]) : hops.size();
    const auto spans = Align(std::span(hops).subspan(begin, end - begin), sounds);
    for (std::size_t k = 0; k < sounds.size(); ++k) {
      laid[first_word + k].sounds = sounds[k];
      for (const HopSpan span : spans[k]) {
        const auto offset = static_cast<std::int64_t>(begin);
        laid[first_word + k].spans.push_back({span.begin + offset, span.end + offset});
      }
    }
  }
  return laid;
}

bool ClosesBefore(const SpeechSound& sound) {
  return sound.mouths == "P" || sound.mouths == "B" || sound.mouths == "Ch";
}

/// The mouths of all sounds, and the mouth at rest in the pauses between them.
std::vector<MouthSpan> MouthsOf(const std::vector<LaidWord>& words, double seconds) {
  std::vector<MouthSpan> spans;
  double end = 0;
  double unheard_start = -1;
  for (const LaidWord& word : words) {
    for (std::size_t i = 0; i < word.sounds.size(); ++i) {
      double start = static_cast<double>(word.spans[i].begin) * kHopSeconds;
      const double stop = static_cast<double>(word.spans[i].end) * kHopSeconds;
      const SpeechSound& sound = word.sounds[i];
      if (start - end >= kClosedAfterSeconds || (spans.empty() && start > end)) {
        spans.push_back({end, start, "Closed"});
        unheard_start = -1;
      }
      end = stop;
      if (sound.mouths.empty()) {
        // A breath takes the mouth of the sound that follows.
        if (unheard_start < 0) unheard_start = start;
        continue;
      }
      if (unheard_start >= 0) start = std::exchange(unheard_start, -1);
      if (ClosesBefore(sound) && !spans.empty() && spans.back().mouth != "Closed")
        start = std::max(start - kClosureSeconds, spans.back().start_seconds);
      if (!spans.empty()) spans.back().end_seconds = start;
      const std::size_t blank = sound.mouths.find(' ');
      const double middle = blank == std::string::npos ? stop : (start + stop) / 2;
      spans.push_back({start, middle, sound.mouths.substr(0, blank)});
      if (blank != std::string::npos) spans.push_back({middle, stop, sound.mouths.substr(blank + 1)});
    }
  }
  if (seconds - end >= kClosedAfterSeconds) spans.push_back({end, seconds, "Closed"});
  return spans;
}

}  // namespace

Reading DraftOf(std::string_view text, SoundFile& sound, const Spelling& spelling, const Context& context) {
  const Phrases parsed = ParsePhrases(text);
  if (!parsed.failure.Empty()) return {std::nullopt, parsed.failure, {}};
  const double seconds = context.sound_seconds.value_or(0);
  if (seconds <= 0) return Refused(QT_TRANSLATE_NOOP("convert", "the sound to lay it along is empty"));
  std::unique_ptr<Synthesizer> synthesizer;
  if (spelling.synthesizer) synthesizer = Synthesizer::Find(spelling.language);
  Messages notes{{QT_TRANSLATE_NOOP("convert", "this is a draft: go through it by ear"), {}}};
  if (!synthesizer && !spelling.language.starts_with("en")) {
    return Refused(QT_TRANSLATE_NOOP("convert",
                                     "words in the language %1 can't be spelled: the library of espeak-ng "
                                     "isn't there, or has no voice of that name"),
                   {Quoted(spelling.language)});
  }
  if (!synthesizer && spelling.synthesizer) {
    notes.push_back({QT_TRANSLATE_NOOP("convert",
                                       "the words are spelled by rules for English; with the library of "
                                       "espeak-ng other languages are possible"),
                     {}});
  }

  const std::vector<LaidWord> words = LayWords(parsed.phrases, ListenTo(sound), synthesizer.get());
  Entries found;
  Reading reading = SheetOf({}, context);
  if (!reading.sheet) return reading;
  const std::int64_t frames = FramesOf(*reading.sheet);
  const auto mouths = MouthsOfFrames(MouthsOf(words, seconds), frames, seconds);
  for (std::size_t frame = 0; frame < mouths.size(); ++frame) {
    if (!mouths[frame].empty())
      found.entries.push_back({static_cast<std::int64_t>(frame), mouths[frame], {}});
  }
  double last_start = 0;
  for (const LaidWord& word : words) {
    if (!word.spans.empty()) last_start = static_cast<double>(word.spans.front().begin) * kHopSeconds;
    const auto frame = static_cast<std::int64_t>(last_start / seconds * static_cast<double>(frames));
    found.entries.push_back({std::min(frame, std::max<std::int64_t>(frames - 1, 0)), {}, word.text});
  }
  return SheetOf(std::move(found), context, std::move(notes));
}

}  // namespace convert
