#include "convert/lines.h"

#include <charconv>
#include <cmath>
#include <system_error>

#include "platform/numbers.h"

namespace convert {

std::optional<std::string_view> Lines::Next() {
  if (rest_.empty()) return std::nullopt;
  const std::size_t end = rest_.find('\n');
  std::string_view line = rest_.substr(0, end);
  rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
  ++number_;
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::optional<std::int64_t> WholeInteger(std::string_view text) {
  std::int64_t value = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
  if (read.ec != std::errc{} || read.ptr != text.data() + text.size()) return std::nullopt;
  return value;
}

std::optional<double> WholeNumber(std::string_view text) {
  double value = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
  if (read.ec != std::errc{} || read.ptr != text.data() + text.size() || !std::isfinite(value))
    return std::nullopt;
  return value;
}

std::int64_t NearestFrame(double seconds, double frames_per_second) {
  return platform::RoundToInt64(seconds * frames_per_second);
}

}  // namespace convert
