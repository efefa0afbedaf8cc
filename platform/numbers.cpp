#include "platform/numbers.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace platform {
namespace {

template <typename Integer>
Integer Within(double value) {
  if (std::isnan(value)) return 0;
  // The largest 64-bit integer has no double of its own: the comparison must be with the next double above
  // it.
  if (value >= static_cast<double>(std::numeric_limits<Integer>::max()))
    return std::numeric_limits<Integer>::max();
  if (value <= static_cast<double>(std::numeric_limits<Integer>::min()))
    return std::numeric_limits<Integer>::min();
  return static_cast<Integer>(value);
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

/// What the text starts with of a number, without the blanks that stand before and within it: a sign, digits
/// and points, of which the reader takes as many as make a number.
std::string NumberPart(std::string_view text) {
  std::string number;
  for (const char c : text) {
    if (IsBlank(c)) continue;
    const bool sign = number.empty() && (c == '-' || c == '+');
    if (!IsDigit(c) && c != '.' && !sign) break;
    number += c;
  }
  return number;
}

}  // namespace

// The default rounding mode is to nearest, ties to even; nothing in this program changes it.
std::int32_t RoundToLong(double value) { return Within<std::int32_t>(std::nearbyint(value)); }
std::int64_t RoundToInt64(double value) { return Within<std::int64_t>(std::nearbyint(value)); }
std::int16_t RoundToShort(double value) { return Within<std::int16_t>(std::nearbyint(value)); }
std::int32_t FloorToLong(double value) { return Within<std::int32_t>(std::floor(value)); }

std::int32_t IntegerDivide(double dividend, double divisor) {
  const std::int32_t whole = RoundToLong(divisor);
  return whole == 0 ? 0 : RoundToLong(dividend) / whole;
}

double NumberAtStart(std::string_view text) {
  const std::string part = NumberPart(text);
  std::string_view number = part;
  if (number.empty()) return 0;
  if (number[0] == '+') number.remove_prefix(1);
  double value = 0;
  const auto read =
      std::from_chars(number.data(), number.data() + number.size(), value, std::chars_format::fixed);
  // For a number too great for a double the library gives 0, which would be the opposite of what is meant.
  if (read.ec == std::errc::result_out_of_range && number.find_first_of("123456789") < number.find('.'))
    value = number[0] == '-' ? std::numeric_limits<double>::lowest() : std::numeric_limits<double>::max();
  return value == 0 ? 0 : value;
}

std::string NumberText(double value) {
  char buffer[400];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed).ptr;
  return std::string(buffer, end);
}

std::string SignedForm(std::int64_t value) {
  return value < 0 ? std::to_string(value) : " " + std::to_string(value);
}

std::string OneDecimalPicture(double value, std::string_view decimal_sign) {
  const double tenths = std::floor(std::fabs(value) * 10 + 0.5);
  const auto whole = static_cast<std::int64_t>(tenths) / 10;
  const auto tenth = static_cast<std::int64_t>(tenths) % 10;
  std::string text = value < 0 && tenths > 0 ? "-" : "";
  if (whole != 0) text += std::to_string(whole);
  text += decimal_sign;
  if (tenth != 0) text += std::to_string(tenth);
  return text;
}

std::string SizeText(double bytes, RoundTo direction) {
  const bool giga = bytes >= 1e9;
  const double tenths = bytes / (giga ? 1e8 : 1e5);
  const double whole = direction == RoundTo::Above ? std::ceil(tenths) : std::floor(tenths);
  return NumberText(whole / 10) + (giga ? " GB" : " MB");
}

}  // namespace platform
