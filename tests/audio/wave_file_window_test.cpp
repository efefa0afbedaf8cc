// Opening a wave file from the menu, and what the sample info shows.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "app/Form1.h"
#include "audio/Form2.h"
#include "audio/sample_store.h"
#include "platform/Application.h"
#include "sheet/Form3.h"
#include "support/desk.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class WaveFile : public testing::Test {
 protected:
  void Open(const std::string& bytes) {
    desk.files.paths = {support::WriteScratch("voice.wav", bytes)};
    form.OpenWave.Click();
  }
  std::vector<std::string> Info() {
    form.Sampleinfo.Click();
    return {form2->Text1.Text(), form2->Text2.Text(), form2->Text3.Text(),
            form2->Text4.Text(), form2->Text5.Text(), form2->Text6.Text()};
  }

  support::Desk desk;
  Form1& form = desk.Main();
};

TEST_F(WaveFile, ANewSoundMakesANewSheet) {
  Open(support::WaveBytes(8, 1000, std::string(2000, '\x80')));
  EXPECT_EQ(form.Grid1.Rows(), 25);
  form.Grid1.SetRow(3);
  form.Grid1.SetCol(2);
  form.Grid1.SetText("gone soon");
  Open(support::WaveBytes(16, 1000, std::string(2000, 'x')));
  EXPECT_EQ(form.Grid1.Rows(), 13);
  EXPECT_EQ(form.Grid1.TextMatrix(3, 2), "");
  EXPECT_EQ(form.Grid1.TextMatrix(12, 0), "11");
  EXPECT_THAT(desk.messages.Texts(), IsEmpty());
  EXPECT_EQ(desk.files.asked[0].title, "Select a wave file");
  EXPECT_EQ(desk.files.asked[0].filter, "Wave|*.wav");
}

TEST_F(WaveFile, MoreThanOneChannelIsTold) {
  Open(support::WaveBytes(8, 1000, std::string(4000, 'a'), 2));
  EXPECT_EQ(form.Grid1.Rows(), 25) << "two seconds of pairs at 12 fps";
  Open(support::WaveBytes(16, 1000, std::string(6000, 'a'), 3));
  EXPECT_EQ(form.Grid1.Rows(), 37) << "three channels count as one";
  EXPECT_THAT(desk.messages.Texts(),
              ElementsAre("Stereo sample converted to mono.", "Stereo sample converted to mono."));
  EXPECT_THAT(Info(), ElementsAre("1", "3", "1000", "6000", "6", "16"));
}

TEST_F(WaveFile, ADepthThatGivesNoRowsIsTold) {
  Open(support::WaveBytes(8, 1000, std::string(6000, 'a')));
  Open(support::WaveBytes(24, 1000, std::string(6000, 'a')));
  EXPECT_EQ(form.Grid1.Rows(), 1);
  ASSERT_EQ(desk.messages.shown.size(), 1u);
  EXPECT_THAT(desk.messages.shown[0].text, HasSubstr("24 bits per sample"));
  const std::string sheet = support::ScratchFolder() + "/deep.exp";
  desk.files.paths = {sheet, sheet};
  form.MenuSave.Click();
  form.MenuOpen.Click();
  ASSERT_EQ(desk.messages.shown.size(), 2u);
  EXPECT_EQ(desk.messages.shown[1].text, desk.messages.shown[0].text);
  EXPECT_THAT(form.RescueSheet(), HasSubstr("is saved in " + sheet)) << "without the sound before";
  std::string floats = support::WaveBytes(32, 1000, std::string(8000, 'a'));
  floats[20] = 3;
  Open(floats);
  EXPECT_THAT(desk.messages.shown.back().text, HasSubstr("32 bits per sample, as floating-point numbers"));
}

TEST_F(WaveFile, ARefusedFileLeavesSoundAndSheet) {
  Open(support::WaveBytes(8, 1000, std::string(2000, 'a')));
  form.Grid1.SetRow(2);
  form.Grid1.SetText("kept");
  const std::string stereo = support::WaveBytes(16, 44100, std::string(64, 'a'), 2);
  Open(stereo.substr(0, 36));
  Open(support::WaveBytes(8, 1, std::string(1'000'000, 'a')));
  form3->Text7.SetText("-12");
  Open(stereo);
  EXPECT_THAT(desk.messages.Texts(),
              ElementsAre("Can't find data chunk",
                          "A frame rate of 12 gives more than the 10000000 rows that a sheet can have.",
                          "A frame rate of -12 can't be used: it must not be negative."));
  EXPECT_EQ(form.Grid1.Rows(), 25);
  EXPECT_EQ(form.Grid1.Text(), "kept");
  EXPECT_EQ(audio::LoadedSound().WaveDataLength, 2000);
  EXPECT_THAT(Info(), ElementsAre("1", "1", "1000", "1000", "1", "8"));
}

TEST_F(WaveFile, TheInfoKeepsTheSoundThatItOpenedWith) {
  EXPECT_THAT(Info(), ElementsAre("0", "0", "0", "0", "0", "0"));
  Open(support::WaveBytes(8, 1000, "abcd"));
  EXPECT_EQ(Info()[2], "0");
  form2.Unload();
  EXPECT_EQ(Info()[2], "1000");
}

TEST_F(WaveFile, TheRecorderIsStartedByNameWithoutArguments) {
  const std::string name =
      support::WriteScratch("Wavecatcher_pm.exe", "#!/bin/sh\necho \"$#\" > started; mv started ended\n");
  const std::string ended = support::ScratchFolder() + "/ended";
  std::filesystem::permissions(name, std::filesystem::perms::owner_all);
  // The working folder is the host's, which is searched too.
  form.RecordAudio.Click();
  for (int i = 0; i < 5000 && !std::filesystem::exists(ended); ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  EXPECT_EQ(support::ReadWhole(ended), "0\n");
  EXPECT_TRUE(platform::StartProgram("true"));
  setenv("GTEST_FILTER", "none", 1);
  const auto beside = std::filesystem::read_symlink("/proc/self/exe").filename().string();
  EXPECT_TRUE(platform::StartProgram(beside)) << "in the program's own folder";
  EXPECT_FALSE(platform::StartProgram("no program has this name"));
  EXPECT_THAT(desk.messages.Texts(), IsEmpty());
}

}  // namespace
