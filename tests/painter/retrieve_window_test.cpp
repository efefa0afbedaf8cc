// The way into the frame painter: what the host is asked, what is copied, what a failure leaves.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/sysinfo.h>

#include <filesystem>

#include "app/Form1.h"
#include "audio/sample_store.h"
#include "painter/FPOptions.h"
#include "painter/FramePainter.h"
#include "painter/Retrieve.h"
#include "painter/cell_store.h"
#include "painter/strip_state.h"
#include "platform/Application.h"
#include "platform/memory.h"
#include "sheet/Form3.h"
#include "support/UserInput.h"
#include "support/desk.h"

namespace painter {
namespace {

using Calls = std::vector<std::string>;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(Launch, StopsWhereThereIsNoAnimation) {
  support::Desk desk;
  const auto folder = std::filesystem::current_path();
  desk.host->frames = 0;
  form1.Hold().FramePainterM_Click();
  EXPECT_EQ(desk.host->calls, Calls{"vel_GetTotalFrames()"});
  EXPECT_EQ(std::filesystem::current_path(), folder);
  desk.host->frames = 1;
  form1->FramePainterM_Click();
  EXPECT_EQ(desk.host->calls.back(), "vel_StatusClose()");
  EXPECT_EQ(desk.messages.Texts(),
            (Calls{"Not enough frames exist.  Create an animaiton of at least several frames first.",
                   "No animation"}));
  EXPECT_EQ(fp_options.IfLoaded(), nullptr);
}

TEST(Launch, CopiesBothFramesOfTwoAndAsksForALength) {
  support::Desk desk;
  desk.host->frames = 2;
  bool busy = false;
  desk.host->before = [&](std::string_view member) {
    if (member == "vel_GetRbuffer") busy = platform::BusyPointerIsOn();
  };
  LaunchFramePainter();
  EXPECT_EQ(desk.host->calls,
            (Calls{"Vel_GetAppDir()", "vel_BufferWidth()", "vel_BufferHeight()", "vel_GetTotalFrames()",
                   "vel_StatusOpen(\"Retrieving frames...\")", "vel_Status(0)",  //
                   "Vel_GotoFrameAdv(0, 3s)", "vel_GetRbuffer()", "vel_GetGbuffer()", "Vel_GetBbuffer()",
                   "vel_Status(0d)",  //
                   "Vel_GotoFrameAdv(1, 3s)", "vel_GetRbuffer()", "vel_GetGbuffer()", "Vel_GetBbuffer()",
                   "vel_Status(50d)",  //
                   "Vel_GotoFrame(0s)", "vel_StatusClose()", "Vel_SendFormObject(FPOptions, 0s)"}));
  EXPECT_TRUE(busy);
  EXPECT_FALSE(platform::BusyPointerIsOn());
  EXPECT_EQ(std::filesystem::current_path(), std::filesystem::canonical(desk.host->app_dir));
  const Retrieval& retrieval = TheRetrieval();
  ASSERT_EQ(retrieval.cells.count, 2);
  EXPECT_EQ(retrieval.cells.shape, (PlaneShape{4, 3}));
  // The double's planes hold frame * 10 + channel.
  EXPECT_EQ(CellPlanes(retrieval.cells, 0).red[0], 0);
  EXPECT_EQ(CellPlanes(retrieval.cells, 1).green[19], 11);
  EXPECT_EQ(CellPlanes(retrieval.cells, 1).blue[0], 12);
  EXPECT_TRUE(fp_options.Hold().Visible());
  EXPECT_EQ(fp_options->Text1.Text(), "30");
  support::Key(fp_options->Text1.Widget(), Qt::Key_7, Qt::NoModifier, "7");
  EXPECT_EQ(fp_options->Text1.Text(), "7") << "in place of the proposal";
}

TEST(Launch, ProposesTheSoundsLengthCutToWholeFrames) {
  support::Desk desk;
  desk.host->frames = 2;
  form3->Text7.SetText("12 fps");
  auto& sound = audio::LoadedSound();
  sound.WaveFormat.nSamplesPerSec = 1000;
  sound.WaveFormat.wBitsPerSample = 8;
  for (const auto& [bytes, text] : {std::pair{5300, "63"}, std::pair{150, "1"}, std::pair{50, "30"}}) {
    sound.WaveDataLength = bytes;  // 63.6, 1.8 and 0.6 frames
    LaunchFramePainter();
    EXPECT_EQ(fp_options->Text1.Text(), text) << bytes;
    fp_options->Command1_Click();
    EXPECT_EQ(fp_options.IfLoaded(), nullptr);
  }
}

TEST(Launch, PassesOverWhatOnlyTellsTheUserHowFarItIs) {
  const std::pair<const char*, int> told[] = {
      {"Vel_GetAppDir", 1}, {"vel_StatusOpen", 1}, {"vel_Status", 1}, {"vel_Status", 3}};
  for (const auto& [member, nth] : told) {
    SCOPED_TRACE(member);
    support::Desk desk;
    desk.host->frames = 3;
    desk.host->FailAt(member, nth);
    LaunchFramePainter();
    EXPECT_EQ(TheRetrieval().cells.count, 3);
    EXPECT_EQ(desk.host->calls.back(), "Vel_SendFormObject(FPOptions, 0s)");
    // A status display that didn't open isn't told of the start, but of all that follows.
    EXPECT_EQ(std::count(desk.host->calls.begin(), desk.host->calls.end(), "vel_Status(0)"),
              std::string_view(member) == "vel_StatusOpen" ? 0 : 1);
    EXPECT_THAT(desk.host->calls, Contains(HasSubstr("vel_Status(66.")));
    EXPECT_TRUE(desk.messages.shown.empty());
  }
}

TEST(Launch, NoOtherFailureIsPassedOver) {
  for (const char* member :
       {"vel_BufferWidth", "vel_BufferHeight", "vel_GetTotalFrames", "Vel_GotoFrameAdv", "vel_GetRbuffer",
        "vel_GetGbuffer", "Vel_GetBbuffer", "Vel_GotoFrame", "vel_StatusClose", "Vel_SendFormObject"}) {
    support::Desk desk;
    desk.host->frames = 3;
    desk.host->FailAt(member, 1);
    EXPECT_THROW(LaunchFramePainter(), host::HostError) << member;
    EXPECT_FALSE(platform::BusyPointerIsOn()) << member;
  }
  support::Desk desk;
  desk.host->planes[{0, 1}] = {1, 2, 3};
  EXPECT_THROW(RetrieveFrames(), host::HostError) << "planes of another size";
  EXPECT_EQ(TheRetrieval().cells.count, 0);
}

TEST(Retrieve, KeepsTheOldStoreWhereThereIsNoNewOne) {
  support::Desk desk;
  auto& messages = desk.messages.shown;
  desk.host->frames = 3;
  RetrieveFrames();
  platform::ReadFreeMemoryFrom([] { return 0.0; });
  RetrieveFrames();
  EXPECT_TRUE(messages.empty()) << "the old frames' memory counts as free";
  desk.host->frames = 4;
  RetrieveFrames();
  platform::ReadFreeMemoryFrom(nullptr);
  EXPECT_EQ(messages.size(), 1u);
  desk.host->frames = 1;
  desk.host->width = 9;
  RetrieveFrames();
  EXPECT_EQ(TheRetrieval().FrameWidth, 9);
  EXPECT_EQ(TheRetrieval().CellCount, 1);
  desk.host->frames = 2000000000;
  desk.host->width = desk.host->height = 99999;
  RetrieveFrames();
  EXPECT_EQ(TheRetrieval().cells.count, 3);
  EXPECT_EQ(CellPlanes(TheRetrieval().cells, 2).blue[19], 22);
  EXPECT_EQ(desk.host->calls.back(), "vel_StatusClose()");
  EXPECT_THAT(messages.back().text, HasSubstr("60000000000 GB"));
  desk.host->width = -5;
  RetrieveFrames();
  frame_painter->vl_button2_Click();
  ASSERT_EQ(messages.size(), 5u);
  for (const std::size_t refusal : {3u, 4u})
    EXPECT_THAT(messages[refusal].text, HasSubstr("a size of -5 by 99999"));
}

TEST(Retrieve, KnowsTheMachinesMemory) {
  struct sysinfo machine;
  ASSERT_EQ(sysinfo(&machine), 0);
  const double most = static_cast<double>(machine.totalram + machine.totalswap) * machine.mem_unit;
  EXPECT_GT(platform::FreeMemoryBytes(), static_cast<double>(machine.freeram) * machine.mem_unit / 2);
  EXPECT_LT(platform::FreeMemoryBytes(), most);
}

TEST(Options, RefuseInWordsWhatIsNoLengthOrMoreThanTheMachineHolds) {
  support::Desk desk;
  desk.host->frames = 2;
  LaunchFramePainter();
  support::HandleEvents();
  platform::ReadFreeMemoryFrom([] { return 1.96e9; });
  const std::pair<const char*, const char*> cases[] = {
      {"many", "must be a number, and at least 1"},
      {"-3", "at least 1"},
      {"2147483648", "more than 2147483647 frames"},
      {"2000000000", "for 2000000000 frames. 4 GB would be needed, 1.9 GB are free."}};
  for (const auto& [text, words] : cases) {
    fp_options->Text1.SetText(text);
    fp_options->Command1.SetFocus();
    fp_options->Command1_Click();
    EXPECT_TRUE(fp_options->Text1.HasFocus());
    EXPECT_THAT(desk.messages.shown.back().text, HasSubstr(words));
    support::Key(fp_options->Text1.Widget(), Qt::Key_7, Qt::NoModifier, "7");
    EXPECT_EQ(fp_options->Text1.Text(), "7") << "the next key begins another";
  }
  EXPECT_EQ(desk.messages.shown.size(), 4u);
  EXPECT_TRUE(TheRoll().entries.empty());
  EXPECT_EQ(frame_painter.IfLoaded(), nullptr);
  platform::ReadFreeMemoryFrom(nullptr);
}

TEST(Options, MakeABlankRollAndBringUpThePainter) {
  support::Desk desk;
  desk.host->frames = 2;
  LaunchFramePainter();
  fp_options->Text1.SetText("24.5");
  desk.host->Take();
  fp_options->Command1.Click();
  EXPECT_THAT(desk.host->Take(),
              ElementsAre("Vel_SendFormObject(FramePainter, 0s)", "Vel_WallpaperFilename()"));
  EXPECT_EQ(TheRoll().entries, std::vector<std::int16_t>(24, -1));
  EXPECT_EQ(fp_options.IfLoaded(), nullptr);
  ASSERT_TRUE(frame_painter.IfLoaded());
  EXPECT_EQ(frame_painter->HGlide1.Range(), 2);
  EXPECT_EQ(frame_painter->HGlide2.Range(), 24);

  // Once more, with the painter open: a new retrieval, a new roll, the initial text.
  desk.host->frames = 4;
  TheRoll().entries[1] = 7;
  support::Press(frame_painter->Picture2.Widget(), {300, 40});
  EXPECT_EQ(TheStrips().FrameForKeys, 2);
  LaunchFramePainter();
  EXPECT_EQ(fp_options->Text1.Text(), "30");
  support::Key(fp_options->Text1.Widget(), Qt::Key_Return);
  EXPECT_EQ(frame_painter->HGlide1.Range(), 4);
  EXPECT_EQ(frame_painter->HGlide2.Range(), 30);
  EXPECT_EQ(TheRoll().entries, std::vector<std::int16_t>(30, -1));
  EXPECT_EQ(TheStrips().FrameForKeys, 0);
}

}  // namespace
}  // namespace painter
