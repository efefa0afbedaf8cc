// A text of phrases, one a line, as it is to be laid along a sound.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "convert/message.h"

namespace convert {

struct Phrase {
  /// Where the phrase begins in the sound, if the line tells it.
  std::optional<double> start_seconds;
  /// As they are written, without the punctuation around them.
  std::vector<std::string> words;
};

struct Phrases {
  std::vector<Phrase> phrases;
  Message failure;
};

/// A line may begin with its start: "[1.5]" or "[0:01.5]" before the words, or the time alone and a tab.
/// Starts must not go back. Empty lines and lines that begin with # are passed over.
Phrases ParsePhrases(std::string_view text);

}  // namespace convert
