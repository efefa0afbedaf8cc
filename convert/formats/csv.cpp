#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "convert/document.h"
#include "convert/formats/formats.h"
#include "convert/lines.h"
#include "convert/message.h"
#include "convert/shape_table.h"
#include "timeline/velocity_values.h"

namespace convert {
namespace {

enum Column { kFrame, kShape, kComment, kFirstTrack };
constexpr int kColumns = kFirstTrack + sheet::kTrackChannels;
constexpr std::array<std::string_view, kColumns> kHeadings = {"Frame", "Shape", "Comment", "Yellow",
                                                              "Red",   "Green", "Blue"};

/// One row of a table. Quoted cells may hold separators, line ends and doubled quotes.
class TableReader {
 public:
  explicit TableReader(std::string_view text) : text_(text) {
    const std::string_view first = text.substr(0, text.find('\n'));
    // The one that is there most often: a comment of the first row may hold one of the others.
    for (const char separator : {';', '\t'}) {
      if (std::count(first.begin(), first.end(), separator) >
          std::count(first.begin(), first.end(), separator_))
        separator_ = separator;
    }
  }

  /// The line on which the row begins.
  std::int64_t Line() const { return row_line_; }

  /// The line of an opening quote that has no closing one; 0 if all are closed.
  std::int64_t UnclosedLine() const { return unclosed_line_; }

  std::optional<std::vector<std::string>> NextRow() {
    if (position_ >= text_.size()) return std::nullopt;
    row_line_ = line_;
    std::vector<std::string> row(1);
    while (position_ < text_.size()) {
      const char c = text_[position_];
      if (c == '"' && row.back().empty()) {
        ReadQuoted(row.back());
        continue;
      }
      ++position_;
      if (c == separator_) {
        row.emplace_back();
      } else if (c == '\n') {
        ++line_;
        break;
      } else if (c != '\r' || (position_ < text_.size() && text_[position_] != '\n')) {
        row.back() += c;
      }
    }
    return row;
  }

 private:
  /// From the opening quote to behind the closing one, or to the end of the file.
  void ReadQuoted(std::string& cell) {
    const std::int64_t opened = line_;
    for (++position_; position_ < text_.size(); ++position_) {
      const char c = text_[position_];
      if (c == '\n') ++line_;
      if (c == '"' && text_.substr(position_ + 1, 1) != "\"") {
        ++position_;
        return;
      }
      if (c == '"') ++position_;
      cell += c;
    }
    unclosed_line_ = opened;
  }

  std::string_view text_;
  char separator_ = ',';
  std::size_t position_ = 0;
  std::int64_t line_ = 1, row_line_ = 1, unclosed_line_ = 0;
};

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [&](char x, char y) { return lower(x) == lower(y); });
}

/// Where each of our columns stands in the table; -1 for one that is missing.
using Places = std::array<int, kColumns>;

Places InOrder() {
  Places places{};
  for (int i = 0; i < kColumns; ++i) places[static_cast<std::size_t>(i)] = i;
  return places;
}

std::optional<Places> PlacesByHeadings(const std::vector<std::string>& row) {
  Places places;
  places.fill(-1);
  for (std::size_t i = 0; i < row.size(); ++i) {
    for (std::size_t column = 0; column < kHeadings.size(); ++column) {
      if (places[column] < 0 && EqualIgnoringCase(Trimmed(row[i]), kHeadings[column]))
        places[column] = static_cast<int>(i);
    }
  }
  return places[kFrame] < 0 ? std::nullopt : std::optional(places);
}

std::string_view Cell(const std::vector<std::string>& row, const Places& places, int column) {
  const int place = places[static_cast<std::size_t>(column)];
  if (place < 0 || static_cast<std::size_t>(place) >= row.size()) return {};
  return Trimmed(row[static_cast<std::size_t>(place)]);
}

/// Without the decimals that are all zero, which a spreadsheet may add behind its own decimal sign.
std::optional<std::int64_t> CellInteger(std::string_view cell) {
  const std::size_t sign = cell.find_first_of(".,");
  if (sign != std::string_view::npos && cell.find_first_not_of('0', sign + 1) == std::string_view::npos)
    cell = cell.substr(0, sign);
  return WholeInteger(cell);
}

Reading CellRefused(const char* expected, std::int64_t line, int column, std::string_view cell) {
  return Refused(expected, {std::to_string(line), std::string(kHeadings[static_cast<std::size_t>(column)]),
                            Quoted(std::string(cell))});
}

/// One frame's four values; those that are missing are at the start value.
using TrackValues = std::array<std::uint8_t, sheet::kTrackChannels>;

