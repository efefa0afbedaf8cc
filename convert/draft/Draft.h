// A first draft of a sheet from a text and its sound.
#pragma once

#include <string>
#include <string_view>

#include "convert/document.h"
#include "convert/sound/SoundFile.h"

namespace convert {

/// How words become sounds.
struct Spelling {
  /// As the speech synthesizer names it: "en-us".
  std::string language;
  /// Whether a synthesizer, if there is one, may be asked; else the rules for English are used.
  bool synthesizer = true;
};

/// Lays the words of a text along the sound. context holds the sound's length.
Reading DraftOf(std::string_view text, SoundFile& sound, const Spelling& spelling, const Context& context);

}  // namespace convert
