// Saving the sheet to a file and opening it again.
#include <algorithm>
#include <filesystem>
#include <utility>

#include "app/Form1.h"
#include "platform/Application.h"
#include "platform/LongWork.h"
#include "sheet/Form3.h"
#include "sheet/SheetDocument.h"
#include "sheet/safe_write.h"
#include "sheet/sheet_file.h"
#include "sheet/text_encoding.h"
#include "sheet/whole_file.h"
#include "timeline/velocity_values.h"

namespace {

std::array<look::vl_button*, sheet::kTrackChannels> VisibilityButtons(Form1& form) {
  return {&form.vl_button13, &form.vl_button14, &form.vl_button15, &form.vl_button16};
}

/// Moves through the whole sheet as a user would, which fills SheetCells, repaints and leads the host along.
std::vector<std::array<std::string, sheet::kSheetColumns>> CellsByMovingThrough(platform::Grid& grid) {
  platform::LongWork work(&grid);
  std::vector<std::array<std::string, sheet::kSheetColumns>> rows(static_cast<std::size_t>(grid.Rows()) - 1);
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

/// As many frames as the rate and the sound give at this moment, but none beyond the tracks that there are.
std::vector<std::array<std::uint8_t, sheet::kTrackChannels>> TrackValues() {
  const timeline::VelocityTable& tracks = timeline::Tracks().VelocityValues;
  const std::int32_t frames = std::min(sheet::TrackFramesNow(), tracks.Frames());
  std::vector<std::array<std::uint8_t, sheet::kTrackChannels>> values(static_cast<std::size_t>(frames));
  for (std::int32_t frame = 0; frame < frames; ++frame) {
    for (int channel = 0; channel < sheet::kTrackChannels; ++channel) {
      values[static_cast<std::size_t>(frame)][static_cast<std::size_t>(channel)] = tracks.At(frame, channel);
    }
  }
  return values;
}

sheet::SheetFileContent ContentOf(Form1& form) {
  sheet::SheetFileContent content;
  content.frame_rate_text = form3->Text7.Text();
  content.wave_file_name = form.CommonDialog1.FileName;
  content.rows = CellsByMovingThrough(form.Grid1);
  content.lock = form.vl_button18.value();
  std::ranges::transform(VisibilityButtons(form), content.track_visible.begin(), &look::vl_button::value);
  content.track_values = TrackValues();
  return content;
}

/// The live sheet, to which a file's fields are applied as they are read.
class LiveSheet : public sheet::SheetTarget {
 public:
  /// `sound_in_file`: the sound's name byte for byte as the file has it.
  LiveSheet(Form1& form, std::string sheet_path, std::string sound_in_file)
      : form_(form),
        sheet_path_(std::move(sheet_path)),
        sound_in_file_(std::move(sound_in_file)),
        work_(&form.Grid1) {}

  void SetFrameRateText(std::string_view text) override { form3->Text7.SetText(std::string(text)); }

  bool OpenSound(std::string_view wave_file_name) override {
    form_.CommonDialog1.FileName = wave_file_name;
    if (wave_file_name.empty()) return true;
    const auto path = FindSound();
    if (!path) {
      platform::MsgBox(
          "Can't find the wave file " + sheet::DecodedText(form_.CommonDialog1.FileName) +
          ", nor one of that name beside the sheet.\n"
          "The sheet opens without it. The velocity tracks can't be restored without the sound: "
          "saving over this sheet now would lose them. To have them, put the wave file beside the "
          "sheet and open the sheet again.");
      return false;
    }
    form_.CommonDialog1.FileName = *path;
    if (form_.OpenWaveFile(*path)) rows_of_sound_ = form_.Grid1.Rows();
    return true;
  }

  std::int32_t RowsOfSound() override { return rows_of_sound_; }
  void SetRowCount(std::int32_t rows) override {
    // Only a new sound has emptied the sheet: without one, the moves to come would record the old texts.
    if (rows_of_sound_ == 1) form_.Grid1.SetRows(1);
    form_.Grid1.SetRows(rows);
    sheet::SheetCells.Resize(std::max(rows, sheet::SheetCells.LastFrame()));
  }
  void SetColumnCount(std::int32_t columns) override { form_.Grid1.SetCols(columns); }

  void WriteCell(std::int32_t row, std::int32_t column, std::string_view text) override {
    work_.Report(row, form_.Grid1.Rows());
    form_.Grid1.SetRow(row);
    form_.Grid1.SetCol(column);
    form_.Grid1.SetText(std::string(text));
  }

  void SetLock(bool on) override { form_.vl_button18.SetValue(on); }

  void SetTrackVisible(int channel, bool visible) override {
    VisibilityButtons(form_)[static_cast<std::size_t>(channel)]->SetValue(visible);
  }

  std::int32_t ResetTracks() override {
    form_.InitVelocity();
    // Without frames the table stays as it was, and so does what stands in it.
    return std::min(sheet::TrackFramesNow(), timeline::Tracks().VelocityValues.Frames());
  }

  void SetTrackValue(std::int32_t frame, int channel, std::uint8_t value) override {
    timeline::Tracks().VelocityValues.Set(frame, channel, value);
  }

  void PaintTracks() override { form_.PaintVelocity(); }

 private:
  /// An old machine's letters may stand for themselves or be the bytes of the name on this one.
  std::optional<std::string> FindSound() const {
    for (const std::string& name :
         {form_.CommonDialog1.FileName, sound_in_file_, sheet::DecodedText(sound_in_file_)}) {
      if (auto path = sheet::FindWaveFile(name, sheet_path_)) return path;
    }
    return std::nullopt;
  }

  Form1& form_;
  std::string sheet_path_, sound_in_file_;
  platform::LongWork work_;
  std::int32_t rows_of_sound_ = 1;
};

/// Whether the file may hold only as many frames of the tracks as the rate gives now. Without a sound there
/// are none to speak of: what the table holds then is left from a sheet before.
bool MayLeaveOutTrackFrames() {
  const std::int32_t held = timeline::Tracks().VelocityValues.Frames();
  const std::int32_t written = std::min(sheet::TrackFramesNow(), held);
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
  if (!CommonDialog2.ShowSave(sheet_has_file_ || sound.empty() ? "" : sound + ".exp")) return;
  if (!MayLeaveOutTrackFrames()) {
    CommonDialog2.FileName = last_name;
    return;
  }
  sheet::SafeWriter writer(CommonDialog2.FileName);
  if (!writer.CreateFailure().empty()) {
    platform::MsgBox("Can't open file");
    return;
  }
  std::string failure;
  {
    const platform::RefreshPause whole_sheet_moves;
    failure = writer.Finish(sheet::SheetFileText(ContentOf(*this)));
  }
  sheet_has_file_ = failure.empty();
  if (failure.empty()) return;
  platform::MsgBox("The sheet could not be saved to " + CommonDialog2.FileName + ": " + failure +
                   ".\nThe file is as it was before.");
}

void Form1::MenuOpen_Click() {
  const std::string last_name = CommonDialog2.FileName;
  if (!CommonDialog2.ShowOpen()) return;
  // What turns out not to be a sheet mustn't be what the next save proposes to replace.
  OpenSheet(std::exchange(CommonDialog2.FileName, last_name));
}

void Form1::OpenSheet(const std::string& path) {
  sheet::WholeFile file = sheet::ReadWholeFile(path);
  if (!file.bytes) {
    platform::MsgBox("Can't read file");
    return;
  }
  const std::string text = sheet::DecodedSheet(*file.bytes);
  if (const std::string reason = sheet::WhyNoSheet(text); !reason.empty()) {
    platform::MsgBox(path + " is no exposure sheet: the sheet stays as it was.\n" + reason);
    return;
  }
  CommonDialog2.FileName = path;
  std::string report;
  {
    const platform::RefreshPause whole_sheet_moves;
    LiveSheet live_sheet(*this, path, std::string(sheet::SoundNameIn(*file.bytes)));
    report = sheet::ApplySheet(text, live_sheet);
  }
  sheet_has_file_ = true;
  if (!report.empty()) platform::MsgBox("The sheet could be read only in part.\n" + report);
}
