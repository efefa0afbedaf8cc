#include "sheet/sheet_file.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "platform/numbers.h"
#include "sheet/text_encoding.h"
#include "sheet/timing.h"

namespace sheet {
namespace {

constexpr std::string_view kReserved = "Reserved";
constexpr std::string_view kVelocity = "Velocity";
constexpr FieldName kReservedName{"a reserved field"};
constexpr FieldName kRowCountName{"the row count"};
constexpr FieldName kColumnCountName{"the column count"};
constexpr FieldName kTrackCountName{"the number of track frames"};
constexpr const char* kCellNames[kSheetColumns] = {"the number", "the shape", "the comment"};
constexpr const char* kVisibilityNames[kTrackChannels] = {
    "the yellow track's visibility", "the red track's visibility", "the green track's visibility",
    "the blue track's visibility"};
constexpr const char* kTrackNames[kTrackChannels] = {"the yellow track's value", "the red track's value",
                                                     "the green track's value", "the blue track's value"};

class LineWriter {
 public:
  void Text(std::string_view text) {
    for (const char c : text) lines_ += c == '\r' || c == '\n' ? ' ' : c;
    lines_ += "\r\n";
  }
  void Number(std::size_t number) { Text(platform::SignedForm(static_cast<std::int64_t>(number)) + " "); }
  void Flag(bool flag) { Text(flag ? "True" : "False"); }
  void Reserved(int count) {
    for (int i = 0; i < count; ++i) Text(kReserved);
  }
  std::string Take() { return std::move(lines_); }

 private:
  std::string lines_;
};

/// Lines looked at for their places alone. At the end of the file everything is in its place, even part of a
/// word: a file cut short, within a line or between two, is still read by its lines.
class LayoutCheck {
 public:
  explicit LayoutCheck(std::string_view text)
      : lines_(text, FieldsEndAt::kLines), ends_within_line_(!text.ends_with('\n')) {}

  bool Ended() const { return lines_.Ended(); }
  void Any() { lines_.Text({""}); }
  bool Is(std::string_view word) {
    const auto line = lines_.Text({""});
    return !line || *line == word || (ends_within_line_ && Ended() && word.starts_with(*line));
  }
  bool AreReserved(int count) {
    for (int i = 0; i < count; ++i) {
      if (!Is(kReserved)) return false;
    }
    return true;
  }
  bool HaveNoComma(std::int64_t count) {
    for (std::int64_t i = 0; i < count && !Ended(); ++i) {
      if (lines_.Text({""})->find(',') != std::string_view::npos) return false;
    }
    return true;
  }
  std::optional<std::int32_t> Count() {
    return lines_.Number({""}, 0, std::numeric_limits<std::int32_t>::max());
  }

 private:
  FieldReader lines_;
  bool ends_within_line_;
};

bool HasRowsInPlace(LayoutCheck& lines, std::int32_t row_count) {
  for (std::int32_t row = 1; row < row_count && !lines.Ended(); ++row) {
    if (!lines.Is(std::to_string(row - 1))) return false;
    lines.Any();
    lines.Any();
  }
  return lines.AreReserved(4);
}

/// The row count, header included, that the frame numbers tell up to the words behind the last row.
std::optional<std::int32_t> RowsByFrameNumbers(LayoutCheck& lines) {
  for (std::int32_t row = 1; row <= kMostRows && !lines.Ended(); ++row) {
    LayoutCheck behind_rows = lines;
    if (behind_rows.AreReserved(4)) {
      lines = behind_rows;
      return row;
    }
    if (!lines.Is(std::to_string(row - 1))) return std::nullopt;
    lines.Any();
    lines.Any();
  }
  return std::nullopt;
}

std::optional<std::int32_t> RowsInPlace(LayoutCheck& lines, std::optional<std::int32_t> row_count) {
  LayoutCheck by_count = lines;
  if (!row_count || *row_count < 1 || !HasRowsInPlace(by_count, *row_count)) return RowsByFrameNumbers(lines);
  lines = by_count;
  return row_count;
}

bool HasTracksInPlace(LayoutCheck& lines) {
  if (!lines.HaveNoComma(1) || !lines.Is(kVelocity) || !lines.HaveNoComma(kTrackChannels)) return false;
  if (lines.Ended()) return true;
  // A count that is no number does no harm here: nothing is read behind it.
  const auto frames = lines.Count();
  return !frames || lines.HaveNoComma(std::int64_t{*frames} * kTrackChannels);
}

/// One file being applied to one target.
class SheetReader {
 public:
  SheetReader(std::string_view text, SheetTarget& target)
      : rows_in_lines_(RowsOfOneFieldPerLine(text)),
        fields_(text, rows_in_lines_ ? FieldsEndAt::kLines : FieldsEndAt::kCommas),
        target_(target) {}

