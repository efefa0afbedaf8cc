// The bytes of a text file as UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace sheet {

inline constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";

/// Windows-1252 as UTF-8. The five bytes without a character there become the control characters of the same
/// number, so that nothing is lost.
std::string Utf8FromWindows1252(std::string_view bytes);

/// Whether the bytes are UTF-8, as a whole or but for the part of a character that a cut file may end with.
bool IsUtf8(std::string_view bytes);

/// UTF-8 stays, without a byte order mark and without the part of a character that a cut file may end with;
/// anything else is taken for Windows-1252, as older machines wrote it.
std::string DecodedText(std::string bytes);

}  // namespace sheet
