#include "convert/draft/speech_sounds.h"

#include <map>

#include "convert/draft/english_rules.h"

namespace convert {
namespace {

struct NamedSound {
  std::string_view name;
  Manner manner;
  const char* mouths;
  double milliseconds;
};

// The rules' own names for the sounds (ARPAbet, with AX for the murmured vowel).
constexpr NamedSound kEnglish[] = {{"AA", Manner::kVowel, "O", 140},   {"AE", Manner::kVowel, "A", 135},
                                   {"AH", Manner::kVowel, "A", 95},    {"AX", Manner::kVowel, "E", 60},
                                   {"AO", Manner::kVowel, "O", 140},   {"AW", Manner::kVowel, "A U", 180},
                                   {"AY", Manner::kVowel, "A I", 180}, {"EH", Manner::kVowel, "E", 105},
                                   {"ER", Manner::kVowel, "E R", 125}, {"EY", Manner::kVowel, "E I", 155},
                                   {"IH", Manner::kVowel, "E", 80},    {"IY", Manner::kVowel, "E", 115},
                                   {"OW", Manner::kVowel, "O U", 160}, {"OY", Manner::kVowel, "O I", 190},
                                   {"UH", Manner::kVowel, "U", 85},    {"UW", Manner::kVowel, "U", 125},
                                   {"B", Manner::kStop, "B", 70},      {"CH", Manner::kHiss, "Ch", 120},
                                   {"D", Manner::kStop, "D", 60},      {"DH", Manner::kMurmur, "Th", 50},
                                   {"F", Manner::kBreath, "F", 105},   {"G", Manner::kStop, "G", 75},
                                   {"HH", Manner::kBreath, "", 60},    {"JH", Manner::kHiss, "Ch", 100},
                                   {"K", Manner::kStop, "K", 85},      {"L", Manner::kSonorant, "L", 70},
                                   {"M", Manner::kSonorant, "M", 75},  {"N", Manner::kSonorant, "N", 65},
                                   {"NG", Manner::kSonorant, "N", 85}, {"P", Manner::kStop, "P", 85},
                                   {"R", Manner::kSonorant, "R", 65},  {"S", Manner::kHiss, "S", 115},
                                   {"SH", Manner::kHiss, "Ch", 120},   {"T", Manner::kStop, "T", 70},
                                   {"TH", Manner::kBreath, "Th", 95},  {"V", Manner::kMurmur, "V", 65},
                                   {"W", Manner::kSonorant, "W", 65},  {"Y", Manner::kSonorant, "E", 55},
                                   {"Z", Manner::kHiss, "S", 90},      {"ZH", Manner::kHiss, "Ch", 90}};

// A synthesizer's mnemonics for many languages: the longest that the mnemonic begins with.
constexpr NamedSound kMnemonics[] = {{"aI", Manner::kVowel, "A I", 180}, {"aU", Manner::kVowel, "A U", 180},
                                     {"eI", Manner::kVowel, "E I", 155}, {"oU", Manner::kVowel, "O U", 160},
                                     {"OI", Manner::kVowel, "O I", 190}, {"OY", Manner::kVowel, "O I", 190},
                                     {"a", Manner::kVowel, "A", 120},    {"V", Manner::kVowel, "A", 95},
                                     {"6", Manner::kVowel, "A", 80},     {"A", Manner::kVowel, "O", 140},
                                     {"0", Manner::kVowel, "O", 120},    {"O", Manner::kVowel, "O", 130},
                                     {"o", Manner::kVowel, "O", 120},    {"E", Manner::kVowel, "E", 105},
                                     {"e", Manner::kVowel, "E", 110},    {"I", Manner::kVowel, "E", 80},
                                     {"i", Manner::kVowel, "E", 100},    {"@L", Manner::kVowel, "L", 90},
                                     {"@", Manner::kVowel, "E", 60},     {"3", Manner::kVowel, "E R", 125},
                                     {"U", Manner::kVowel, "U", 85},     {"u", Manner::kVowel, "U", 120},
                                     {"y", Manner::kVowel, "U", 110},    {"Y", Manner::kVowel, "U", 110},
                                     {"W", Manner::kVowel, "U", 110},    {"tS", Manner::kHiss, "Ch", 120},
                                     {"dZ", Manner::kHiss, "Ch", 100},   {"S", Manner::kHiss, "Ch", 120},
                                     {"Z", Manner::kHiss, "Ch", 90},     {"s", Manner::kHiss, "S", 115},
                                     {"z", Manner::kHiss, "S", 90},      {"ts", Manner::kHiss, "S", 120},
                                     {"C", Manner::kHiss, "Ch", 100},    {"f", Manner::kBreath, "F", 105},
                                     {"pf", Manner::kBreath, "F", 120},  {"v", Manner::kMurmur, "V", 65},
                                     {"T", Manner::kBreath, "Th", 95},   {"D", Manner::kMurmur, "Th", 50},
                                     {"h", Manner::kBreath, "", 60},     {"x", Manner::kBreath, "K", 90},
                                     {"Q", Manner::kMurmur, "G", 70},    {"p", Manner::kStop, "P", 85},
                                     {"b", Manner::kStop, "B", 70},      {"t", Manner::kStop, "T", 70},
                                     {"d", Manner::kStop, "D", 60},      {"k", Manner::kStop, "K", 85},
                                     {"g", Manner::kStop, "G", 75},      {"m", Manner::kSonorant, "M", 75},
                                     {"n", Manner::kSonorant, "N", 65},  {"N", Manner::kSonorant, "N", 85},
                                     {"l", Manner::kSonorant, "L", 70},  {"r", Manner::kSonorant, "R", 65},
                                     {"R", Manner::kSonorant, "R", 65},  {"j", Manner::kSonorant, "E", 55},
                                     {"w", Manner::kSonorant, "W", 65},  {"*", Manner::kStop, "T", 40}};

SpeechSound SoundOf(const NamedSound& named) { return {named.manner, named.mouths, named.milliseconds}; }

constexpr const char* kSmallNumbers[] = {"zero",    "one",     "two",       "three",    "four",
                                         "five",    "six",     "seven",     "eight",    "nine",
                                         "ten",     "eleven",  "twelve",    "thirteen", "fourteen",
                                         "fifteen", "sixteen", "seventeen", "eighteen", "nineteen"};
constexpr const char* kTens[] = {"",      "",      "twenty",  "thirty", "forty",
                                 "fifty", "sixty", "seventy", "eighty", "ninety"};

/// A number below a million in words.
std::vector<std::string> NumberWords(int number) {
  std::vector<std::string> words;
  const auto add = [&](int part) {
    for (auto& word : NumberWords(part)) words.push_back(word);
  };
  if (number >= 1000) {
    add(number / 1000);
    words.push_back("thousand");
    if (number % 1000) add(number % 1000);
  } else if (number >= 100) {
    add(number / 100);
    words.push_back("hundred");
    if (number % 100) add(number % 100);
  } else if (number >= 20) {
    words.push_back(kTens[number / 10]);
    if (number % 10) add(number % 10);
  } else {
    words.push_back(kSmallNumbers[number]);
  }
  return words;
}

/// Runs of letters, the apostrophe among them, and numbers as words; all in small letters.
std::vector<std::string> SpokenWords(std::string_view word) {
  std::vector<std::string> words;
  for (std::size_t i = 0; i < word.size();) {
    const auto is = [&](auto test) { return i < word.size() && test(word[i]); };
    const auto digit = [](char c) { return c >= '0' && c <= '9'; };
    const auto letter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '\''; };
    if (is(digit)) {
      int number = 0, digits = 0;
      for (; is(digit) && digits < 6; ++i, ++digits) number = 10 * number + (word[i] - '0');
      for (auto& spoken : NumberWords(number)) words.push_back(spoken);
    } else if (is(letter)) {
      std::string run;
      // The apostrophe has the bit of a small letter already.
      for (; is(letter); ++i) run += static_cast<char>(word[i] | ('a' - 'A'));
      words.push_back(run);
    } else {
      ++i;
    }
  }
  return words;
}

}  // namespace

std::vector<SpeechSound> EnglishSounds(std::string_view word) {
  static const auto table = [] {
    std::map<std::string_view, SpeechSound> sounds;
    for (const NamedSound& named : kEnglish) sounds.emplace(named.name, SoundOf(named));
    return sounds;
  }();
  std::vector<SpeechSound> sounds;
  for (const std::string& spoken : SpokenWords(word)) {
    for (const std::string& name : EnglishSoundNames(spoken)) sounds.push_back(table.at(name));
  }
  return sounds;
}

SpeechSound SoundOfMnemonic(std::string_view mnemonic) {
  const NamedSound* best = nullptr;
  for (const NamedSound& named : kMnemonics) {
    if (mnemonic.starts_with(named.name) && (!best || named.name.size() > best->name.size())) best = &named;
  }
  return best ? SoundOf(*best) : SpeechSound{Manner::kSilence, "", 0};
}

}  // namespace convert
