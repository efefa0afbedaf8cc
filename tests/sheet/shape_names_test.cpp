#include "sheet/shape_names.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

struct Stroke {
  char letter;
  std::int32_t row;
  double seconds;
  const char* shape;  // empty: the row keeps what it has
};

TEST(ShapeTyping, ASecondLetterInTimeCountsWithTheFirst) {
  const std::vector<Stroke> runs[] = {
      {{'m', 1, 0, "M "}, {'o', 1, 0.1, "O "}, {'x', 1, 0.2, ""}, {'P', 1, 0.3, "P "}},
      {{'t', 1, 0, "T "}, {'H', 1, 0.9, "Th "}, {'h', 1, 1.0, ""}, {'t', 1, 1.1, "T "}, {'t', 1, 1.2, "T "}},
      {{'t', 1, 0, "T "}, {'h', 1, 1.1, ""}, {'t', 2, 2, "T "}, {'h', 2, 2.9, "Th "}},  // too late at first
      {{'t', 1, 0, "T "}, {'h', 2, 0.1, ""}},                                           // on the next row
      {{'t', 1, 86399.9, "T "}, {'h', 1, 0.1, ""}},  // the clock began anew at midnight
      {{'c', 1, 0, ""},
       {'h', 1, 0.5, "Ch "},
       {'c', 1, 0.6, ""},
       {'l', 1, 0.7, "Closed "},
       {'o', 1, 0.8, "Closed "}},
      {{'n', 1, 0, "N "}, {'o', 1, 0.1, "O "}, {'n', 1, 0.2, "N "}},  // "None" isn't a shape
      {{'q', 1, 0, ""}, {'\n', 1, 0, ""}},
  };
  for (const auto& run : runs) {
    sheet::ShapeTyping typing;
    for (const Stroke& stroke : run)
      EXPECT_EQ(typing.Type(stroke.letter, stroke.row, stroke.seconds).value_or(""), stroke.shape)
          << stroke.letter << " at " << stroke.seconds;
  }
}

}  // namespace