std::string QuotedCell(std::string_view text) {
  if (text.find_first_of(",;\"\r\n\t") == std::string_view::npos) return std::string(text);
  std::string cell = "\"";
  for (const char c : text) cell += c == '"' ? std::string("\"\"") : std::string(1, c);
  return cell + "\"";
}

}  // namespace

Reading ReadCsv(std::string_view text, const Context& context) {
  TableReader table(text);
  Entries found;
  Messages notes;
  std::vector<std::pair<std::int64_t, TrackValues>> tracks;
  Places places = InOrder();
  bool first_row = true;
  while (const auto row = table.NextRow()) {
    if (table.UnclosedLine() > 0) {
      return Refused(
          QT_TRANSLATE_NOOP("convert", "line %1: a quotation mark opens a cell and none closes it"),
          {std::to_string(table.UnclosedLine())});
    }
    const bool empty =
        std::all_of(row->begin(), row->end(), [](const auto& c) { return Trimmed(c).empty(); });
    if (empty) continue;
    // For some spreadsheets a line before the table tells the separator.
    if (first_row && row->front() == "sep=") continue;
    if (std::exchange(first_row, false)) {
      if (const auto headed = PlacesByHeadings(*row)) {
        places = *headed;
        continue;
      }
    }
    const std::string_view number = Cell(*row, places, kFrame);
    const auto frame = CellInteger(number);
    if (!frame || *frame < 0 || *frame >= kMostFramesUnheard) {
      return CellRefused(QT_TRANSLATE_NOOP("convert",
                                           "line %1, column %2: expected a frame's number from 0, "
                                           "found %3"),
                         table.Line(), kFrame, number);
    }
    Entry entry{*frame, std::string(Cell(*row, places, kShape)), std::string(Cell(*row, places, kComment))};
    if (!entry.shape.empty() && !IsShape(entry.shape)) {
      notes.push_back(UnknownMouth(LineNumbered(table.Line()), entry.shape));
      entry.comment += (entry.comment.empty() ? "" : " ") + entry.shape;
      entry.shape.clear();
    }
    found.entries.push_back(std::move(entry));
    TrackValues values;
    bool has_values = false;
    for (int channel = 0; channel < sheet::kTrackChannels; ++channel) {
      const std::string_view cell = Cell(*row, places, kFirstTrack + channel);
      const auto value = cell.empty() ? timeline::kVelocityStart : CellInteger(cell);
      if (!value || *value < 0 || *value > 255) {
        return CellRefused(QT_TRANSLATE_NOOP("convert",
                                             "line %1, column %2: expected a number from 0 to 255, "
                                             "found %3"),
                           table.Line(), kFirstTrack + channel, cell);
      }
      has_values = has_values || !cell.empty();
      values[static_cast<std::size_t>(channel)] = static_cast<std::uint8_t>(*value);
    }
    if (has_values) tracks.emplace_back(*frame, values);
  }
  if (first_row) return Refused(QT_TRANSLATE_NOOP("convert", "the table has no rows"));
  Reading reading = SheetOf(std::move(found), context, std::move(notes));
  if (!reading.sheet) return reading;
  auto& values = reading.sheet->track_values;
  for (const auto& [frame, of_frame] : tracks) {
    const auto index = static_cast<std::size_t>(frame);
    if (!context.sound_seconds && index >= values.size()) {
      TrackValues start;
      start.fill(timeline::kVelocityStart);
      values.resize(index + 1, start);
    }
    if (index < values.size()) values[index] = of_frame;
  }
  return reading;
}

Writing WriteCsv(const Document& document) {
  std::string text;
  for (const auto heading : kHeadings) text += (text.empty() ? "" : ",") + std::string(heading);
  text += "\r\n";
  for (std::int64_t frame = 0; frame < FramesOf(document); ++frame) {
    text += std::to_string(frame) + "," + QuotedCell(ShapeOf(document, frame)) + "," +
            QuotedCell(CommentOf(document, frame));
    for (std::size_t channel = 0; channel < sheet::kTrackChannels; ++channel) {
      text += ',';
      const auto index = static_cast<std::size_t>(frame);
      if (index < document.track_values.size())
        text += std::to_string(int{document.track_values[index][channel]});
    }
    text += "\r\n";
  }
  Messages notes;
  if (document.track_values.size() > document.rows.size()) {
    notes.push_back(
        {QT_TRANSLATE_NOOP("convert", "the tracks are longer than the sheet; their end is left out"), {}});
  }
  NoteWhatIsLeftOut(document, {.comments = true, .tracks = true}, notes);
  return {std::move(text), {}, std::move(notes)};
}

}  // namespace convert
