// Which of a set's eleven mouth drawings a shape name stands for.
#pragma once

#include <optional>
#include <string_view>

namespace timeline {

inline constexpr int kMouths = 11;

/// The drawing's number, 1 to kMouths, in either set; nothing if the text names no mouth. One trailing blank
/// is allowed, since the list's names carry it and those from a file have lost it; in all else the match is
/// exact.
std::optional<int> MouthNumber(std::string_view shape);

/// The drawing in words, such as "lips pressed together". number from 1 to kMouths.
std::string_view MouthInWords(int number);

}  // namespace timeline
