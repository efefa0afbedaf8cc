// The exposure sheet file: what it holds, its lines, and the order in which opening restores it.
//
// Lines, each ended by CR LF, with R rows (header included) and n track frames:
//   1 magic · 2 frame rate · 3 wave file · 4, 5 "Reserved" · 6 R · 7 columns · 8, 9 "Reserved" ·
//   3 for each row below the header · 4 "Reserved" · lock · "Velocity" · 4 visibilities · n · 4 for each
//   frame
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sheet/field_reader.h"
#include "sheet/sheet_cells.h"

namespace sheet {

inline constexpr std::string_view kSheetMagic = "ExposureSheet02";
inline constexpr int kTrackChannels = 4;

/// A sheet as it is written. Texts are UTF-8.
struct SheetFileContent {
  std::string frame_rate_text;
  std::string wave_file_name;
  /// Frame number, shape and comment of each row below the header.
  std::vector<std::array<std::string, kSheetColumns>> rows;
  bool lock = false;
  std::array<bool, kTrackChannels> track_visible{};
  /// Yellow, red, green and blue of each frame.
  std::vector<std::array<std::uint8_t, kTrackChannels>> track_values;
};

/// The file, byte for byte. Nothing is quoted or escaped; a line break within a text, which would move every
/// later field, is written as a blank.
std::string SheetFileText(const SheetFileContent& content);

/// The row count, header included, of a text that, as far as it goes, has one field on each line: the counts,
/// the fixed words and the frame numbers stand in their places and the lines of flags and numbers hold no
/// comma. Only of such a text may a comma be taken as part of a comment or a name. Where the count in the
/// text doesn't fit its lines but all else does, it is the one that the frame numbers tell.
std::optional<std::int32_t> RowsOfOneFieldPerLine(std::string_view text);

/// The sound's name in a sheet file, byte for byte as it stands there; empty if there is none.
std::string_view SoundNameIn(std::string_view bytes);

/// A sheet file's bytes as UTF-8, as DecodedText has it; but a sound's name is whatever bytes the file system
/// knows it by, and where everything else is UTF-8 it stays as it is.
std::string DecodedSheet(std::string bytes);

/// Why a text is no sheet at all, with the line: it has no number where the row count stands, nor the frame
/// numbers that could tell one. Empty if it is a sheet, spoilt or not.
std::string WhyNoSheet(std::string_view text);

/// What a sheet being opened is applied to, field by field: there is no staging. Calls come in the order in
/// which they are declared.
class SheetTarget {
 public:
  virtual ~SheetTarget() = default;
  virtual void SetFrameRateText(std::string_view text) = 0;
  /// Loads the sound that the file names, or tells the user that it is missing. False only if that message
  /// has told that the tracks can't be restored.
  virtual bool OpenSound(std::string_view wave_file_name) = 0;
  /// Rows that the sound just opened gives, header included; 1 if no sound was opened, since the sheet's
  /// length is then still that of the sound before.
  virtual std::int32_t RowsOfSound() = 0;
  virtual void SetRowCount(std::int32_t rows) = 0;
  virtual void SetColumnCount(std::int32_t columns) = 0;
  /// Rows from 1, columns from 0. The cell becomes the current one.
  virtual void WriteCell(std::int32_t row, std::int32_t column, std::string_view text) = 0;
  virtual void SetLock(bool on) = 0;
  virtual void SetTrackVisible(int channel, bool visible) = 0;
  /// Makes the tracks anew for the sound that there is. Result: their frames, which may be 0.
  virtual std::int32_t ResetTracks() = 0;
  virtual void SetTrackValue(std::int32_t frame, int channel, std::uint8_t value) = 0;
  virtual void PaintTracks() = 0;
};

/// Applies a sheet file's text to the target, as far as it can be read. A file with another magic is an
/// earlier edition, read up to the end of the cells. Counts are believed as far as the file bears them out.
/// Result: the first fault with its line and what was expected, or an empty text.
std::string ApplySheet(std::string_view text, SheetTarget& target);

}  // namespace sheet
