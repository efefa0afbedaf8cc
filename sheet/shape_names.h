// The names of mouth shapes that the list offers, and how they are typed by letter into the sheet.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sheet {

/// 23 names in the list's order, all but the first with a trailing blank. "None" means no shape.
const std::vector<std::string>& ShapeNames();

/// The list's name for typed letters, in any case: "t" gives "T ", "TH" gives "Th ", "cl" gives "Closed ".
/// One letter must be a name of its own. Nothing for letters that begin no shape's name, and for "None",
/// which is no shape.
std::optional<std::string> ShapeByLetters(std::string_view letters);

/// Turns letters into shapes, one or two to a shape: the second one counts with the first if it comes within
/// a second on the same row and both together begin a name, else it begins anew.
class ShapeTyping {
 public:
  /// The shape that the row is to take now, if any. `letter` as typed, `seconds` by any clock.
  std::optional<std::string> Type(char letter, std::int32_t row, double seconds);

 private:
  std::string typed_;
  std::int32_t row_ = -1;
  double last_seconds_ = 0;
};

}  // namespace sheet
