#include "sheet/text_encoding.h"

#include <algorithm>
#include <cstdint>

namespace sheet {
namespace {

/// Characters of the bytes 0x80 to 0x9f.
constexpr std::uint16_t kHighControls[32] = {
    0x20ac, 0x0081, 0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021, 0x02c6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008d, 0x017d, 0x008f, 0x0090, 0x2018, 0x2019, 0x201c, 0x201d, 0x2022,
    0x2013, 0x2014, 0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0x009d, 0x017e, 0x0178,
};

struct LeadByte {
  int continuation_bytes;  // -1: no lead byte
  std::uint32_t bits;
  std::uint32_t lowest_character;
};

LeadByte Lead(unsigned char byte) {
  if (byte < 0x80) return {0, byte, 0};
  if (byte >= 0xc0 && byte < 0xe0) return {1, byte & 0x1fu, 0x80};
  if (byte >= 0xe0 && byte < 0xf0) return {2, byte & 0x0fu, 0x800};
  if (byte >= 0xf0 && byte < 0xf8) return {3, byte & 0x07u, 0x10000};
  return {-1, 0, 0};
}

/// Bytes of the character at the start; 0 if there is none.
std::size_t CharacterLength(std::string_view bytes) {
  const LeadByte lead = Lead(static_cast<unsigned char>(bytes[0]));
  if (lead.continuation_bytes < 0) return 0;
  const auto length = static_cast<std::size_t>(lead.continuation_bytes) + 1;
  if (length > bytes.size()) return 0;
  std::uint32_t character = lead.bits;
  for (std::size_t i = 1; i < length; ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    if ((byte & 0xc0) != 0x80) return 0;
    character = character << 6 | (byte & 0x3fu);
  }
  const bool surrogate = character >= 0xd800 && character <= 0xdfff;
  return character < lead.lowest_character || surrogate || character > 0x10ffff ? 0 : length;
}

/// Bytes from the start that are UTF-8.
std::size_t Utf8Length(std::string_view bytes) {
  std::size_t length = 0;
  while (length < bytes.size()) {
    const std::size_t character = CharacterLength(bytes.substr(length));
    if (character == 0) break;
    length += character;
  }
  return length;
}

bool IsContinuation(char c) { return (static_cast<unsigned char>(c) & 0xc0) == 0x80; }

/// Whether the bytes are UTF-8 that ends within a character, as a truncated file may. They are taken for
/// UTF-8 only if a whole character beyond ASCII stands before the cut: a lone high byte at the end is rather
/// a letter in Windows-1252.
bool IsCutUtf8(std::string_view bytes, std::size_t utf8_length) {
  const std::string_view rest = bytes.substr(utf8_length);
  const int continuation_bytes = Lead(static_cast<unsigned char>(rest[0])).continuation_bytes;
  return static_cast<int>(rest.size()) <= continuation_bytes &&
         std::all_of(rest.begin() + 1, rest.end(), IsContinuation) &&
         std::any_of(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(utf8_length), IsContinuation);
}

/// Of a character below U+10000.
void AppendUtf8(std::string& text, std::uint32_t character) {
  if (character < 0x80) {
    text += static_cast<char>(character);
    return;
  }
  if (character < 0x800) {
    text += static_cast<char>(0xc0 | character >> 6);
  } else {
    text += static_cast<char>(0xe0 | character >> 12);
    text += static_cast<char>(0x80 | (character >> 6 & 0x3f));
  }
  text += static_cast<char>(0x80 | (character & 0x3f));
}

}  // namespace

std::string Utf8FromWindows1252(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 8);
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    AppendUtf8(text, byte >= 0x80 && byte < 0xa0 ? kHighControls[byte - 0x80] : byte);
  }
  return text;
}

bool IsUtf8(std::string_view bytes) {
  const std::size_t utf8_length = Utf8Length(bytes);
  return utf8_length == bytes.size() || IsCutUtf8(bytes, utf8_length);
}

std::string DecodedText(std::string bytes) {
  const std::size_t utf8_length = Utf8Length(bytes);
  if (utf8_length < bytes.size()) {
    if (!IsCutUtf8(bytes, utf8_length)) return Utf8FromWindows1252(bytes);
    bytes.resize(utf8_length);
  }
  if (bytes.starts_with(kByteOrderMark)) bytes.erase(0, kByteOrderMark.size());
  return bytes;
}

}  // namespace sheet
