// Which name of the sheet's is which in other programs. The table is a text that a person can read and
// replace; assets/shapes.txt is the one built in, and tells the form.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "convert/message.h"

namespace convert {

/// The two foreign sets of names.
enum class Naming { kSwitchData, kCues };

class ShapeTable {
 public:
  /// The table built in.
  static const ShapeTable& Default();
  /// The text of the table built in.
  static std::string_view DefaultText();

  /// A table from a text, or the fault with its line.
  struct Parsed;
  static Parsed Parse(std::string_view text);

  /// The foreign name of a sheet's shape, with or without a trailing blank; none if the table has none.
  std::optional<std::string> Foreign(std::string_view shape, Naming naming) const;
  /// The sheet's name for a foreign one: the first name of the first line that has it.
  std::optional<std::string> Shape(std::string_view foreign, Naming naming) const;

 private:
  struct Line {
    std::vector<std::string> shapes;
    std::string foreign[2];
  };
  std::vector<Line> lines_;
};

struct ShapeTable::Parsed {
  std::optional<ShapeTable> table;
  Message failure;
};

/// A name that the sheet's preview shows a mouth for, without its trailing blank.
bool IsShape(std::string_view name);
std::string_view WithoutTrailingBlank(std::string_view shape);

}  // namespace convert
