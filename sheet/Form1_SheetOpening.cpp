// Opening a sheet from its file.
#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "app/Form1.h"
#include "platform/Application.h"
#include "platform/Dialogs.h"
#include "platform/LongWork.h"
#include "sheet/Form3.h"
#include "sheet/SheetDocument.h"
#include "sheet/sheet_file.h"
#include "sheet/text_encoding.h"
#include "sheet/whole_file.h"
#include "timeline/velocity_values.h"

namespace {

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
    sound_is_new_ = form_.OpenWaveFile(*path);
    if (sound_is_new_) rows_of_sound_ = form_.Grid1.Rows();
    return true;
  }
  bool SoundIsNew() const { return sound_is_new_; }

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
    form_.VisibilityButtons()[static_cast<std::size_t>(channel)]->SetValue(visible);
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
  bool sound_is_new_ = false;
  std::int32_t rows_of_sound_ = 1;
};

}  // namespace

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
  bool sound_is_new = false;
  {
    const platform::RefreshPause whole_sheet_moves;
    LiveSheet live_sheet(*this, path, std::string(sheet::SoundNameIn(*file.bytes)));
    report = sheet::ApplySheet(text, live_sheet);
    sound_is_new = live_sheet.SoundIsNew();
  }
  sheet_file_ = path;
  if (sound_is_new) TellIfSoundGivesNoRows();
  if (!report.empty()) platform::MsgBox("The sheet could be read only in part.\n" + report);
}
