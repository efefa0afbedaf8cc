#include "convert/draft/english_rules.h"

#include <algorithm>
#include <map>
#include <sstream>

namespace convert {
namespace {

/// Words that the rules get wrong and that everyone uses.
const std::map<std::string_view, std::string_view>& Exceptions() {
  static const std::map<std::string_view, std::string_view> words = {{"again", "AX G EH N"},
                                                                     {"any", "EH N IY"},
                                                                     {"are", "AA R"},
                                                                     {"because", "B IH K AO Z"},
                                                                     {"been", "B IH N"},
                                                                     {"blood", "B L AH D"},
                                                                     {"both", "B OW TH"},
                                                                     {"busy", "B IH Z IY"},
                                                                     {"come", "K AH M"},
                                                                     {"do", "D UW"},
                                                                     {"does", "D AH Z"},
                                                                     {"don't", "D OW N T"},
                                                                     {"done", "D AH N"},
                                                                     {"enough", "IH N AH F"},
                                                                     {"eye", "AY"},
                                                                     {"eyes", "AY Z"},
                                                                     {"father", "F AA DH ER"},
                                                                     {"foot", "F UH T"},
                                                                     {"friend", "F R EH N D"},
                                                                     {"from", "F R AH M"},
                                                                     {"get", "G EH T"},
                                                                     {"give", "G IH V"},
                                                                     {"gone", "G AO N"},
                                                                     {"good", "G UH D"},
                                                                     {"great", "G R EY T"},
                                                                     {"guy", "G AY"},
                                                                     {"guys", "G AY Z"},
                                                                     {"have", "HH AE V"},
                                                                     {"hello", "HH AX L OW"},
                                                                     {"his", "HH IH Z"},
                                                                     {"into", "IH N T UW"},
                                                                     {"is", "IH Z"},
                                                                     {"know", "N OW"},
                                                                     {"laugh", "L AE F"},
                                                                     {"listen", "L IH S AX N"},
                                                                     {"live", "L IH V"},
                                                                     {"lose", "L UW Z"},
                                                                     {"many", "M EH N IY"},
                                                                     {"money", "M AH N IY"},
                                                                     {"move", "M UW V"},
                                                                     {"of", "AH V"},
                                                                     {"oh", "OW"},
                                                                     {"once", "W AH N S"},
                                                                     {"one", "W AH N"},
                                                                     {"only", "OW N L IY"},
                                                                     {"our", "AW ER"},
                                                                     {"own", "OW N"},
                                                                     {"people", "P IY P AX L"},
                                                                     {"put", "P UH T"},
                                                                     {"said", "S EH D"},
                                                                     {"says", "S EH Z"},
                                                                     {"shoe", "SH UW"},
                                                                     {"some", "S AH M"},
                                                                     {"something", "S AH M TH IH NG"},
                                                                     {"sugar", "SH UH G ER"},
                                                                     {"sure", "SH UH R"},
                                                                     {"that", "DH AE T"},
                                                                     {"the", "DH AX"},
                                                                     {"their", "DH EH R"},
                                                                     {"them", "DH EH M"},
                                                                     {"then", "DH EH N"},
                                                                     {"there", "DH EH R"},
                                                                     {"these", "DH IY Z"},
                                                                     {"they", "DH EY"},
                                                                     {"this", "DH IH S"},
                                                                     {"those", "DH OW Z"},
                                                                     {"than", "DH AE N"},
                                                                     {"though", "DH OW"},
                                                                     {"through", "TH R UW"},
                                                                     {"to", "T UW"},
                                                                     {"today", "T AX D EY"},
                                                                     {"together", "T AX G EH DH ER"},
                                                                     {"touch", "T AH CH"},
                                                                     {"two", "T UW"},
                                                                     {"was", "W AH Z"},
                                                                     {"water", "W AO T ER"},
                                                                     {"we're", "W IY R"},
                                                                     {"were", "W ER"},
                                                                     {"what", "W AH T"},
                                                                     {"where", "W EH R"},
                                                                     {"with", "W IH DH"},
                                                                     {"woman", "W UH M AX N"},
                                                                     {"women", "W IH M IH N"},
                                                                     {"won't", "W OW N T"},
                                                                     {"yes", "Y EH S"},
                                                                     {"you", "Y UW"},
                                                                     {"young", "Y AH NG"},
                                                                     {"you're", "Y AO R"},
                                                                     {"zero", "Z IY R OW"}};
  return words;
}

/// Of the letters in brackets, between what may stand to their left and right, the sounds. In the
/// surroundings
///   _  the word's edge          #  one vowel letter or more      :  any number of consonant letters
///   ^  one consonant letter     +  e, i or y                     %  an ending: e, er, es, ed, ing, ely, y
/// Of a letter's rules the first that fits is taken.
struct Rule {
  std::string_view left, letters, right, sounds;
};

constexpr Rule kRules[] = {{"#:", "able", "_", "AX B AX L"},
                           {"_", "aw", "#", "AX W"},
                           {"", "augh", "", "AO"},
                           {"", "au", "", "AO"},
                           {"", "aw", "", "AO"},
                           {"", "air", "", "EH R"},
                           {"", "ai", "", "EY"},
                           {"", "ay", "", "EY"},
                           {"", "al", "k", "AO"},
                           {"", "all", "", "AO L"},
                           {"", "alm", "", "AA M"},
                           {"", "alf", "", "AE F"},
                           {"", "are", "_", "EH R"},
                           {"", "arr", "", "AE R"},
                           {"w", "ar", "", "AO R"},
                           {"", "ar", "", "AA R"},
                           {"w", "a", "t", "AA"},
                           {"w", "a", "n", "AA"},
                           {"w", "a", "s", "AA"},
                           {"#:", "age", "_", "IH JH"},
                           {"", "a", "nge", "EY"},
                           {"", "a", "ste", "EY"},
                           {"", "a", "ble", "EY"},
                           {"", "a", "^%", "EY"},
                           {"", "a", "tion", "EY"},
                           {"#:", "al", "_", "AX L"},
                           {"#:", "an", "_", "AX N"},
                           {"", "a", "_", "AX"},
                           {"_", "a", "bout", "AX"},
                           {"", "a", "", "AE"},

                           {"m", "b", "_", ""},
                           {"", "bb", "", "B"},
                           {"", "b", "", "B"},

                           {"s", "ch", "", "K"},
                           {"_", "chr", "", "K R"},
                           {"", "ch", "", "CH"},
                           {"", "ck", "", "K"},
                           {"", "cious", "", "SH AX S"},
                           {"", "cial", "", "SH AX L"},
                           {"", "cian", "", "SH AX N"},
                           {"s", "c", "+", ""},
                           {"", "cc", "+", "K S"},
                           {"", "cc", "", "K"},
                           {"", "c", "+", "S"},
                           {"", "c", "", "K"},

                           {"", "dge", "", "JH"},
                           {"", "dd", "", "D"},
                           {"", "d", "", "D"},

                           {"#:", "e", "_", ""},
                           {":", "e", "_", "IY"},
                           {"d", "ed", "_", "IH D"},
                           {"t", "ed", "_", "IH D"},
                           {"p", "ed", "_", "T"},
                           {"k", "ed", "_", "T"},
                           {"s", "ed", "_", "T"},
                           {"sh", "ed", "_", "T"},
                           {"ch", "ed", "_", "T"},
                           {"f", "ed", "_", "T"},
                           {"#:", "ed", "_", "D"},
                           {"s", "es", "_", "IH Z"},
                           {"z", "es", "_", "IH Z"},
                           {"ch", "es", "_", "IH Z"},
                           {"sh", "es", "_", "IH Z"},
                           {"x", "es", "_", "IH Z"},
                           {"g", "es", "_", "IH Z"},
                           {"c", "es", "_", "IH Z"},
                           {"#:", "es", "_", "Z"},
                           {"", "ear", "n", "ER"},
                           {"", "ear", "th", "ER"},
                           {"", "eart", "", "AA R T"},
                           {"", "ear", "", "IY R"},
                           {"", "eer", "", "IY R"},
                           {"", "ee", "", "IY"},
                           {"", "ead", "", "EH D"},
                           {"", "eath", "er", "EH DH"},
                           {"", "ea", "", "IY"},
                           {"", "eigh", "", "EY"},
                           {"c", "ei", "", "IY"},
                           {"", "ei", "", "EY"},
                           {"", "ey", "_", "IY"},
                           {"", "eu", "", "Y UW"},
                           {"r", "ew", "", "UW"},
                           {"l", "ew", "", "UW"},
                           {"ch", "ew", "", "UW"},
                           {"", "ew", "", "Y UW"},
                           {"#:", "er", "_", "ER"},
                           {"#:", "ers", "_", "ER Z"},
                           {"", "ere", "_", "IY R"},
                           {"", "err", "", "EH R"},
                           {"", "er", "^", "ER"},
                           {"", "er", "_", "ER"},
                           {"", "er", "#", "EH R"},
                           {"#:", "en", "_", "AX N"},
                           {"#:", "el", "_", "AX L"},
                           {"#:", "ement", "", "M AX N T"},
                           {"#:", "ely", "_", "L IY"},
                           {"#:", "eful", "", "F AX L"},
                           {"", "e", "^%", "IY"},
                           {"", "e", "", "EH"},

                           {"", "ff", "", "F"},
                           {"", "f", "", "F"},

                           {"", "gh", "t", ""},
                           {"_", "gh", "", "G"},
                           {"#", "gh", "", ""},
                           {"_", "gn", "", "N"},
                           {"", "gue", "_", "G"},
                           {"", "gu", "+", "G"},
                           {"", "gg", "", "G"},
                           {"_", "g", "i", "G"},
                           {"", "g", "+", "JH"},
                           {"", "g", "", "G"},

                           {"_", "hour", "", "AW ER"},
                           {"_", "hon", "", "AA N"},
                           {"", "h", "#", "HH"},
                           {"", "h", "", ""},

                           {"_", "i", "'", "AY"},
                           {"", "igh", "", "AY"},
                           {"", "ign", "_", "AY N"},
                           {"", "ild", "_", "AY L D"},
                           {"_", "ind", "", "IH N D"},
                           {"", "ind", "ow", "IH N D"},
                           {"", "ind", "", "AY N D"},
                           {"_:", "ie", "_", "AY"},
                           {"_:", "ied", "_", "AY D"},
                           {"_:", "ies", "_", "AY Z"},
                           {"", "iew", "", "Y UW"},
                           {"", "ier", "_", "IY ER"},
                           {"", "ie", "", "IY"},
                           {"", "ir", "%", "AY ER"},
                           {"", "ir", "", "ER"},
                           {"", "ique", "", "IY K"},
                           {"", "ing", "_", "IH NG"},
                           {"", "i", "^%", "AY"},
                           {"_:", "i", "_", "AY"},
                           {"", "i", "_", "IY"},
                           {"", "io", "", "IY OW"},
                           {"", "ia", "", "IY AX"},
                           {"", "i", "", "IH"},

                           {"", "j", "", "JH"},
                           {"_", "kn", "", "N"},
                           {"", "k", "", "K"},
                           {"^", "le", "_", "AX L"},
                           {"^", "les", "_", "AX L Z"},
                           {"", "ll", "", "L"},
                           {"", "l", "", "L"},
                           {"", "mm", "", "M"},
                           {"", "m", "", "M"},
                           {"", "ngle", "_", "NG G AX L"},
                           {"a", "nger", "_", "N JH ER"},
                           {"", "nger", "_", "NG G ER"},
                           {"", "ng", "e", "N JH"},
                           {"", "ng", "", "NG"},
                           {"", "nk", "", "NG K"},
                           {"", "nn", "", "N"},
                           {"m", "n", "_", ""},
                           {"", "n", "", "N"},

                           {"", "ought", "", "AO T"},
                           {"r", "ough", "", "AH F"},
                           {"t", "ough", "", "AH F"},
                           {"c", "ough", "", "AO F"},
                           {"", "ough", "", "OW"},
                           {"", "oor", "", "AO R"},
                           {"", "ook", "", "UH K"},
                           {"", "oo", "", "UW"},
                           {"", "oar", "", "AO R"},
                           {"", "oa", "", "OW"},
                           {"", "oi", "", "OY"},
                           {"", "oy", "", "OY"},
                           {"", "ould", "", "UH D"},
                           {"", "our", "_", "AO R"},
                           {"#:", "ous", "_", "AX S"},
                           {"c", "oun", "tr", "AH N"},
                           {"", "ou", "ble", "AH"},
                           {"s", "ou", "p", "UW"},
                           {"gr", "ou", "p", "UW"},
                           {"", "ou", "", "AW"},
                           {"l", "ow", "_", "OW"},
                           {"n", "own", "", "OW N"},
                           {"sn", "ow", "", "OW"},
                           {"sh", "ow", "_", "OW"},
                           {"r", "ow", "_", "OW"},
                           {"#:", "ow", "_", "OW"},
                           {"", "ow", "", "AW"},
                           {"w", "or", "", "ER"},
                           {"#:", "or", "_", "ER"},
                           {"", "ore", "", "AO R"},
                           {"", "or", "", "AO R"},
                           {"", "old", "", "OW L D"},
                           {"", "oll", "", "OW L"},
                           {"", "ost", "_", "OW S T"},
                           {"", "oes", "_", "OW Z"},
                           {"", "oe", "_", "OW"},
                           {"", "o", "ther", "AH"},
                           {"", "ove", "_", "AH V"},
                           {"", "o", "^%", "OW"},
                           {"", "o", "_", "OW"},
                           {"", "o", "ng", "AO"},
                           {"", "o", "ff", "AO"},
                           {"", "o", "", "AA"},

                           {"", "ph", "", "F"},
                           {"_", "ps", "", "S"},
                           {"", "pp", "", "P"},
                           {"", "p", "", "P"},
                           {"", "que", "_", "K"},
                           {"", "qu", "", "K W"},
                           {"", "q", "", "K"},
                           {"", "rr", "", "R"},
                           {"", "r", "", "R"},

                           {"", "ssion", "", "SH AX N"},
                           {"", "sion", "", "ZH AX N"},
                           {"", "sure", "_", "ZH ER"},
                           {"", "sh", "", "SH"},
                           {"", "ss", "", "S"},
                           {"u", "s", "_", "S"},
                           {"i", "s", "_", "S"},
                           {"b", "s", "_", "Z"},
                           {"d", "s", "_", "Z"},
                           {"g", "s", "_", "Z"},
                           {"l", "s", "_", "Z"},
                           {"m", "s", "_", "Z"},
                           {"n", "s", "_", "Z"},
                           {"r", "s", "_", "Z"},
                           {"v", "s", "_", "Z"},
                           {"w", "s", "_", "Z"},
                           {"#", "s", "_", "Z"},
                           {"#", "s", "e_", "Z"},
                           {"#", "s", "y", "Z"},
                           {"", "s", "", "S"},

                           {"", "tion", "", "SH AX N"},
                           {"", "tial", "", "SH AX L"},
                           {"", "tious", "", "SH AX S"},
                           {"", "ture", "", "CH ER"},
                           {"", "tch", "", "CH"},
                           {"", "th", "er", "DH"},
                           {"", "th", "e_", "DH"},
                           {"", "th", "", "TH"},
                           {"", "tt", "", "T"},
                           {"s", "t", "le_", ""},
                           {"", "t", "", "T"},

                           {"", "uild", "", "IH L D"},
                           {"", "uy", "", "AY"},
                           {"", "ui", "t_", "UW"},
                           {"", "ure", "_", "UH R"},
                           {"", "urr", "", "ER"},
                           {"", "ur", "", "ER"},
                           {"", "ull", "_", "UH L"},
                           {"", "ue", "", "UW"},
                           {"_", "u", "^%", "Y UW"},
                           {"", "u", "^%", "UW"},
                           {"", "u", "_", "UW"},
                           {"", "u", "", "AH"},

                           {"", "v", "", "V"},
                           {"_", "wr", "", "R"},
                           {"", "who", "", "HH UW"},
                           {"", "wh", "", "W"},
                           {"", "w", "", "W"},
                           {"_", "x", "", "Z"},
                           {"", "x", "", "K S"},
                           {"_", "y", "", "Y"},
                           {"_:", "y", "_", "AY"},
                           {"#:", "y", "_", "IY"},
                           {"", "y", "^%", "AY"},
                           {"", "y", "_", "IY"},
                           {"", "y", "#", "Y"},
                           {"", "y", "", "IH"},
                           {"", "zz", "", "Z"},
                           {"", "z", "", "Z"}};

bool IsVowel(char c) { return std::string_view("aeiouy").find(c) != std::string_view::npos; }
bool IsConsonant(char c) { return c >= 'a' && c <= 'z' && !IsVowel(c); }

/// Letters seen from one place in one direction; the word's edge reads as '_'.
class Side {
 public:
  Side(std::string_view word, std::ptrdiff_t at, int step) : word_(word), at_(at), step_(step) {}
  char Letter() const {
    const bool inside = at_ >= 0 && at_ < static_cast<std::ptrdiff_t>(word_.size());
    return inside ? word_[static_cast<std::size_t>(at_)] : '_';
  }
  void Go() { at_ += step_; }