  std::string Apply() {
    const auto magic = fields_.Text({"the file's magic word"});
    ApplyRate();
    ApplySound();
    fields_.Skip(2, kReservedName);
    if (ApplyCounts() && fields_.Skip(2, kReservedName)) {
      ApplyCells();
      fields_.Skip(4, kReservedName);
      if (magic == kSheetMagic) ApplyTogglesAndTracks();
    }
    return fields_.Report();
  }

 private:
  void ApplyRate() {
    if (const auto rate = fields_.Text({"the frame rate"})) target_.SetFrameRateText(*rate);
  }

  void ApplySound() {
    if (const auto name = fields_.Text({"the wave file's name"})) tracks_expected_ = target_.OpenSound(*name);
  }

  /// False if nothing behind the counts can be found.
  bool ApplyCounts() {
    const auto rows = RowCount();
    if (!rows) return false;
    rows_ = RowsBorneOut(*rows);
    target_.SetRowCount(rows_);
    // Another count is noted and not followed: each row has three fields whatever it says.
    fields_.Number(kColumnCountName, kSheetColumns, kSheetColumns);
    target_.SetColumnCount(kSheetColumns);
    return true;
  }

  /// The file's row count, or the one that its lines show where that one is spoilt.
  std::optional<std::int32_t> RowCount() {
    const auto told = fields_.Number(kRowCountName, 1, std::numeric_limits<std::int32_t>::max());
    if (!rows_in_lines_) return told;
    if (told && *told != *rows_in_lines_) {
      fields_.NoteUnexpected("a row count of " + std::to_string(*rows_in_lines_) +
                             ", which is what the file holds");
    }
    return rows_in_lines_;
  }

  /// The count itself, if the file goes on for that long; otherwise no more rows than the file or the sound
  /// gives, so that what is there can still be read.
  std::int32_t RowsBorneOut(std::int32_t rows) {
    constexpr std::int64_t kFieldsBetween = 3;
    const std::int64_t fields = std::max<std::int64_t>(fields_.FieldsLeft() - kFieldsBetween, 0);
    const std::int64_t in_file = 1 + (fields + kSheetColumns - 1) / kSheetColumns;
    const std::int64_t most =
        std::min<std::int64_t>(std::max<std::int64_t>(in_file, target_.RowsOfSound()), kMostRows);
    if (rows > in_file || rows > most) {
      fields_.NoteUnexpected("a row count of at most " + std::to_string(std::min(in_file, most)) +
                             ", which is what the file holds");
    }
    return static_cast<std::int32_t>(std::min<std::int64_t>(rows, most));
  }

  void ApplyCells() {
    for (std::int32_t row = 1; row < rows_; ++row) {
      for (std::int32_t column = 0; column < kSheetColumns; ++column) {
        const auto text = fields_.Text({kCellNames[column], row - 1});
        if (!text) return;
        target_.WriteCell(row, column, *text);
      }
    }
  }

  void ApplyTogglesAndTracks() {
    if (const auto lock = fields_.Flag({"the audio/frame lock"})) target_.SetLock(*lock);
    fields_.Skip(1, {"the word Velocity"});
    for (int channel = 0; channel < kTrackChannels; ++channel) {
      const auto visible = fields_.Flag({kVisibilityNames[channel]});
      if (visible) target_.SetTrackVisible(channel, *visible);
    }
    const auto frames = fields_.Number(kTrackCountName, 0, std::numeric_limits<std::int32_t>::max());
    if (!frames) return;
    const std::int32_t allocated_frames = target_.ResetTracks();
    NoteTracksNotBorneOut(*frames, allocated_frames);
    std::int32_t frame = 0;
    while (frame < *frames && ApplyTrackFrame(frame, allocated_frames)) ++frame;
    // Every number stands on a line of its own: cut short, the last one could still pass for a smaller one.
    if (frame == *frames && frame > 0) fields_.NoteIfCut({kTrackNames[kTrackChannels - 1], frame - 1});
    target_.PaintTracks();
  }

