// Fields pulled one by one from the text of a sheet file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace sheet {

/// Where a field ends. Lines: at a line end, commas are part of it. Commas: at a comma or a line end.
/// Either way blanks at its start and end aren't part of it, and a line end is LF or CR LF.
enum class FieldsEndAt { kLines, kCommas };

/// What stands in a field, for the report of a fault: "the comment of frame 12".
struct FieldName {
  const char* what;
  std::int32_t frame = -1;  // -1: not of a frame
};
std::string TextOf(FieldName name);

/// Reads on, field by field. A field that can't be used is passed over, so that the next one is the next one
/// in the file, and noted: see Report().
class FieldReader {
 public:
  /// The text must outlive the reader.
  FieldReader(std::string_view text, FieldsEndAt end) : text_(text), end_(end) {}

  /// No value: the file has ended.
  std::optional<std::string_view> Text(FieldName name);
  /// A number in its whole, rounded to an integer; no value also if it isn't one, or lies outside the bounds.
  std::optional<std::int32_t> Number(FieldName name, std::int32_t lowest, std::int32_t highest);
  /// "True" or "False" in any letter case, or a number, of which all but 0 are true.
  std::optional<bool> Flag(FieldName name);
  /// Passes over fields whatever they hold. False if the file has ended before.
  bool Skip(int count, FieldName name);

  bool Ended() const { return position_ >= text_.size(); }
  /// How many fields are still to come. Walks what is left of the text.
  std::int64_t FieldsLeft() const;

  /// Notes it if the text ends right behind the field read last, with neither a blank nor a line end: part of
  /// the field may be missing.
  void NoteIfCut(FieldName name);
  /// Notes that the field read last isn't what was expected.
  void NoteUnexpected(const std::string& expected);
  /// The first fault with its line and what was expected there, and how many more there are; empty if none.
  std::string Report() const;

 private:
  std::optional<std::string_view> Next();
  void NoteEnd(FieldName name);
  void Note(std::string fault);
  bool EndsField(char c) const { return c == '\n' || (c == ',' && end_ == FieldsEndAt::kCommas); }

  std::string_view text_;
  FieldsEndAt end_;
  std::size_t position_ = 0;
  std::int64_t next_line_ = 1;
  std::int64_t line_ = 1;  // of the field read last
  std::string_view field_;
  bool field_is_open_ = false;
  bool end_noted_ = false;
  std::string first_fault_;
  std::int64_t faults_ = 0;
};

}  // namespace sheet
