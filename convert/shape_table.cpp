#include "convert/shape_table.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "convert/default_shapes.h"
#include "convert/lines.h"
#include "timeline/mouth_names.h"

namespace convert {
namespace {

constexpr std::string_view kNoName = "-";

std::vector<std::string> WordsOf(std::string_view text) {
  std::vector<std::string> words;
  std::size_t begin = 0;
  while ((begin = text.find_first_not_of(" \t", begin)) != std::string_view::npos) {
    const std::size_t end = std::min(text.find_first_of(" \t", begin), text.size());
    words.emplace_back(text.substr(begin, end - begin));
    begin = end;
  }
  return words;
}

/// The words of a line's three parts; nothing if it hasn't three.
std::optional<std::array<std::vector<std::string>, 3>> PartsOf(std::string_view line) {
  std::array<std::vector<std::string>, 3> parts;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::size_t bar = line.find('|');
    if ((bar == std::string_view::npos) != (i + 1 == parts.size())) return std::nullopt;
    parts[i] = WordsOf(line.substr(0, bar));
    line.remove_prefix(bar == std::string_view::npos ? line.size() : bar + 1);
  }
  return parts;
}

ShapeTable::Parsed Fault(const char* text, std::int64_t line, std::vector<std::string> more = {}) {
  more.insert(more.begin(), std::to_string(line));
  return {std::nullopt, {text, std::move(more)}};
}

}  // namespace

std::string_view WithoutTrailingBlank(std::string_view shape) {
  if (shape.ends_with(' ')) shape.remove_suffix(1);
  return shape;
}

bool IsShape(std::string_view name) { return timeline::MouthNumber(name).has_value(); }

std::string_view ShapeTable::DefaultText() { return kDefaultShapes; }

const ShapeTable& ShapeTable::Default() {
  static const ShapeTable table = *Parse(DefaultText()).table;
  return table;
}

ShapeTable::Parsed ShapeTable::Parse(std::string_view text) {
  ShapeTable table;
  Lines lines(text);
  while (const auto whole = lines.Next()) {
    const std::string_view line = whole->substr(0, whole->find('#'));
    if (line.find_first_not_of(" \t") == std::string_view::npos) continue;
    const auto parts = PartsOf(line);
    if (!parts || (*parts)[0].empty() || (*parts)[1].size() != 1 || (*parts)[2].size() != 1) {
      return Fault(QT_TRANSLATE_NOOP("convert",
                                     "line %1: expected names of the sheet, a bar, one name, a bar, "
                                     "one name"),
                   lines.Number());
    }
    for (const std::string& shape : (*parts)[0]) {
      if (!IsShape(shape)) {
        return Fault(QT_TRANSLATE_NOOP("convert", "line %1: %2 is no mouth of the sheet"), lines.Number(),
                     {Quoted(shape)});
      }
      const bool known = std::any_of(table.lines_.begin(), table.lines_.end(), [&](const Line& other) {
        return std::find(other.shapes.begin(), other.shapes.end(), shape) != other.shapes.end();
      });
      if (known) {
        return Fault(QT_TRANSLATE_NOOP("convert", "line %1: %2 stands in the table a second time"),
                     lines.Number(), {Quoted(shape)});
      }
    }
    table.lines_.push_back({(*parts)[0], {(*parts)[1][0], (*parts)[2][0]}});
  }
  if (table.lines_.empty()) {
    return {std::nullopt, {QT_TRANSLATE_NOOP("convert", "the table of names is empty"), {}}};
  }
  return {std::move(table), {}};
}

std::optional<std::string> ShapeTable::Foreign(std::string_view shape, Naming naming) const {
  for (const Line& line : lines_) {
    if (std::find(line.shapes.begin(), line.shapes.end(), WithoutTrailingBlank(shape)) == line.shapes.end())
      continue;
    const std::string& foreign = line.foreign[static_cast<int>(naming)];
    return foreign == kNoName ? std::nullopt : std::optional(foreign);
  }
  return std::nullopt;
}

std::optional<std::string> ShapeTable::Shape(std::string_view foreign, Naming naming) const {
  if (foreign == kNoName) return std::nullopt;
  for (const Line& line : lines_) {
    if (line.foreign[static_cast<int>(naming)] == foreign) return line.shapes.front();
  }
  return std::nullopt;
}

}  // namespace convert