  void NoteTracksNotBorneOut(std::int32_t frames, std::int32_t allocated_frames) {
    if (!tracks_expected_ || frames <= allocated_frames) return;
    fields_.NoteUnexpected("tracks of at most " + std::to_string(allocated_frames) +
                           " frames, which is the length of the sound at this rate");
  }

  /// Values beyond the allocated tracks are passed over. False if the file has ended.
  bool ApplyTrackFrame(std::int32_t frame, std::int32_t allocated_frames) {
    for (int channel = 0; channel < kTrackChannels; ++channel) {
      const bool ended = fields_.Ended();
      const auto value = fields_.Number({kTrackNames[channel], frame}, 0, 255);
      if (ended) return false;
      if (value && frame < allocated_frames) {
        target_.SetTrackValue(frame, channel, static_cast<std::uint8_t>(*value));
      }
    }
    return true;
  }

  std::optional<std::int32_t> rows_in_lines_;
  FieldReader fields_;
  SheetTarget& target_;
  std::int32_t rows_ = 1;
  bool tracks_expected_ = true;
};

}  // namespace

std::string SheetFileText(const SheetFileContent& content) {
  LineWriter lines;
  lines.Text(kSheetMagic);
  lines.Text(content.frame_rate_text);
  lines.Text(content.wave_file_name);
  lines.Reserved(2);
  lines.Number(content.rows.size() + 1);
  lines.Number(kSheetColumns);
  lines.Reserved(2);
  for (const auto& row : content.rows) {
    for (const auto& cell : row) lines.Text(cell);
  }
  lines.Reserved(4);
  lines.Flag(content.lock);
  lines.Text(kVelocity);
  for (const bool visible : content.track_visible) lines.Flag(visible);
  lines.Number(content.track_values.size());
  for (const auto& frame : content.track_values) {
    for (const std::uint8_t value : frame) lines.Number(value);
  }
  return lines.Take();
}

std::optional<std::int32_t> RowsOfOneFieldPerLine(std::string_view text) {
  LayoutCheck lines(text);
  const bool current_edition = lines.Is(kSheetMagic);
  lines.Any();
  lines.Any();
  if (!lines.AreReserved(2)) return std::nullopt;
  const auto row_count = lines.Count();
  if (!lines.Count() || !lines.AreReserved(2)) return std::nullopt;
  const auto rows = RowsInPlace(lines, row_count);
  return !current_edition || HasTracksInPlace(lines) ? rows : std::nullopt;
}

std::string_view SoundNameIn(std::string_view bytes) {
  FieldReader fields(bytes, RowsOfOneFieldPerLine(bytes) ? FieldsEndAt::kLines : FieldsEndAt::kCommas);
  fields.Skip(2, {""});
  return fields.Text({""}).value_or("");
}

std::string DecodedSheet(std::string bytes) {
  if (IsUtf8(bytes)) return DecodedText(std::move(bytes));
  const std::string_view name = SoundNameIn(bytes);
  if (name.empty()) return DecodedText(bytes);
  const auto place = static_cast<std::size_t>(name.data() - bytes.data());
  std::string rest = bytes;
  rest.erase(place, name.size());
  if (!IsUtf8(rest)) return DecodedText(bytes);
  const std::size_t mark = rest.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
  return DecodedText(std::move(rest)).insert(place - mark, name);
}

std::string WhyNoSheet(std::string_view text) {
  FieldReader fields(text, FieldsEndAt::kCommas);
  const bool has_count = fields.Text({"the file's magic word"}) && fields.Text({"the frame rate"}) &&
                         fields.Text({"the wave file's name"}) && fields.Skip(2, kReservedName) &&
                         fields.Number(kRowCountName, 1, std::numeric_limits<std::int32_t>::max());
  return has_count || RowsOfOneFieldPerLine(text) ? "" : fields.Report();
}

std::string ApplySheet(std::string_view text, SheetTarget& target) {
  return SheetReader(text, target).Apply();
}

}  // namespace sheet
