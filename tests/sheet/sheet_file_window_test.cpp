// Saving and opening on the live main window.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

#include <QProgressBar>
#include <QWidget>
#include <chrono>
#include <filesystem>
#include <thread>

#include "app/Form1.h"
#include "audio/sample_store.h"
#include "sheet/Form3.h"
#include "sheet/SheetDocument.h"
#include "support/desk.h"
#include "support/sheet_lines.h"
#include "timeline/velocity_values.h"

namespace {

using support::Fields;
using support::Joined;
using support::Split;
using support::With;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// 8-bit samples of three seconds: at 2 frames a second, 7 rows and 6 track frames.
std::string ThreeSeconds(const std::string& name = "frog.wav") {
  return support::WriteScratch(name, support::WaveBytes(8, 1000, std::string(3000, '\x80')));
}

/// A sheet of three rows and two track frames.
Fields SmallSheet(const std::string& wave_name) {
  return Split("ExposureSheet02|2|" + wave_name +
               "|Reserved|Reserved| 4 | 3 |Reserved|Reserved|0|A |one, two|1|||2|Q|\"three\"|Reserved|"
               "Reserved|Reserved|Reserved|False|Velocity|False|True|False|True| 2 | 1 | 2 | 3 | 4 | 255 |"
               " 0 | 64 | 32 ");
}

class SheetFile : public testing::Test {
 protected:
  void Open(const std::string& bytes) {
    desk.files.paths = {support::WriteScratch("sheet.exp", bytes)};
    form.MenuOpen.Click();
  }
  /// What then stands in a file of this name.
  std::string Saved(const std::string& name) {
    desk.files.paths = {support::ScratchFolder() + "/" + name};
    form.MenuSave.Click();
    return support::ReadWhole(support::ScratchFolder() + "/" + name);
  }
  Fields Cells() const {
    Fields cells;
    for (int row = 1; row < form.Grid1.Rows(); ++row)
      for (int col = 0; col < 3; ++col) cells.push_back(form.Grid1.TextMatrix(row, col));
    return cells;
  }

