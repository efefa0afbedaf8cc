// Cutting UTF-8 texts.
#pragma once

#include <cstddef>
#include <string_view>

namespace platform {

/// The first bytes of a text, at most `most_bytes` of them, cut between two characters.
inline std::string_view CutAtCharacter(std::string_view text, std::size_t most_bytes) {
  if (text.size() <= most_bytes) return text;
  std::size_t end = most_bytes;
  // Bytes within a character begin with the bits 10.
  while (end > 0 && (text[end] & 0xc0) == 0x80) --end;
  return text.substr(0, end);
}

}  // namespace platform