 private:
  std::string_view word_;
  std::ptrdiff_t at_;
  int step_;
};

bool FitsEnding(std::string_view rest) {
  for (const std::string_view ending : {"e", "er", "ers", "es", "ed", "ing", "ings", "ely", "y"}) {
    if (rest == ending) return true;
  }
  return false;
}

/// Whether the surroundings on one side are as the pattern asks. rest: the word from there on, for endings.
bool Fits(std::string_view pattern, Side side, int step, std::string_view rest) {
  for (std::size_t k = 0; k < pattern.size(); ++k) {
    const char wanted = step > 0 ? pattern[k] : pattern[pattern.size() - 1 - k];
    const char letter = side.Letter();
    switch (wanted) {
      case '#':
        if (!IsVowel(letter)) return false;
        while (IsVowel(side.Letter())) side.Go();
        break;
      case ':':
        while (IsConsonant(side.Letter())) side.Go();
        break;
      case '^':
        // An x sounds as two consonants.
        if (!IsConsonant(letter) || letter == 'x') return false;
        side.Go();
        break;
      case '+':
        if (letter != 'e' && letter != 'i' && letter != 'y') return false;
        side.Go();
        break;
      case '%':
        return FitsEnding(rest.substr(std::min(k, rest.size())));
      default:
        if (letter != wanted) return false;
        side.Go();
    }
  }
  return true;
}

bool Fits(const Rule& rule, std::string_view word, std::size_t at) {
  if (!word.substr(at).starts_with(rule.letters)) return false;
  const std::size_t behind = at + rule.letters.size();
  return Fits(rule.left, Side(word, static_cast<std::ptrdiff_t>(at) - 1, -1), -1, {}) &&
         Fits(rule.right, Side(word, static_cast<std::ptrdiff_t>(behind), 1), 1, word.substr(behind));
}

void AddSounds(std::string_view sounds, std::vector<std::string>& names) {
  std::istringstream words{std::string(sounds)};
  for (std::string name; words >> name;) names.push_back(name);
}

}  // namespace

std::vector<std::string> EnglishSoundNames(std::string_view word) {
  std::vector<std::string> names;
  if (const auto found = Exceptions().find(word); found != Exceptions().end()) {
    AddSounds(found->second, names);
    return names;
  }
  for (std::size_t at = 0; at < word.size();) {
    const Rule* fitting = nullptr;
    for (const Rule& rule : kRules) {
      if (rule.letters[0] == word[at] && Fits(rule, word, at)) {
        fitting = &rule;
        break;
      }
    }
    if (fitting) AddSounds(fitting->sounds, names);
    at += fitting ? fitting->letters.size() : 1;
  }
  return names;
}

}  // namespace convert
