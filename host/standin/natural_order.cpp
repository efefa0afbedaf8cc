#include "host/standin/natural_order.h"

#include <cctype>

namespace host {
namespace {

bool IsDigit(char letter) { return letter >= '0' && letter <= '9'; }
int Lower(char letter) { return std::tolower(static_cast<unsigned char>(letter)); }

/// Takes the digits at the start of a text off it, without their leading zeros.
std::string_view TakeNumber(std::string_view& text) {
  while (text.size() > 1 && text[0] == '0' && IsDigit(text[1])) text.remove_prefix(1);
  std::size_t digits = 0;
  while (digits < text.size() && IsDigit(text[digits])) ++digits;
  const auto number = text.substr(0, digits);
  text.remove_prefix(digits);
  return number;
}

/// Below, at or above 0, as `a` stands to `b`; what was compared is taken off both.
int CompareNext(std::string_view& a, std::string_view& b) {
  if (IsDigit(a[0]) && IsDigit(b[0])) {
    const auto x = TakeNumber(a), y = TakeNumber(b);
    // Without leading zeros the longer number is the larger one, however many digits there are.
    return x.size() != y.size() ? (x.size() < y.size() ? -1 : 1) : x.compare(y);
  }
  const int difference = Lower(a[0]) - Lower(b[0]);
  a.remove_prefix(1);
  b.remove_prefix(1);
  return difference;
}

}  // namespace

bool NaturallyBefore(std::string_view a, std::string_view b) {
  std::string_view rest_a = a, rest_b = b;
  while (!rest_a.empty() && !rest_b.empty())
    if (const int order = CompareNext(rest_a, rest_b); order != 0) return order < 0;
  if (rest_a.empty() != rest_b.empty()) return rest_a.empty();
  return a < b;
}

}  // namespace host
