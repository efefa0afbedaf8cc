// Saving and opening on the live main window.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <filesystem>

#include "app/Form1.h"
#include "audio/sample_store.h"
#include "sheet/Form3.h"
#include "sheet/SheetDocument.h"
#include "support/desk.h"
#include "timeline/velocity_values.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr int kSamplesPerSecond = 1000;

/// 8-bit samples of three seconds: at 2 frames a second, 7 rows and 6 track frames.
std::string ThreeSeconds(const std::string& name = "frog.wav") {
  return support::WriteScratch(name, support::WaveBytes(8, kSamplesPerSecond, std::string(3000, '\x80')));
}

std::string Lines(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\r\n";
  return text;
}

/// A sheet of three rows and two track frames.
std::vector<std::string> SmallSheet(const std::string& wave_name) {
  return {"ExposureSheet02",
          "2",
          wave_name,
          "Reserved",
          "Reserved",
          " 4 ",
          " 3 ",
          "Reserved",
          "Reserved",
          "0",
          "A ",
          "one, two",
          "1",
          "",
          "",
          "2",
          "Q",
          "\"three\"",
          "Reserved",
          "Reserved",
          "Reserved",
          "Reserved",
          "False",
          "Velocity",
          "False",
          "True",
          "False",
          "True",
          " 2 ",
          " 1 ",
          " 2 ",
          " 3 ",
          " 4 ",
          " 255 ",
          " 0 ",
          " 64 ",
          " 32 "};
}

class SheetFile : public testing::Test {
 protected:
  void Open(const std::string& bytes) {
    desk.files.paths = {support::WriteScratch("sheet.exp", bytes)};
    form.MenuOpen_Click();
  }
  std::string SavedTo(const std::string& path) {
    desk.files.paths = {path};
    form.MenuSave_Click();
    return support::ReadWhole(path);
  }
  std::vector<std::string> Cells() const {
    std::vector<std::string> cells;
    for (int row = 1; row < form.Grid1.Rows(); ++row)
      for (int col = 0; col < 3; ++col) cells.push_back(form.Grid1.TextMatrix(row, col));
    return cells;
  }

  support::Desk desk;
  Form1& form = desk.Main();
};

TEST_F(SheetFile, EverythingComesBack) {
  const std::string wave = ThreeSeconds("fr\xc3\xb6sche, \"alle\".wav");
  auto lines = SmallSheet(wave);
  Open(Lines(lines));
  EXPECT_THAT(desk.messages.Texts(), IsEmpty());
  EXPECT_EQ(form3->Text7.Text(), "2");
  EXPECT_EQ(form.CommonDialog1.FileName, wave);
  EXPECT_EQ(audio::LoadedSound().WaveDataLength, 3000);
  EXPECT_THAT(Cells(), ElementsAre("0", "A", "one, two", "1", "", "", "2", "Q", "\"three\""));
  EXPECT_EQ(form.Grid1.Row(), 3);
  EXPECT_EQ(form.Grid1.Col(), 2);
  EXPECT_FALSE(form.vl_button18.value());
  EXPECT_FALSE(form.vl_button13.value());
  EXPECT_TRUE(form.vl_button14.value());
  EXPECT_FALSE(form.vl_button15.value());
  EXPECT_TRUE(form.vl_button16.value());
  ASSERT_EQ(timeline::Tracks().VelocityValues.Frames(), 6);
  EXPECT_EQ(timeline::Tracks().VelocityValues.At(0, 3), 4);
  EXPECT_EQ(timeline::Tracks().VelocityValues.At(1, 0), 255);
  EXPECT_EQ(timeline::Tracks().VelocityValues.At(2, 0), 32) << "beyond the file's";
  EXPECT_EQ(sheet::SheetCells.Text(1, 0), "1") << "recorded as the cell was left";
  EXPECT_EQ(sheet::SheetCells.Text(2, 2), "") << "the last cell hasn't been left";

  lines[10] = "A";  // trimmed by reading
  lines[28] = " 6 ";
  for (int i = 0; i < 16; ++i) lines.push_back(" 32 ");
  EXPECT_EQ(SavedTo(support::ScratchFolder() + "/again.exp"), Lines(lines));
  EXPECT_EQ(sheet::SheetCells.Text(2, 1), "Q");
  EXPECT_THAT(desk.messages.Texts(), IsEmpty());
}

