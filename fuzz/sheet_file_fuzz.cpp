// Any bytes as a sheet file: every call on the target stays inside the grid and the tracks; and what was
// read, written and read again is the same sheet.
#include <cstdlib>

#include "sheet/sheet_file.h"
#include "sheet/text_encoding.h"

namespace {

constexpr std::int32_t kTrackFrames = 5;

void Check(bool holds) {
  if (!holds) std::abort();
}

bool Trimmed(std::string_view text) {
  return text.empty() || (text.front() != ' ' && text.back() != ' ' && text.find('\n') == text.npos);
}

class Sheet : public sheet::SheetTarget {
 public:
  void SetFrameRateText(std::string_view text) override { content.frame_rate_text = text; }
  bool OpenSound(std::string_view name) override {
    Check(Trimmed(name));
    content.wave_file_name = name;
    return false;
  }
  std::int32_t RowsOfSound() override { return 7; }
  void SetRowCount(std::int32_t rows) override {
    Check(rows >= 1 && rows <= 1'000'000);
    content.rows.resize(static_cast<std::size_t>(rows) - 1);
  }
  void SetColumnCount(std::int32_t columns) override { Check(columns == sheet::kSheetColumns); }
  void WriteCell(std::int32_t row, std::int32_t column, std::string_view text) override {
    Check(row >= 1 && row <= static_cast<std::int32_t>(content.rows.size()) && column >= 0 &&
          column < sheet::kSheetColumns && Trimmed(text));
    content.rows[static_cast<std::size_t>(row) - 1][static_cast<std::size_t>(column)] = text;
  }
  void SetLock(bool on) override { content.lock = on; }
  void SetTrackVisible(int channel, bool visible) override {
    content.track_visible.at(static_cast<std::size_t>(channel)) = visible;
  }
  std::int32_t ResetTracks() override {
    content.track_values.assign(kTrackFrames, {32, 32, 32, 32});
    return kTrackFrames;
  }
  void SetTrackValue(std::int32_t frame, int channel, std::uint8_t value) override {
    content.track_values.at(static_cast<std::size_t>(frame)).at(static_cast<std::size_t>(channel)) = value;
  }
  void PaintTracks() override {}

  sheet::SheetFileContent content;
};

/// Frame numbers as the grid writes them, without which lines aren't known as lines.
void NumberRows(sheet::SheetFileContent& content) {
  for (std::size_t i = 0; i < content.rows.size(); ++i) content.rows[i][0] = std::to_string(i);
}

/// A carriage return within a field is written as a blank, which another reading may trim.
bool HasCarriageReturn(std::string_view text) { return text.find('\r') != text.npos; }

/// UTF-8 stays as it is; the letter in front keeps a byte order mark from being taken off.
bool IsUtf8(const std::string& text) { return sheet::DecodedText("a" + text) == "a" + text; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = sheet::DecodedText({reinterpret_cast<const char*>(data), size});
  Check(IsUtf8(text));
  Sheet sheet;
  Check(IsUtf8(sheet::ApplySheet(text, sheet)));
  if (HasCarriageReturn(text)) return 0;
  NumberRows(sheet.content);
  sheet.content.track_values.resize(kTrackFrames, {32, 32, 32, 32});
  const std::string written = sheet::SheetFileText(sheet.content);
  Check(sheet::RowsOfOneFieldPerLine(written) == sheet.content.rows.size() + 1);
  Sheet again;
  Check(sheet::ApplySheet(written, again).empty());
  Check(sheet::SheetFileText(again.content) == written);
  return 0;
}
