// The sheet on the main window: rows from sound and rate, shapes and comments, what is recorded and when.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QAbstractItemView>
#include <QAccessible>
#include <QScrollBar>

#include <filesystem>
#include "app/Form1.h"

#include "audio/sample_store.h"
#include "host/HandedWindow.h"
#include "platform/Application.h"
#include "platform/Lifetime.h"
#include "sheet/Form3.h"
#include "sheet/SheetDocument.h"
#include "support/UserInput.h"
#include "support/desk.h"
#include "timeline/MouthSets.h"
#include "timeline/velocity_values.h"
#include "timeline/zoom.h"

namespace {

using testing::Contains;
using testing::Each;
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

struct SheetGrid : testing::Test {
  /// The sheet of a sound of so many thousandths of a second.
  void Build(std::int32_t bytes = 1000, const char* rate = "4") {
    PutSound(bytes);
    form3->Text7.SetText(rate);
    form.SetupGrid();
  }
  void Go(int row, int col) {
    grid.SetRow(row);
    grid.SetCol(col);
  }

  support::Desk desk;
  Form1& form = desk.Main();
  platform::Grid& grid = form.Grid1;
};

TEST(Start, GivesAnEmptySheetAtTheHostsRate) {
  support::Desk desk;
  timeline::Tracks().UndoHistory.resize(2);
  timeline::ZoomFactor = 2;
  host::HandedWindow<Form1>("Form1", form1).RunPrefsCallback();
  EXPECT_EQ(form1.IfLoaded(), nullptr) << "a change of colours loads nothing";
  desk.host->frame_rate = "29.97 fps";
  desk.host->before = [](std::string_view member) {
    if (member == "Vel_WallpaperFilename") throw host::HostError(member, "none");
  };
  Form1& form = desk.Main();
  EXPECT_EQ(form.Caption(), "Exposure Sheet 2.3:  Project audio is , seconds, 0 frames at 29.97 fps");
  EXPECT_EQ(form3->Text7.Text(), "29.97 fps");
  EXPECT_EQ(form.Grid1.Rows(), 1);
  EXPECT_TRUE(form.Grid1.HasFocus());
  EXPECT_EQ(form.Grid1.Row(), 0);
  EXPECT_EQ(form.Grid1.Col(), 2);
  EXPECT_EQ(sheet::SheetCells.LastFrame(), 1);
  EXPECT_TRUE(timeline::Tracks().UndoHistory.empty());
  EXPECT_EQ(timeline::ZoomFactor, 1);
  EXPECT_EQ(sheet::GridReady, platform::kTrue);
  EXPECT_THAT(desk.messages.Texts(), IsEmpty());
  ASSERT_GE(desk.host->calls.size(), 3U);
  desk.host->calls.resize(3);
  EXPECT_THAT(desk.host->calls,
              ElementsAre("Vel_GetAppDir()", "Vel_WallpaperFilename()", "Vel_GetFrameRate()"));
  EXPECT_EQ(std::filesystem::current_path(), std::filesystem::canonical(desk.host->app_dir));
}

TEST_F(SheetGrid, KeepsTextsOnTheirRowsAndEmptiesTheCopy) {
  Build();
  grid.SetRow(4);
  form.List1.SetListIndex(2);
  form.List1.Click();
  grid.SetRow(1);
  ASSERT_EQ(sheet::SheetCells.Text(3, 1), "B ");
  desk.messages.answers = {platform::Answer::No, platform::Answer::Yes};
  desk.host->Take();
  form.ChooseRate("3");
  EXPECT_THAT(Column(form, 0), ElementsAre("Frame", "0", "1", "2"));
  form.twelvefps.Click();
  EXPECT_EQ(grid.Rows(), 13);
  EXPECT_EQ(grid.TextMatrix(4, 1), "") << "a row cut off must not come back";
  EXPECT_EQ(sheet::SheetCells.Text(3, 1), "");
  EXPECT_EQ(sheet::SheetCells.LastFrame(), 13);
  EXPECT_THAT(desk.messages.Texts(), Each("Use the frame rate in the main program as well?"));
  EXPECT_EQ(desk.messages.shown.size(), 2U);
  EXPECT_THAT(desk.host->calls, Contains("vel_SetFrameRate(12d)").Times(1));
  EXPECT_THAT(desk.host->calls, Contains("vel_SetFrameRate(3d)").Times(0));
}

TEST_F(SheetGrid, RefusesARateThatNoSheetCanHave) {
  Build();
  Go(2, 1);
  grid.SetText("M ");
  for (const char* rate : {"-4", "99999999999"}) {
    desk.messages.shown.clear();
    form3->Show();
    form3->Text7.SetText(rate);
    rate[0] == '-' ? form3->vl_button1.Click() : support::Key(form3->Text7.Widget(), Qt::Key_Return);
    ASSERT_EQ(desk.messages.shown.size(), 1U);
    EXPECT_EQ(desk.messages.shown[0].icon, platform::Icon::Warning);
    EXPECT_TRUE(form3->Visible()) << "the rate must be there to mend";
    form.SetupGrid();
    EXPECT_EQ(grid.Rows(), 5);
    EXPECT_EQ(grid.TextMatrix(2, 1), "M ");
    EXPECT_EQ(form.Caption(), "Exposure Sheet 2.3:  Project audio is 1, seconds, 4 frames at 4 fps");
  }
  desk.messages.answers = {platform::Answer::Yes};
  form3->Text7.SetText("8.25");
  form3->vl_button1.Click();
  EXPECT_FALSE(form3->Visible());
  EXPECT_EQ(grid.Rows(), 9);
  EXPECT_THAT(desk.host->calls, Contains("vel_SetFrameRate(8.25d)"));
}

TEST_F(SheetGrid, RefusesAnItemsRateBeforeAnythingHearsOfIt) {
  PutSound(500'000);
  audio::LoadedSound().WaveFormat.nSamplesPerSec = 1;
  desk.host->Take();
  form.thirtyfps.Click();
  EXPECT_THAT(desk.messages.Texts(),
              ElementsAre("A frame rate of 30 gives more than the 10000000 rows that a sheet can have."));
#ifndef __SANITIZE_ADDRESS__
  const rlimit limit{1u << 30, 1u << 30};
  ASSERT_EQ(setrlimit(RLIMIT_AS, &limit), 0);
  form.fifteenfps.Click();
  EXPECT_EQ(desk.messages.Texts().back(), "There isn't enough memory for a sheet of 7500001 rows.");
  EXPECT_EQ(grid.Rows(), 1);
#endif
  EXPECT_EQ(form3->Text7.Text(), "12");
  EXPECT_THAT(desk.host->calls, IsEmpty());
}

TEST_F(SheetGrid, TakesShapesInTheCurrentRowOnly) {
  form.List1.SetListIndex(1);
  form.List1.Click();
  EXPECT_EQ(grid.TextMatrix(0, 2), "Comment") << "the header row takes no shape";
  Build();
  form.List1.SetFocus();
  Go(2, 2);
  EXPECT_TRUE(form.List1.HasFocus()) << "a move leaves the keyboard alone";
  form.List1.Click();
  EXPECT_THAT(Column(form, 1), ElementsAre("Shape", "", "A ", "", ""));
  EXPECT_EQ(grid.Col(), 1);
  EXPECT_EQ(sheet::SheetCells.Text(1, 1), "A ");
  form.List1.SetListIndex(0);
  form.List1.Click();
  EXPECT_EQ(grid.TextMatrix(2, 1), "") << "None means no shape";
  EXPECT_EQ(sheet::SheetCells.Text(1, 1), "");
  for (const int col : {0, 1, 2}) {
    Go(1, col);
    grid.SetText("text");
    grid.Announce("");
    form.Grid1.KeyUp(platform::Grid::kDeleteKey, 0);
    const auto notice = grid.Widget()->property("accessible_notice").value<QAccessible::Id>();
    EXPECT_EQ(QAccessible::accessibleInterface(notice)->text(QAccessible::Name), col == 1 ? "None" : "");
    EXPECT_EQ(grid.Text(), col == 1 ? "" : "text") << "only a shape is deleted";
    EXPECT_EQ(sheet::SheetCells.Text(0, col), grid.Text());
  }
}

TEST_F(SheetGrid, TakesCommentsTypedOverTheirCellAndRecordsThemWhenItIsLeft) {
  Build();
  grid.SetRow(3);
  form.Grid1.Click();
  ASSERT_TRUE(form.Text2.Visible());
  // 514 of the grid less the two columns of 64 and the scroll bar's 16; the third row under a header.
  EXPECT_EQ(form.Text2.Width(), 654 - 284);
  EXPECT_EQ(form.Text2.Left(), 136 + 2 + 128);
  form.Text2.SetText("smile");
  EXPECT_EQ(grid.TextMatrix(3, 2), "smile");
  EXPECT_EQ(sheet::SheetCells.Text(2, 2), "");
  grid.SetFocus();
  support::HandleEvents();
  EXPECT_FALSE(form.Text2.Visible());
  grid.SetRow(1);
  EXPECT_EQ(sheet::SheetCells.Text(2, 2), "smile");
  grid.SetText(std::string(40'000, 'x'));
  form.Grid1.Click();
  EXPECT_EQ(grid.Text().size(), 40'000U) << "opening the editor changes nothing";
  grid.SetCol(1);
  form.Grid1.Click();
  EXPECT_FALSE(form.Text2.Visible()) << "only comments have an editor";
  Go(0, 2);
  form.Grid1.Click();
  form.Text2.SetText("title");
  EXPECT_EQ(grid.TextMatrix(0, 2), "title");
  form.SetupGrid();
  EXPECT_EQ(grid.TextMatrix(0, 2), "Comment") << "the header's comment lasts until the next rebuild";
}

TEST_F(SheetGrid, HasTheCommentEditorOverItsCellOrNotAtAll) {
  Build(25'000);
  grid.SetRow(3);
  form.Grid1.Click();
  static_cast<QAbstractItemView*>(grid.Widget())->verticalScrollBar()->setValue(80);
  EXPECT_FALSE(form.Text2.Visible());
  EXPECT_TRUE(grid.HasFocus()) << "the space bar would press a button";
  form.Grid1.Click();
  EXPECT_TRUE(form.Text2.Visible());
  EXPECT_GT(form.Text2.Top(), grid.Top()) << "the row was scrolled away";
  form.ResizeClient(800, 400);
  support::HandleEvents();
  EXPECT_EQ(form.Text2.Width(), 800 - 284);
  for (const int key : {Qt::Key_Return, Qt::Key_Escape}) {
    support::Key(grid.Widget(), Qt::Key_F2);
    EXPECT_TRUE(form.Text2.Visible());
    support::Key(form.Text2.Widget(), key);
    EXPECT_TRUE(grid.HasFocus() && !form.Text2.Visible()) << key;
  }
}

TEST_F(SheetGrid, ClosesTheRateDialogAndThenEveryWindowWithoutAQuestion) {
  const std::function<void()> ways[] = {[] { form3->vl_button2.Click(); },
                                        [] { support::Key(form3->Text7.Widget(), Qt::Key_Escape); },
                                        [] { form3->TopWidget()->close(); }};
  for (const auto& cancel : ways) {
    form.SetFPS.Click();
    support::Key(form3->TopWidget()->focusWidget(), Qt::Key_7, Qt::NoModifier, "7");
    cancel();
    EXPECT_FALSE(form3->Visible());
  }
  EXPECT_EQ(sheet::FrameRate(), 7) << "cancelled, but the rate's text stays";
  form3->Show();
  form.Sampleinfo.Click();
  form4->MouthPicture(1);
  form5->MouthPicture(1);
  desk.host->Take();
  form.QuitMouth.Click();
  EXPECT_EQ(platform::LoadedWindowCount(), 0);
  EXPECT_EQ(form1.IfLoaded(), nullptr);
  EXPECT_EQ(form3.IfLoaded(), nullptr);
  EXPECT_THAT(desk.messages.Texts(), IsEmpty());
  EXPECT_THAT(desk.host->calls, IsEmpty());
}

}  // namespace
