#include "sheet/shape_names.h"

#include <algorithm>
#include <cctype>

namespace sheet {

const std::vector<std::string>& ShapeNames() {
  static const std::vector<std::string> names = {"None", "A ", "B ", "Ch ", "Closed ", "D ", "E ", "F ",
                                                 "G ",   "I ", "K ", "L ",  "M ",      "N ", "O ", "P ",
                                                 "R ",   "S ", "T ", "Th ", "U ",      "V ", "W "};
  return names;
}

namespace {

constexpr double kPatienceSeconds = 1.0;

char Lower(char letter) { return static_cast<char>(std::tolower(static_cast<unsigned char>(letter))); }

bool SameLetters(std::string_view a, std::string_view b) {
  return std::ranges::equal(a, b, {}, Lower, Lower);
}

/// All shapes' names, without "None" and without the blank behind each.
template <typename Test>
std::optional<std::string> FindName(const Test& fits) {
  for (const std::string& name : ShapeNames())
    if (name != "None" && fits(std::string_view(name).substr(0, name.size() - 1))) return name;
  return std::nullopt;
}

bool BeginsAName(std::string_view letters) {
  return FindName([&](std::string_view name) { return SameLetters(name.substr(0, letters.size()), letters); })
      .has_value();
}

}  // namespace

std::optional<std::string> ShapeByLetters(std::string_view letters) {
  auto whole = FindName([&](std::string_view name) { return SameLetters(name, letters); });
  if (whole || letters.size() < 2) return whole;
  return FindName(
      [&](std::string_view name) { return SameLetters(name.substr(0, letters.size()), letters); });
}

std::optional<std::string> ShapeTyping::Type(char letter, std::int32_t row, double seconds) {
  const double passed = seconds - last_seconds_;
  const bool goes_on = row == row_ && passed >= 0 && passed <= kPatienceSeconds;
  typed_ = goes_on && BeginsAName(typed_ + letter) ? typed_ + letter : std::string(1, letter);
  row_ = row;
  last_seconds_ = seconds;
  return ShapeByLetters(typed_);
}

}  // namespace sheet
