// Spelling to sound for English, by rules and a list of the words that break them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace convert {

/// The names of a word's sounds (ARPAbet, with AX for the murmured vowel). The word is in small letters and
/// apostrophes; anything else in it is passed over.
std::vector<std::string> EnglishSoundNames(std::string_view word);

}  // namespace convert
