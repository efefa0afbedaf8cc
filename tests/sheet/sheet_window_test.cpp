// The sheet on the main window: rows from sound and rate, shapes and comments, what is recorded and when.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QAbstractItemView>
#include <QScrollBar>

#include <filesystem>
#include "app/Form1.h"

#include "audio/sample_store.h"
#include "platform/Application.h"
#include "sheet/Form3.h"
#include "sheet/SheetDocument.h"
#include "support/desk.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A silent 8-bit sound without a file: `bytes` samples at 1000 a second.
void PutSound(std::int32_t bytes) {
  auto& sound = audio::LoadedSound();
  sound.WaveFormat = {1, 1, 1000, 1000, 1, 8};
  sound.WaveDataLength = bytes;
  sound.Samples8 = audio::SampleArray<std::uint8_t>::Zeroed(bytes);
}

std::vector<std::string> Column(const Form1& form, int col) {
  std::vector<std::string> texts;
  for (int row = 0; row < form.Grid1.Rows(); ++row) texts.push_back(form.Grid1.TextMatrix(row, col));
  return texts;
}

TEST(Start, GivesAnEmptySheetAtTheHostsRate) {
  support::Desk desk;
  desk.host->frame_rate = "29.97 fps";
  Form1& form = desk.Main();
  EXPECT_EQ(form.Caption(), "Exposure Sheet 2.3:  Project audio is . seconds, 0 frames at 29.97 fps");
  EXPECT_EQ(form3->Text7.Text(), "29.97 fps");
  EXPECT_EQ(form.Grid1.Rows(), 1);
  EXPECT_EQ(form.Grid1.Row(), 0);
  EXPECT_EQ(form.Grid1.Col(), 2);
  EXPECT_EQ(form.GetCurrentTick(), -1);
  EXPECT_EQ(sheet::SheetCells.LastFrame(), 1);
  EXPECT_EQ(sheet::GridReady, platform::kTrue);
  EXPECT_THAT(desk.messages.Texts(), IsEmpty());
}

TEST(Start, AsksTheHostInOrderAndFromItsFolder) {
  support::Desk desk;
  desk.host->before = [](std::string_view member) {
    if (member == "Vel_WallpaperFilename") throw host::HostError(member, "none");
  };
  desk.Main();
  ASSERT_GE(desk.host->calls.size(), 3U);
  EXPECT_THAT(std::vector(desk.host->calls.begin(), desk.host->calls.begin() + 3),
              ElementsAre("Vel_GetAppDir()", "Vel_WallpaperFilename()", "Vel_GetFrameRate()"));
  EXPECT_EQ(std::filesystem::current_path(), std::filesystem::canonical(desk.host->app_dir));
}

TEST(SheetDeathTest, AHostThatFailsUnguardedEndsTheProcessNamingTheMember) {
  support::Desk desk;
  desk.host->FailAt("Vel_GetFrameRate", 1);
  EXPECT_EXIT(platform::RunEvent([&] { desk.Main(); }), testing::ExitedWithCode(1),
              "Vel_GetFrameRate.*told to fail");
}

TEST(SetupGrid, CountsRowsWithTheHeaderInTheRounding) {
  const struct {
    const char* rate;
    std::int32_t bytes;
    int rows, track_frames;
    const char* title_end;
  } cases[] = {
      {"10", 2460, 26, 25, "2.5 seconds, 24 frames at 10 fps"},  // 24.6 frames
      {"10", 2450, 26, 24,
       "2.5 seconds, 24 frames at 10 fps"},  // 24.5: ties go to even, with the header and without
      {"0", 2450, 1, 0, "2.5 seconds, 0 frames at 0 fps"},
      {"no rate", 3000, 1, 0, "3. seconds, 0 frames at 0 fps"},
  };
  support::Desk desk;
  Form1& form = desk.Main();
  for (const auto& c : cases) {
    PutSound(c.bytes);
    form3->Text7.SetText(c.rate);
    form.SetupGrid();
    EXPECT_EQ(form.Grid1.Rows(), c.rows) << c.rate << " x " << c.bytes;
    EXPECT_EQ(sheet::TrackFramesNow(), c.track_frames) << c.rate << " x " << c.bytes;
    EXPECT_EQ(form.Caption(), std::string("Exposure Sheet 2.3:  Project audio is ") + c.title_end);
  }
}

