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
  // The upper limit of 64 bits has no double of its own: the comparison must be against the next one up.
  if (value >= static_cast<double>(std::numeric_limits<Integer>::max()))
    return std::numeric_limits<Integer>::max();
  if (value <= static_cast<double>(std::numeric_limits<Integer>::min()))
    return std::numeric_limits<Integer>::min();
  return static_cast<Integer>(value);
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// The part of the text that is the number at its start; empty if there is none.
std::string_view NumberPart(std::string_view text) {
  const auto start = text.find_first_not_of(" \t\r\n");
  if (start == std::string_view::npos) return {};
  text.remove_prefix(start);
  std::size_t end = !text.empty() && (text[0] == '-' || text[0] == '+') ? 1 : 0;
  bool digits = false;
  for (bool point = false; end < text.size(); ++end) {
    if (IsDigit(text[end])) {
      digits = true;
    } else if (text[end] == '.' && !point) {
      point = true;
    } else {
      break;
    }
  }
  return digits ? text.substr(0, end) : std::string_view{};
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
  std::string_view number = NumberPart(text);
  if (number.empty()) return 0;
  if (number[0] == '+') number.remove_prefix(1);
  double value = 0;
  const auto read =
      std::from_chars(number.data(), number.data() + number.size(), value, std::chars_format::fixed);
  // The library leaves a number that no double holds at 0, which would be the opposite of what it is.
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

std::string OneDecimalPicture(double value, char decimal_sign) {
  const double tenths = std::floor(std::fabs(value) * 10 + 0.5);
  const auto whole = static_cast<std::int64_t>(tenths) / 10;
  const auto tenth = static_cast<std::int64_t>(tenths) % 10;
  std::string text = value < 0 && tenths > 0 ? "-" : "";
  if (whole != 0) text += std::to_string(whole);
  text += decimal_sign;
  if (tenth != 0) text += std::to_string(tenth);
  return text;
}

}  // namespace platform