  support::Desk desk;
  Form1& form = desk.Main();
  const timeline::VelocityTable& tracks = timeline::Tracks().VelocityValues;
};

TEST_F(SheetFile, EverythingComesBack) {
  const std::string wave = ThreeSeconds("fr\xc3\xb6sche, \"alle\".wav");
  auto lines = SmallSheet(wave);
  Open(Joined(lines));
  EXPECT_THAT(desk.messages.Texts(), IsEmpty());
  EXPECT_EQ(form3->Text7.Text(), "2");
  EXPECT_EQ(form.CommonDialog1.FileName, wave);
  EXPECT_EQ(audio::LoadedSound().WaveDataLength, 3000);
  EXPECT_EQ(Cells(), Split("0|A|one, two|1|||2|Q|\"three\""));
  EXPECT_EQ(form.Grid1.Row(), 3);
  EXPECT_EQ(form.Grid1.Col(), 2);
  EXPECT_THAT(std::vector({form.vl_button18.value(), form.vl_button13.value(), form.vl_button14.value(),
                           form.vl_button15.value(), form.vl_button16.value()}),
              ElementsAre(false, false, true, false, true));
  ASSERT_EQ(tracks.Frames(), 6);
  EXPECT_EQ(tracks.At(0, 3), 4);
  EXPECT_EQ(tracks.At(1, 0), 255);
  EXPECT_EQ(tracks.At(2, 0), 32) << "beyond the file's";
  EXPECT_EQ(sheet::SheetCells.Text(1, 0), "1") << "recorded as the cell was left";
  EXPECT_EQ(sheet::SheetCells.Text(2, 2), "") << "the last cell hasn't been left";

  lines[10] = "A";  // trimmed by reading
  lines[28] = " 6 ";
  lines.resize(lines.size() + 16, " 32 ");
  EXPECT_EQ(Saved("again.exp"), Joined(lines));
  EXPECT_EQ(sheet::SheetCells.Text(2, 1), "Q");
  EXPECT_THAT(desk.messages.Texts(), IsEmpty());
}

TEST_F(SheetFile, AnEmptySheetIsSavedByteForByte) {
  EXPECT_EQ(form.RescueSheet(), "") << "there is nothing to lose";
  EXPECT_EQ(Saved("empty.exp"), support::ReadWhole(SOURCE_DIR "/tests/sheet/golden/empty.exp"));
}

TEST_F(SheetFile, WalksThroughTheSheetLeadTheHostAndShowHowFarTheyAre) {
  Open(Joined(SmallSheet(ThreeSeconds())));
  const std::string path = support::WriteScratch("sheet.exp", Joined(SmallSheet("/gone/frog.wav")));
  for (const auto& [walk, last_row] :
       {std::pair{&form.MenuOpen, 3}, {&form.MenuSave, 3}, {&form.tenfps, 0}}) {
    desk.files.paths = {path};
    form.vl_button18.SetValue(true);
    // The first step takes longer than what passes without a bar.
    bool waited = false, shown = false;
    desk.host->before = [&](std::string_view) {
      if (!std::exchange(waited, true)) std::this_thread::sleep_for(std::chrono::milliseconds(600));
      shown = shown || form.TopWidget()->findChild<QProgressBar*>() != nullptr;
    };
    walk->Click();
    desk.host->before = nullptr;
    EXPECT_TRUE(shown);
    EXPECT_EQ(form.Grid1.Row(), last_row);
    EXPECT_EQ(desk.host->current_frame, last_row - 1);
  }
}

TEST_F(SheetFile, AMissingWaveFileIsToldOnceAndTheSheetComesAllTheSame) {
  Open(Joined(SmallSheet("/gone/frog.wav")));
  EXPECT_EQ(desk.messages.shown.size(), 1U) << "its tracks, which have no room, aren't told again";
  desk.messages.shown.clear();
  Open(Joined(SmallSheet(ThreeSeconds())));
  form.Grid1.SetRow(1);  // records the last comment
  auto lines = SmallSheet("/gone/toad.wav");
  lines[1] = "3";
  lines[17] = "";
  Open(Joined(lines));
  ASSERT_EQ(desk.messages.shown.size(), 1U);
  EXPECT_THAT(desk.messages.Texts()[0], AllOf(HasSubstr("/gone/toad.wav"), HasSubstr("tracks can't be")));
  EXPECT_EQ(form.CommonDialog1.FileName, "/gone/toad.wav");
  EXPECT_EQ(form3->Text7.Text(), "3");
  EXPECT_EQ(Cells(), Split("0|A|one, two|1|||2|Q|"));
  EXPECT_EQ(sheet::SheetCells.Text(2, 2), "") << "of the sheet before";
  lines.resize(12);
  lines[2] = "";
  Open(Joined(lines));
  EXPECT_EQ(Cells(), Split("0|A|one, two")) << "of the sheet before nothing shows";
  EXPECT_EQ(sheet::SheetCells.Text(1, 0) + form.CommonDialog1.FileName, "");
}

TEST_F(SheetFile, ARefusedWaveFileLeavesTheOldSound) {
  Open(Joined(SmallSheet(ThreeSeconds())));
  Open(With(SmallSheet(support::WriteScratch("bad.wav", "no riff")), 12, "new"));
  EXPECT_THAT(desk.messages.Texts(), ElementsAre("Not a riff file"));
  EXPECT_EQ(audio::LoadedSound().WaveDataLength, 3000);
  EXPECT_EQ(form.Grid1.TextMatrix(1, 2), "new");
  EXPECT_EQ(tracks.At(1, 0), 255);
  Open(With(SmallSheet(ThreeSeconds()), 29, " 7 "));
  EXPECT_THAT(desk.messages.Texts().back(), HasSubstr("tracks of at most 6 frames"));
}

TEST_F(SheetFile, CancelAndAFileThatCantBeOpenedChangeNothing) {
  Open(Joined(SmallSheet(ThreeSeconds())));
  desk.files.paths = {"", "", support::ScratchFolder() + "/none.exp"};
  form.MenuOpen.Click();
  form.MenuSave.Click();
  EXPECT_THAT(desk.messages.Texts(), IsEmpty());
  EXPECT_THAT(form.CommonDialog2.FileName, HasSubstr("sheet.exp"));
  form.MenuOpen.Click();
  form.Grid1.SetRow(1);
  Saved("none/sheet.exp");
  EXPECT_THAT(desk.messages.Texts(), ElementsAre("Can't read file", "Can't open file"));
  EXPECT_EQ(Cells(), Split("0|A|one, two|1|||2|Q|\"three\""));
  EXPECT_EQ(form.Grid1.Row(), 1) << "the sheet isn't walked for a file that can't be made";
}

TEST_F(SheetFile, AFullDiskIsToldAndLeavesTheOldFileAlone) {
  Open(Joined(SmallSheet(ThreeSeconds())));
  const std::string path = support::WriteScratch("week.exp", "a week's work");
  signal(SIGXFSZ, SIG_IGN);
  rlimit limit{};
  getrlimit(RLIMIT_FSIZE, &limit);
  const rlimit small{50, limit.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  EXPECT_EQ(Saved("week.exp"), "a week's work");
  setrlimit(RLIMIT_FSIZE, &limit);
  EXPECT_THAT(desk.messages.Texts(), ElementsAre("The sheet could not be saved to " + path +
                                                 ": File too large.\nThe file is as it was before."));
  std::filesystem::directory_iterator files(support::ScratchFolder());
  EXPECT_EQ(std::distance(files, {}), 3) << "the sound, the sheet, the week's; nothing half-written";
}

TEST_F(SheetFile, WhatIsNoSheetAtAllChangesNothing) {
  const std::string wave = ThreeSeconds();
  Open(Joined(SmallSheet(wave)));
  const struct {
    const char *text, *reason;
  } cases[] = {
      {"", "Line 1: expected the file's magic word, but the file ends."},
      {"Dear Ann,\nthe frogs\nhave gone.\n\nYours\nTom, the\n10\n", "Line 5: expected the row count"},
      {"ExposureSheet02\r\n24\r\nother.wav\r\n", "Line 4: expected a reserved field, but the file ends."},
      {"ExposureSheet02\r\n24\r\nother.wav\r\n\r\n\r\n 0 \r\n", "Line 6: expected the row count"},
  };
  for (const auto& c : cases) {
    desk.files.paths = {support::WriteScratch("letter.txt", c.text)};
    form.MenuOpen.Click();
    EXPECT_THAT(desk.messages.shown.back().text,
                AllOf(HasSubstr("letter.txt is no exposure sheet"), HasSubstr(c.reason)));
    EXPECT_EQ(form3->Text7.Text(), "2");
    EXPECT_EQ(form.CommonDialog1.FileName, wave);
    EXPECT_EQ(Cells(), Split("0|A|one, two|1|||2|Q|\"three\""));
    EXPECT_EQ(tracks.At(1, 0), 255);
    EXPECT_THAT(form.CommonDialog2.FileName, HasSubstr("sheet.exp")) << "what the next save proposes";
  }
}

TEST_F(SheetFile, TracksThatATypedRateHasNoRoomForAreLeftOutOnlyAfterAQuestion) {
  Open(Joined(SmallSheet(ThreeSeconds())));
  form3->Text7.SetText("1");
  desk.messages.answers = {platform::Answer::Cancel, platform::Answer::Ok};
  EXPECT_EQ(Saved("short.exp"), "");
  EXPECT_THAT(desk.messages.shown.back().text,
              AllOf(HasSubstr("room for 3 frames"), HasSubstr("3 of the sheet's 6 would be left out")));
  EXPECT_THAT(form.CommonDialog2.FileName, HasSubstr("sheet.exp"));
  EXPECT_THAT(Saved("short.exp"), HasSubstr("True\r\n 3 \r\n"));
  for (const char* rate : {"2", "10"}) {
    form3->Text7.SetText(rate);
    EXPECT_THAT(Saved("short.exp"), HasSubstr("True\r\n 6 \r\n"));
  }
  EXPECT_EQ(desk.messages.shown.size(), 2U) << "nothing is left out, nothing is asked";
}

TEST_F(SheetFile, ASoundsNameComesBackByteForByte) {
  auto lines = SmallSheet("");
  lines[10] = "A", lines[11] = "gr\xc3\xbc\xc3\x9f", lines[28] = " 6 ";
  lines.resize(lines.size() + 16, " 32 ");
  for (const std::string& name : {ThreeSeconds("fr\xf6sche, alle.wav"), std::string("/gone/t\xf6ne.wav")}) {
    lines[2] = name;
    Open(Joined(lines));
    EXPECT_EQ(form.CommonDialog1.FileName, name);
    EXPECT_EQ(Saved("again.exp"), Joined(lines));
  }
  EXPECT_THAT(desk.messages.shown.back().text, HasSubstr("/gone/t\xc3\xb6ne.wav")) << "what a user can read";
  // A whole sheet from an older machine. Its sound's file has come along under the same bytes or the same
  // letters.
  for (const char* beside : {"t\xf6ne.wav", "gro\xc3\x9f.wav"})
    for (const char* comment : {"gr\xfc\xdf", "all else in plain letters"}) {
      const std::string path = ThreeSeconds(beside);
      lines[2] = std::string("C:\\") + (beside[0] == 't' ? beside : "gro\xdf.wav");
      lines[11] = comment;
      Open(Joined(lines));
      EXPECT_EQ(form.CommonDialog1.FileName, path);
    }
  EXPECT_EQ(desk.messages.shown.size(), 1U);
}

TEST_F(SheetFile, ARescuedSheetIsAnOrdinaryOne) {
  const std::string wave = ThreeSeconds();
  desk.files.paths = {support::WriteScratch("take.exp", Joined(SmallSheet(wave)))};
  form.MenuOpen.Click();
  // In the middle of a rebuild: a longer sheet, whose new rows have no numbers yet; a rate that was typed
  // only.
  form.Grid1.SetRows(6);
  form.Grid1.SetRow(5);
  form.Grid1.SetText("half-way");
  form.Grid1.SetRow(1);
  form3->Text7.SetText("1");
  desk.host->Take();
  const std::string words = form.RescueSheet(), folder = support::ScratchFolder() + "/";
  EXPECT_THAT(desk.host->Take(), IsEmpty());
  EXPECT_EQ(form.Grid1.Row(), 1);
  ASSERT_THAT(words, testing::MatchesRegex(".*" + folder + "Rescued take [-0-9]+ [.0-9]+\\.exp\\."));
  const std::string path = words.substr(words.find(folder), words.size() - words.find(folder) - 1);
  auto lines = SmallSheet(wave);
  lines[1] = "1", lines[5] = " 6 ", lines[10] = "A", lines[28] = " 6 ";
  const Fields new_rows = Split("3|||4||half-way");
  lines.insert(lines.begin() + 18, new_rows.begin(), new_rows.end());
  lines.resize(lines.size() + 16, " 32 ");
  EXPECT_EQ(support::ReadWhole(path), Joined(lines));

  lines[1] = "2";
  support::WriteScratch("rescued.exp", Joined(lines));
  desk.files.paths = {folder + "rescued.exp"};
  form.MenuOpen.Click();
  EXPECT_EQ(Saved("again.exp"), Joined(lines));
  EXPECT_THAT(form.RescueSheet(), HasSubstr("is saved in " + folder + "again.exp"));
}

}  // namespace