TEST_F(SheetFile, AnEmptySheetHasTwentyLines) {
  form3->Text7.SetText("29.97");
  EXPECT_EQ(SavedTo(support::ScratchFolder() + "/empty.exp"),
            Lines({"ExposureSheet02", "29.97",    "",         "Reserved", "Reserved", " 1 ",      " 3 ",
                   "Reserved",        "Reserved", "Reserved", "Reserved", "Reserved", "Reserved", "True",
                   "Velocity",        "True",     "True",     "True",     "True",     " 0 "}));
}

TEST_F(SheetFile, SavingLeadsTheHostThroughTheSheetAndEndsAtTheLastComment) {
  Open(Lines(SmallSheet(ThreeSeconds())));
  form.vl_button18.SetValue(true);
  desk.host->Take();
  SavedTo(support::ScratchFolder() + "/moves.exp");
  EXPECT_EQ(form.Grid1.Row(), 3);
  EXPECT_EQ(form.Grid1.Col(), 2);
  // Each row is reached in the column where the one before ended, then its three columns are.
  std::vector<std::string> expected;
  for (const char* frame : {"0", "1", "2"})
    for (int move = 0; move < 4; ++move) expected.push_back("Vel_GotoFrame(" + std::string(frame) + ")");
  std::vector<std::string> moves;
  for (const std::string& call : desk.host->Take())
    if (call.starts_with("Vel_GotoFrame")) moves.push_back(call);
  EXPECT_EQ(moves, expected);
}

TEST_F(SheetFile, ATypedRateNeverSavesMoreThanTheTracksHold) {
  Open(Lines(SmallSheet(ThreeSeconds())));
  form3->Text7.SetText("10");
  const std::string saved = SavedTo(support::ScratchFolder() + "/typed.exp");
  EXPECT_THAT(saved, HasSubstr("ExposureSheet02\r\n10\r\n"));
  EXPECT_THAT(saved, HasSubstr("True\r\n 6 \r\n 1 \r\n"));
}

TEST_F(SheetFile, TheWaveFileIsTakenFromBesideTheSheet) {
  const std::string wave = ThreeSeconds();
  Open(Lines(SmallSheet("C:\\Voices\\frog.wav")));
  EXPECT_THAT(desk.messages.Texts(), IsEmpty());
  EXPECT_EQ(form.CommonDialog1.FileName, wave);
  EXPECT_EQ(timeline::Tracks().VelocityValues.At(0, 0), 1);
}

TEST_F(SheetFile, AMissingWaveFileIsToldOnceAndTheSheetComesAllTheSame) {
  Open(Lines(SmallSheet("/gone/toad.wav")));
  ASSERT_EQ(desk.messages.shown.size(), 1U);
  EXPECT_THAT(desk.messages.Texts()[0],
              testing::AllOf(HasSubstr("/gone/toad.wav"), HasSubstr("tracks can't be")));
  EXPECT_EQ(form.CommonDialog1.FileName, "/gone/toad.wav");
  EXPECT_EQ(form3->Text7.Text(), "2");
  EXPECT_EQ(form.Grid1.Rows(), 4);
  EXPECT_THAT(Cells(), ElementsAre("0", "A", "one, two", "1", "", "", "2", "Q", "\"three\""));
}

TEST_F(SheetFile, NothingOfTheSheetBeforeShowsInOneWithoutItsSound) {
  Open(Lines(SmallSheet(ThreeSeconds())));
  form.Grid1.SetRow(1);  // records the last comment
  auto lines = SmallSheet("/gone/toad.wav");
  lines[17] = "";
  Open(Lines(lines));
  EXPECT_EQ(sheet::SheetCells.Text(2, 2), "");
  lines.resize(12);
  Open(Lines(lines));
  EXPECT_THAT(Cells(), ElementsAre("0", "A", "one, two"));
}

TEST_F(SheetFile, ARefusedWaveFileLeavesTheOldSound) {
  Open(Lines(SmallSheet(ThreeSeconds())));
  const std::string wave = support::WriteScratch("bad.wav", "no riff");
  auto lines = SmallSheet(wave);
  lines[11] = "new";
  Open(Lines(lines));
  EXPECT_THAT(desk.messages.Texts(), ElementsAre("Not a riff file"));
  EXPECT_EQ(audio::LoadedSound().WaveDataLength, 3000);
  EXPECT_EQ(form.Grid1.TextMatrix(1, 2), "new");
  EXPECT_EQ(timeline::Tracks().VelocityValues.At(1, 0), 255);
}

