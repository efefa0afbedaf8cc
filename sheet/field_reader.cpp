#include "sheet/field_reader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <system_error>
#include <utility>

#include "platform/numbers.h"
#include "platform/utf8.h"

namespace sheet {
namespace {

constexpr std::size_t kMostBytesQuoted = 60;

std::string_view Trimmed(std::string_view field) {
  if (field.ends_with('\r')) field.remove_suffix(1);
  const auto first = field.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return field.substr(first, field.find_last_not_of(' ') - first + 1);
}

std::optional<double> WholeAsNumber(std::string_view field) {
  double value = 0;
  const char* end = field.data() + field.size();
  const auto read = std::from_chars(field.data(), end, value, std::chars_format::fixed);
  if (read.ec != std::errc{} || read.ptr != end || !std::isfinite(value)) return std::nullopt;
  return value;
}

bool EqualsIgnoringCase(std::string_view text, std::string_view lower_case) {
  return std::equal(text.begin(), text.end(), lower_case.begin(), lower_case.end(),
                    [](char c, char lower) { return (c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c) == lower; });
}

std::string RangeText(std::int32_t lowest, std::int32_t highest) {
  if (lowest == highest) return std::to_string(lowest);
  return "a number from " + std::to_string(lowest) + " to " + std::to_string(highest);
}

/// A long field's start only, so that the message stays readable whatever the field holds.
std::string Quoted(std::string_view field) {
  const std::string_view start = platform::CutAtCharacter(field, kMostBytesQuoted);
  return '"' + std::string(start) + (start.size() < field.size() ? "...\"" : "\"");
}

}  // namespace

std::string TextOf(FieldName name) {
  return name.frame < 0 ? name.what : std::string(name.what) + " of frame " + std::to_string(name.frame);
}

std::optional<std::string_view> FieldReader::Next() {
  if (Ended()) return std::nullopt;
  line_ = next_line_;
  const std::string_view rest = text_.substr(position_);
  const auto end = std::find_if(rest.begin(), rest.end(), [this](char c) { return EndsField(c); });
  const auto length = static_cast<std::size_t>(end - rest.begin());
  if (end_ == FieldsEndAt::kLines || (end != rest.end() && *end == '\n')) ++next_line_;
  position_ += std::min(length + 1, rest.size());
  field_ = Trimmed(rest.substr(0, length));
  field_is_open_ = end == rest.end() && !field_.empty() && rest.back() == field_.back();
  return field_;
}

std::optional<std::string_view> FieldReader::Text(FieldName name) {
  const auto field = Next();
  if (!field) NoteEnd(name);
  return field;
}

std::optional<std::int32_t> FieldReader::Number(FieldName name, std::int32_t lowest, std::int32_t highest) {
  const auto field = Text(name);
  if (!field) return std::nullopt;
  const auto number = WholeAsNumber(*field);
  const std::int64_t rounded = number ? platform::RoundToInt64(*number) : 0;
  if (number && rounded >= lowest && rounded <= highest) return static_cast<std::int32_t>(rounded);
  NoteUnexpected(TextOf(name) + ", " + RangeText(lowest, highest));
  return std::nullopt;
}

std::optional<bool> FieldReader::Flag(FieldName name) {
  const auto field = Text(name);
  if (!field) return std::nullopt;
  if (EqualsIgnoringCase(*field, "true")) return true;
  if (EqualsIgnoringCase(*field, "false")) return false;
  if (const auto number = WholeAsNumber(*field)) return *number != 0;
  NoteUnexpected(TextOf(name) + ", True or False");
  return std::nullopt;
}

bool FieldReader::Skip(int count, FieldName name) {
  for (int i = 0; i < count; ++i) {
    if (!Text(name)) return false;
  }
  return true;
}

std::int64_t FieldReader::FieldsLeft() const {
  if (Ended()) return 0;
  const std::string_view rest = text_.substr(position_);
  const auto ended = std::count_if(rest.begin(), rest.end(), [this](char c) { return EndsField(c); });
  return ended + (EndsField(rest.back()) ? 0 : 1);
}

void FieldReader::NoteIfCut(FieldName name) {
  if (!field_is_open_) return;
  Note("Line " + std::to_string(line_) + ": expected the line's end behind " + TextOf(name) +
       ", but the file ends.");
}

void FieldReader::NoteUnexpected(const std::string& expected) {
  Note("Line " + std::to_string(line_) + ": expected " + expected + ", found " + Quoted(field_) + ".");
}

void FieldReader::NoteEnd(FieldName name) {
  if (end_noted_) return;
  end_noted_ = true;
  Note("Line " + std::to_string(next_line_) + ": expected " + TextOf(name) + ", but the file ends.");
}

void FieldReader::Note(std::string fault) {
  if (faults_++ == 0) first_fault_ = std::move(fault);
}

std::string FieldReader::Report() const {
  if (faults_ <= 1) return first_fault_;
  return first_fault_ + "\n" + std::to_string(faults_ - 1) + " more like it.";
}

}  // namespace sheet
