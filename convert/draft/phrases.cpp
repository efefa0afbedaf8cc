#include "convert/draft/phrases.h"

#include <algorithm>
#include <utility>

#include "convert/lines.h"

namespace convert {
namespace {

/// "1.5" or "1:02.5"
std::optional<double> TimeOf(std::string_view text) {
  double minutes = 0;
  const std::size_t colon = text.find(':');
  if (colon != std::string_view::npos) {
    const auto whole = WholeInteger(text.substr(0, colon));
    if (!whole || *whole < 0) return std::nullopt;
    minutes = static_cast<double>(*whole);
    text.remove_prefix(colon + 1);
  }
  const auto seconds = WholeNumber(text);
  if (!seconds || *seconds < 0) return std::nullopt;
  return 60 * minutes + *seconds;
}

/// The part of a line that tells its start; empty if none does. The line keeps the rest.
std::string_view TakeTime(std::string_view& line) {
  const std::size_t end = line.find(line.starts_with('[') ? ']' : '\t');
  if (end == std::string_view::npos) return {};
  const std::string_view time = line.substr(0, end);
  line.remove_prefix(end + 1);
  return Trimmed(time.starts_with('[') ? time.substr(1) : time);
}

bool IsPunctuation(char c) {
  return std::string_view("\"'.,;:!?()[]{}<>*_-").find(c) != std::string_view::npos;
}

/// Quotes and dashes beyond ASCII, as word processors write them.
constexpr std::string_view kWideMarks[] = {"\xe2\x80\x9c", "\xe2\x80\x9d", "\xe2\x80\x9e", "\xe2\x80\x98",
                                           "\xe2\x80\x99", "\xe2\x80\x93", "\xe2\x80\x94", "\xe2\x80\xa6",
                                           "\xc2\xab",     "\xc2\xbb"};

std::string WithoutPunctuation(std::string_view word) {
  for (bool stripped = true; stripped && !word.empty();) {
    stripped = false;
    if (IsPunctuation(word.front())) word.remove_prefix(1), stripped = true;
    if (!word.empty() && IsPunctuation(word.back())) word.remove_suffix(1), stripped = true;
    for (const std::string_view mark : kWideMarks) {
      if (word.starts_with(mark)) word.remove_prefix(mark.size()), stripped = true;
      if (word.ends_with(mark)) word.remove_suffix(mark.size()), stripped = true;
    }
  }
  return std::string(word);
}

std::vector<std::string> WordsOf(std::string_view line) {
  std::vector<std::string> words;
  while (!(line = Trimmed(line)).empty()) {
    const std::size_t end = std::min(line.find_first_of(" \t"), line.size());
    std::string word = WithoutPunctuation(line.substr(0, end));
    if (!word.empty()) words.push_back(std::move(word));
    line.remove_prefix(end);
  }
  return words;
}

}  // namespace

Phrases ParsePhrases(std::string_view text) {
  Phrases parsed;
  double last_start = 0;
  Lines lines(text);
  while (auto line = lines.Next()) {
    std::string_view rest = Trimmed(*line);
    if (rest.empty() || rest.starts_with('#')) continue;
    Phrase phrase;
    const std::string_view time = TakeTime(rest);
    if (!time.empty()) {
      phrase.start_seconds = TimeOf(time);
      if (!phrase.start_seconds || *phrase.start_seconds < last_start) {
        parsed.failure = {QT_TRANSLATE_NOOP("convert",
                                            "line %1: expected a time in seconds or minutes:seconds, not "
                                            "before the one above, found %2"),
                          {std::to_string(lines.Number()), Quoted(std::string(time))}};
        return parsed;
      }
      last_start = *phrase.start_seconds;
    }
    phrase.words = WordsOf(rest);
    if (!phrase.words.empty()) parsed.phrases.push_back(std::move(phrase));
  }
  if (parsed.phrases.empty()) parsed.failure = {QT_TRANSLATE_NOOP("convert", "the text has no words"), {}};
  return parsed;
}

}  // namespace convert
