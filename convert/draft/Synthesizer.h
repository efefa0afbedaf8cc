// A speech synthesizer that tells the sounds of words and their lengths, if the machine has one.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "convert/draft/speech_sounds.h"

namespace convert {

/// espeak-ng's library, looked for when the program runs. One at a time in a process.
class Synthesizer {
 public:
  /// Null if the library isn't there, can't start, or has no voice of that name.
  static std::unique_ptr<Synthesizer> Find(const std::string& language);
  ~Synthesizer();
  Synthesizer(const Synthesizer&) = delete;
  Synthesizer& operator=(const Synthesizer&) = delete;

  /// The sounds of each word of a phrase, with their lengths within it. A word of which nothing is spoken has
  /// none.
  std::vector<std::vector<SpeechSound>> SoundsOf(const std::vector<std::string>& words);

 private:
  struct Library;
  explicit Synthesizer(std::unique_ptr<Library> library);
  std::unique_ptr<Library> library_;
};

}  // namespace convert
