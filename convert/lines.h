// A text line by line, and numbers read strictly.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace convert {

class Lines {
 public:
  /// The text must outlive the lines.
  explicit Lines(std::string_view text) : rest_(text) {}

  /// The next line without its end, which is LF or CR LF; none at the end of the text.
  std::optional<std::string_view> Next();
  /// The number, from 1, of the line that Next gave last.
  std::int64_t Number() const { return number_; }

 private:
  std::string_view rest_;
  std::int64_t number_ = 0;
};

/// Without blanks and tabs at its start and end.
std::string_view Trimmed(std::string_view text);

/// A whole text as an integer, or as a finite decimal number with a point; no value if it is anything else.
std::optional<std::int64_t> WholeInteger(std::string_view text);
std::optional<double> WholeNumber(std::string_view text);

/// The frame nearest a time; held within what can be counted, so that a time from any file may be passed.
std::int64_t NearestFrame(double seconds, double frames_per_second);

}  // namespace convert