TEST_F(SheetFile, CancelAndAFileThatCantBeOpenedChangeNothing) {
  Open(Lines(SmallSheet(ThreeSeconds())));
  const auto cells = Cells();
  desk.files.paths = {""};
  form.MenuOpen_Click();
  form.MenuSave_Click();
  EXPECT_THAT(desk.messages.Texts(), IsEmpty());
  desk.files.paths = {support::ScratchFolder() + "/none.exp"};
  form.MenuOpen_Click();
  desk.files.paths = {support::ScratchFolder() + "/none/sheet.exp"};
  form.Grid1.SetRow(1);
  form.MenuSave_Click();
  EXPECT_THAT(desk.messages.Texts(), ElementsAre("Can't read file", "Can't open file"));
  EXPECT_EQ(Cells(), cells);
  EXPECT_EQ(form.Grid1.Row(), 1) << "the sheet isn't walked for a file that can't be made";
}

TEST_F(SheetFile, AFullDiskIsToldAndKeepsTheOldFile) {
  Open(Lines(SmallSheet(ThreeSeconds())));
  const std::string path = support::WriteScratch("week.exp", "a week's work");
  signal(SIGXFSZ, SIG_IGN);
  rlimit limit{};
  getrlimit(RLIMIT_FSIZE, &limit);
  const rlimit small{50, limit.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  const std::string left = SavedTo(path);
  setrlimit(RLIMIT_FSIZE, &limit);
  EXPECT_EQ(left, "a week's work");
  EXPECT_THAT(desk.messages.Texts(), ElementsAre("The sheet could not be saved to " + path +
                                                 ": File too large.\nThe file is as it was before."));
}

TEST_F(SheetFile, HostileFilesAreToldAndTheWindowLivesOn) {
  const std::string wave = ThreeSeconds();
  const auto with = [&](std::size_t line, const std::string& text) {
    auto lines = SmallSheet(wave);
    lines[line - 1] = text;
    return Lines(lines);
  };
  const std::string good = Lines(SmallSheet(wave));
  const struct {
    const char* what;
    std::string bytes;
    const char* told;
  } cases[] = {
      {"empty", "", "Line 1: expected the file's magic word, but the file ends."},
      {"nonsense", std::string(5000, '\xff'), "Line 1: expected the frame rate, but the file ends."},
      {"a million rows", with(6, " 1000000 "), "Line 6: expected a row count of 4"},
      {"more track frames than the sound has", with(29, " 100000 "),
       "Line 29: expected tracks of at most 6 frames"},
      {"a negative rate", with(2, "-3"), "must not be negative"},
      {"a rate beyond all memory", with(2, "99999999999"), "gives more than the"},
      {"a NUL in a comment", with(12, std::string("a\0b", 3)), nullptr},
      {"one line of a megabyte", with(12, std::string(1 << 20, 'x')), nullptr},
  };
  for (const auto& c : cases) {
    desk.messages.shown.clear();
    Open(c.bytes);
    if (c.told == nullptr) {
      EXPECT_THAT(desk.messages.Texts(), IsEmpty()) << c.what;
    } else {
      ASSERT_FALSE(desk.messages.shown.empty()) << c.what;
      EXPECT_THAT(desk.messages.Texts()[0], HasSubstr(c.told)) << c.what;
    }
    EXPECT_EQ(form.Grid1.Cols(), 3) << c.what;
    EXPECT_LE(form.Grid1.Rows(), 100) << c.what;
    support::HandleEvents();
  }
  desk.messages.shown.clear();
  Open(good);
  EXPECT_THAT(desk.messages.Texts(), IsEmpty()) << "a good file after all of them";
}

TEST_F(SheetFile, TheSampleSheetFitsItsVoice) {
  desk.files.paths = {SOURCE_DIR "/samples/frogs.exp"};
  form.MenuOpen_Click();
  EXPECT_THAT(desk.messages.Texts(), IsEmpty());
  EXPECT_EQ(form.CommonDialog1.FileName, SOURCE_DIR "/samples/frogs.wav");
  // 65,601 samples at 22,050 a second are 2.975 seconds, 71.4 frames.
  EXPECT_EQ(form.Grid1.Rows(), 72);
  EXPECT_EQ(timeline::Tracks().VelocityValues.Frames(), 71);
}

}  // namespace