TEST(SetupGrid, KeepsTextsOnTheirRowsAndEmptiesTheCopy) {
  support::Desk desk;
  Form1& form = desk.Main();
  PutSound(1000);
  form3->Text7.SetText("4");
  form.SetupGrid();
  form.Grid1.SetRow(4);
  form.List1.SetListIndex(2);
  form.List1_Click();
  form.Grid1.SetRow(1);
  ASSERT_EQ(sheet::SheetCells.Text(3, 1), "B ");
  desk.messages.answers = {platform::Answer::No, platform::Answer::Yes};
  desk.host->Take();
  form.ChooseRate("3");
  EXPECT_THAT(Column(form, 0), ElementsAre("Frame", "0", "1", "2"));
  form.ChooseRate("12");
  EXPECT_EQ(form.Grid1.Rows(), 13);
  EXPECT_EQ(form.Grid1.TextMatrix(4, 1), "") << "a row cut off must not come back";
  EXPECT_EQ(sheet::SheetCells.Text(3, 1), "");
  EXPECT_EQ(sheet::SheetCells.LastFrame(), 13);
  EXPECT_THAT(desk.messages.Texts(), ElementsAre("Use the frame rate in the main program as well?",
                                                 "Use the frame rate in the main program as well?"));
  EXPECT_EQ(std::count(desk.host->calls.begin(), desk.host->calls.end(), "vel_SetFrameRate(12d)"), 1);
  EXPECT_EQ(std::count(desk.host->calls.begin(), desk.host->calls.end(), "vel_SetFrameRate(3d)"), 0);
}

TEST(SetupGrid, RefusesARateThatNoSheetCanHave) {
  support::Desk desk;
  Form1& form = desk.Main();
  PutSound(1000);
  form3->Text7.SetText("4");
  form.SetupGrid();
  form.Grid1.SetRow(2);
  form.Grid1.SetCol(1);
  form.Grid1.SetText("M ");
  for (const char* rate : {"-4", "99999999999"}) {
    desk.messages.shown.clear();
    form3->Show();
    form3->Text7.SetText(rate);
    form3->vl_button1.Click();
    EXPECT_EQ(desk.messages.shown.size(), 1U);
    EXPECT_TRUE(form3->Visible()) << "the rate must be there to mend";
    form.SetupGrid();
    EXPECT_EQ(form.Grid1.Rows(), 5);
    EXPECT_EQ(form.Grid1.TextMatrix(2, 1), "M ");
    EXPECT_EQ(form.Caption(), "Exposure Sheet 2.3:  Project audio is 1. seconds, 4 frames at 4 fps");
  }
}

