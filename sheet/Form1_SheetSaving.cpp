// Saving the sheet to its file, and to a file of its own before an end that nobody asked for.
#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "app/Form1.h"
#include "platform/Application.h"
#include "platform/Dialogs.h"
#include "platform/LongWork.h"
#include "platform/numbers.h"
#include "sheet/Form3.h"
#include "sheet/SheetDocument.h"
#include "sheet/rescued_file.h"
#include "sheet/safe_write.h"
#include "sheet/sheet_file.h"
#include "sheet/text_encoding.h"
#include "sheet/whole_file.h"
#include "timeline/velocity_values.h"

namespace {

using Rows = std::vector<std::array<std::string, sheet::kSheetColumns>>;

/// Moves through the whole sheet as a user would, which fills SheetCells, repaints and leads the host along.
Rows CellsByMovingThrough(platform::Grid& grid) {
  platform::LongWork work(&grid);
  Rows rows(static_cast<std::size_t>(grid.Rows()) - 1);
  for (std::size_t row = 0; row < rows.size(); ++row) {
    work.Report(static_cast<int>(row), grid.Rows());
    for (std::size_t column = 0; column < rows[row].size(); ++column) {
      grid.SetRow(static_cast<int>(row) + 1);
      grid.SetCol(static_cast<int>(column));
      rows[row][column] = grid.Text();
    }
  }
  return rows;
}

/// As they stand, without a move. A row that a rebuild hasn't come to yet has no number of its own.
Rows CellsAsTheyStand(const platform::Grid& grid) {
  Rows rows(static_cast<std::size_t>(grid.Rows()) - 1);
  for (std::size_t row = 0; row < rows.size(); ++row) {
    for (std::size_t column = 0; column < rows[row].size(); ++column)
      rows[row][column] = grid.TextMatrix(static_cast<int>(row) + 1, static_cast<int>(column));
    if (rows[row][sheet::kFrameColumn].empty()) rows[row][sheet::kFrameColumn] = std::to_string(row);
  }
  return rows;
}

/// Frames of the tracks that the file takes: as many as the rate and the sound give at this moment, but none
/// beyond those that there are.
std::int32_t TrackFramesForFile() {
  return std::min(sheet::TrackFramesNow(), timeline::Tracks().VelocityValues.Frames());
}

static_assert(sheet::kTrackChannels == timeline::kChannels, "the file takes the value of every track");

std::vector<std::array<std::uint8_t, sheet::kTrackChannels>> TrackValues(std::int32_t frames) {
  const timeline::VelocityTable& tracks = timeline::Tracks().VelocityValues;
  std::vector<std::array<std::uint8_t, sheet::kTrackChannels>> values(static_cast<std::size_t>(frames));
  for (std::int32_t frame = 0; frame < frames; ++frame) {
    for (int channel = 0; channel < sheet::kTrackChannels; ++channel) {
      values[static_cast<std::size_t>(frame)][static_cast<std::size_t>(channel)] = tracks.At(frame, channel);
    }
  }
  return values;
}

sheet::SheetFileContent ContentOf(Form1& form, Rows rows, std::int32_t track_frames) {
  sheet::SheetFileContent content;
  // Not loaded for that: loading asks the host for colours.
  content.frame_rate_text = form3.Hold().Text7.Text();
  content.wave_file_name = form.CommonDialog1.FileName;
  content.rows = std::move(rows);
  content.lock = form.vl_button18.value();
  std::ranges::transform(form.VisibilityButtons(), content.track_visible.begin(), &look::vl_button::value);
  content.track_values = TrackValues(track_frames);
  return content;
}

/// Whether the file may hold only as many frames of the tracks as the rate gives now. Without a sound there
/// are none to speak of: what the table holds then is left from a sheet before.
bool MayLeaveOutTrackFrames() {
  const std::int32_t held = timeline::Tracks().VelocityValues.Frames();
  const std::int32_t written = TrackFramesForFile();
  if (written == held || sheet::CalcTime().value_or(0) == 0) return true;
  return platform::MsgBox(
             "At the frame rate that stands in \"Set FPS...\", " + platform::NumberText(sheet::FrameRate()) +
                 ", the file has room for " + std::to_string(written) + " frames of the velocity tracks. " +
                 std::to_string(held - written) + " of the sheet's " + std::to_string(held) +
                 " would be left out.\n\nSave the sheet without them? To keep them, cancel and type the rate "
                 "that the sheet was made for.",
             platform::Buttons::OkCancel, platform::Icon::Warning) == platform::Answer::Ok;
}

}  // namespace

void Form1::MenuSave_Click() {
  const std::string sound = sheet::DecodedText(std::filesystem::path(CommonDialog1.FileName).stem().string());
  const std::string last_name = CommonDialog2.FileName;
  if (!CommonDialog2.ShowSave(!sheet_file_.empty() || sound.empty() ? "" : sound + ".exp")) return;
  if (!MayLeaveOutTrackFrames()) {
    CommonDialog2.FileName = last_name;
    return;
  }
  sheet::SafeWriter writer(CommonDialog2.FileName, platform::UserFolders());
  if (!writer.CreateFailure().empty()) {
    platform::MsgBox("Can't open file");
    return;
  }
  std::string failure;
  {
    const platform::RefreshPause whole_sheet_moves;
    failure = writer.Finish(
        sheet::SheetFileText(ContentOf(*this, CellsByMovingThrough(Grid1), TrackFramesForFile())));
  }
  if (failure.empty()) {
    sheet_file_ = CommonDialog2.FileName;
    return;
  }
  const std::string& copy = writer.CopyOfOldFile();
  platform::MsgBox("The sheet could not be saved to " + CommonDialog2.FileName + ": " + failure + ".\n" +
                   (copy.empty() ? "The file is as it was before."
                                 : "The file is spoilt; what it held before stands in " + copy + "."));
}

std::string Form1::RescueSheet() {
  const std::string& named_by = sheet_file_.empty() ? CommonDialog1.FileName : sheet_file_;
  if (Grid1.Rows() == 1 && named_by.empty()) return {};
  // All frames of the tracks: nobody can be asked now what may be left out.
  const std::int32_t frames =
      sheet::CalcTime().value_or(0) == 0 ? 0 : timeline::Tracks().VelocityValues.Frames();
  const std::string bytes = sheet::SheetFileText(ContentOf(*this, CellsAsTheyStand(Grid1), frames));
  std::vector<std::string> folders = platform::UserFolders();
  if (!sheet_file_.empty()) {
    if (sheet::ReadWholeFile(sheet_file_).bytes == bytes)
      return "The sheet is saved in " + sheet_file_ + " as it stands.";
    folders.insert(folders.begin(), sheet::FolderOf(sheet_file_));
  }
  const std::string name = named_by.empty() ? "sheet" : std::filesystem::path(named_by).stem().string();
  const sheet::RescuedFile file = sheet::WriteRescuedFile(folders, name, sheet_file_, bytes);
  if (file.path.empty()) return "The sheet as it stood could not be written.\n" + file.failures;
  return "The sheet as it stood is in " + file.path + "." +
         (file.failures.empty() ? "" : "\n" + file.failures);
}
