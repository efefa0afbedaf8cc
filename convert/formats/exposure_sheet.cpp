// The tool's own format, by the reader and writer that the tool itself has.
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "convert/document.h"
#include "convert/formats/formats.h"
#include "convert/shape_table.h"
#include "sheet/sheet_file.h"
#include "sheet/timing.h"

namespace convert {
namespace {

/// Takes down what the tool would apply to its windows.
class Recorder : public sheet::SheetTarget {
 public:
  void SetFrameRateText(std::string_view text) override { document.frame_rate_text = text; }
  bool OpenSound(std::string_view wave_file_name) override {
    document.wave_file_name = wave_file_name;
    return true;
  }
  std::int32_t RowsOfSound() override { return 1; }
  void SetRowCount(std::int32_t rows) override { document.rows.resize(static_cast<std::size_t>(rows) - 1); }
  void SetColumnCount(std::int32_t) override {}
  void WriteCell(std::int32_t row, std::int32_t column, std::string_view text) override {
    document.rows[static_cast<std::size_t>(row) - 1][static_cast<std::size_t>(column)] = text;
  }
  void SetLock(bool on) override { document.lock = on; }
  void SetTrackVisible(int channel, bool visible) override {
    document.track_visible[static_cast<std::size_t>(channel)] = visible;
  }
  /// As many as there can be: the table grows with the values that the file really has.
  std::int32_t ResetTracks() override { return sheet::kMostRows - 1; }
  void SetTrackValue(std::int32_t frame, int channel, std::uint8_t value) override {
    if (static_cast<std::size_t>(frame) >= document.track_values.size())
      document.track_values.resize(static_cast<std::size_t>(frame) + 1);
    document.track_values[static_cast<std::size_t>(frame)][static_cast<std::size_t>(channel)] = value;
  }
  void PaintTracks() override {}

  Document document;
};

}  // namespace

Reading ReadExposureSheet(std::string_view text) {
  Recorder recorder;
  recorder.document.lock = true;
  recorder.document.track_visible.fill(true);
  std::string report = sheet::ApplySheet(text, recorder);
  if (!report.empty()) return Refused("%1", {std::move(report)});
  for (std::size_t i = 0; i < recorder.document.rows.size(); ++i)
    recorder.document.rows[i][sheet::kFrameColumn] = std::to_string(i);
  return {std::move(recorder.document), {}, {}};
}

Writing WriteExposureSheet(const Document& document) {
  // The tool's list gives its names with a blank behind them, and saves them so.
  Document written = document;
  for (auto& row : written.rows) {
    std::string& shape = row[sheet::kShapeColumn];
    if (IsShape(shape)) shape += ' ';
  }
  return {sheet::SheetFileText(written), {}, {}};
}

}  // namespace convert