TEST(SetupGrid, RefusesAnItemsRateBeforeAnythingHearsOfIt) {
  support::Desk desk;
  Form1& form = desk.Main();
  PutSound(500'000);
  audio::LoadedSound().WaveFormat.nSamplesPerSec = 1;
  desk.host->Take();
  form.ChooseRate("30");
  EXPECT_THAT(desk.messages.Texts(),
              ElementsAre("A frame rate of 30 gives more than the 10000000 rows that a sheet can have."));
  EXPECT_EQ(form3->Text7.Text(), "12");
  EXPECT_THAT(desk.host->calls, IsEmpty());
}

#ifndef __SANITIZE_ADDRESS__
TEST(SetupGrid, TellsOfMemoryThatCantBeHad) {
  support::Desk desk;
  Form1& form = desk.Main();
  PutSound(500'000);
  audio::LoadedSound().WaveFormat.nSamplesPerSec = 1;
  const rlimit limit{1u << 30, 1u << 30};
  ASSERT_EQ(setrlimit(RLIMIT_AS, &limit), 0);
  form.ChooseRate("15");
  EXPECT_THAT(desk.messages.Texts(), ElementsAre("There isn't enough memory for a sheet of 7500001 rows."));
  EXPECT_EQ(form.Grid1.Rows(), 1);
}
#endif

TEST(Shapes, AreWrittenIntoTheCurrentRowOnly) {
  support::Desk desk;
  Form1& form = desk.Main();
  form.List1.SetListIndex(1);
  form.List1_Click();
  EXPECT_EQ(form.Grid1.TextMatrix(0, 2), "Comment") << "the header row takes no shape";
  PutSound(1000);
  form3->Text7.SetText("4");
  form.SetupGrid();
  form.Grid1.SetRow(2);
  form.Grid1.SetCol(2);
  form.List1_Click();
  EXPECT_THAT(Column(form, 1), ElementsAre("Shape", "", "A ", "", ""));
  EXPECT_EQ(form.Grid1.Col(), 1);
  EXPECT_EQ(sheet::SheetCells.Text(1, 1), "A ");
  form.List1.SetListIndex(0);
  form.List1_Click();
  EXPECT_EQ(form.Grid1.TextMatrix(2, 1), "") << "None means no shape";
  EXPECT_EQ(sheet::SheetCells.Text(1, 1), "");
}

TEST(Shapes, DeleteEmptiesAShapeAndNothingElse) {
  support::Desk desk;
  Form1& form = desk.Main();
  PutSound(1000);
  form3->Text7.SetText("4");
  form.SetupGrid();
  form.Grid1.SetRow(1);
  for (const int col : {0, 1, 2}) {
    form.Grid1.SetCol(col);
    form.Grid1.SetText("text");
    form.Grid1_KeyUp(platform::Grid::kDeleteKey, 0);
    EXPECT_EQ(form.Grid1.Text(), col == 1 ? "" : "text");
    EXPECT_EQ(sheet::SheetCells.Text(0, col), form.Grid1.Text());
  }
}

TEST(Comments, AreTypedOverTheirCellAndRecordedWhenItIsLeft) {
  support::Desk desk;
  Form1& form = desk.Main();
  PutSound(1000);
  form3->Text7.SetText("4");
  form.SetupGrid();
  form.Grid1.SetRow(3);
  form.Grid1_Click();
  ASSERT_TRUE(form.Text2.Visible());
  // 514 of the grid less the two columns of 64 and the scroll bar's 16; the third row under a header.
  EXPECT_EQ(form.Text2.Width(), 654 - 284);
  EXPECT_EQ(form.Text2.Left(), 136 + 2 + 128);
  form.Text2.SetText("smile");
  EXPECT_EQ(form.Grid1.TextMatrix(3, 2), "smile");
  EXPECT_EQ(sheet::SheetCells.Text(2, 2), "");
  form.Grid1.SetFocus();
  support::HandleEvents();
  EXPECT_FALSE(form.Text2.Visible());
  form.Grid1.SetRow(1);
  EXPECT_EQ(sheet::SheetCells.Text(2, 2), "smile");
  form.Grid1.SetCol(1);
  form.Grid1_Click();
  EXPECT_FALSE(form.Text2.Visible()) << "only comments have an editor";
}

TEST(Comments, HaveTheirEditorOverTheirCellOrNotAtAll) {
  support::Desk desk;
  Form1& form = desk.Main();
  PutSound(25'000);
  form3->Text7.SetText("4");
  form.SetupGrid();
  form.Grid1.SetRow(3);
  form.Grid1_Click();
  static_cast<QAbstractItemView*>(form.Grid1.Widget())->verticalScrollBar()->setValue(80);
  EXPECT_FALSE(form.Text2.Visible());
  EXPECT_TRUE(form.Grid1.HasFocus()) << "the space bar would press a button";
  form.Grid1_Click();
  EXPECT_TRUE(form.Text2.Visible());
  EXPECT_GT(form.Text2.Top(), form.Grid1.Top()) << "the row was scrolled away";
  form.ResizeClient(800, 400);
  support::HandleEvents();
  EXPECT_EQ(form.Text2.Width(), 800 - 284);
}

TEST(Comments, OnTheHeaderLastUntilTheNextRebuildAndAreNotRecorded) {
  support::Desk desk;
  Form1& form = desk.Main();
  form.Grid1_Click();
  ASSERT_TRUE(form.Text2.Visible());
  form.Text2.SetText("title");
  EXPECT_EQ(form.Grid1.TextMatrix(0, 2), "title");
  form.Grid1.SetCol(0);
  form.SetupGrid();
  EXPECT_EQ(form.Grid1.TextMatrix(0, 2), "Comment");
}

TEST(Closing, UnloadsEveryWindowWithoutAQuestion) {
  support::Desk desk;
  Form1& form = desk.Main();
  form3->Show();
  desk.host->Take();
  form.QuitMouth_Click();
  EXPECT_EQ(form1.IfLoaded(), nullptr);
  EXPECT_EQ(form3.IfLoaded(), nullptr);
  EXPECT_THAT(desk.messages.Texts(), IsEmpty());
  EXPECT_THAT(desk.host->calls, IsEmpty());
}

TEST(RateDialog, KeepsWhatWasTypedWhenCancelled) {
  support::Desk desk;
  Form1& form = desk.Main();
  form.SetFPS_Click();
  form3->Text7.SetText("7");
  form3->vl_button2.Click();
  EXPECT_FALSE(form3->Visible());
  EXPECT_EQ(sheet::FrameRate(), 7);
  EXPECT_THAT(desk.messages.Texts(), IsEmpty());
}

}  // namespace
