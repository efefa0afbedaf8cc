// The sounds of speech as a lip-sync animator needs them: their mouths, how they sound, how long they last.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace convert {

/// How a sound shows in level and brightness.
enum class Manner { kVowel, kSonorant, kStop, kHiss, kBreath, kMurmur, kSilence };
inline constexpr int kManners = 7;

struct SpeechSound {
  Manner manner = Manner::kSilence;
  /// Names of the sheet, one or two with a blank between: the first for the sound's first half. Empty for a
  /// sound that takes the mouth of the next.
  std::string mouths;
  /// In quick speech; only the proportions count.
  double milliseconds = 0;
};

/// A word's sounds by the rules for English, for which its letters alone are looked at. Digits are read as
/// numbers. Letters of other alphabets give nothing.
std::vector<SpeechSound> EnglishSounds(std::string_view word);

/// The sound of a speech synthesizer's mnemonic ("aI", "tS"), by its first letters.
SpeechSound SoundOfMnemonic(std::string_view mnemonic);

}  // namespace convert
