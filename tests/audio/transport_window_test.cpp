// The transport on the main window: runs by a scripted clock, slices on a scripted output, presses and drags.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

#include "app/Form1.h"
#include "audio/sample_store.h"
#include "audio/wave_reader.h"
#include "platform/Clock.h"
#include "platform/WaveOut.h"
#include "support/desk.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Log = std::vector<std::string>;

/// Writes down what is asked of it and plays a slice in no time.
struct ScriptedOutput : platform::WaveOutput {
  explicit ScriptedOutput(Log& told) : log(told) { platform::SetWaveOut(this); }
  ~ScriptedOutput() override { platform::SetWaveOut(nullptr); }

  void PlaySoundFile(const std::string& path) override { log.push_back("play " + path); }
  void StopSound() override { log.push_back("stop"); }
  platform::WaveCode Open(platform::WaveHandle& handle, const platform::WaveFormatEx& asked,
                          platform::WaveCallback to_call, std::uint32_t) override {
    format = asked;
    callback = to_call;
    handle = has_device ? 7 : 0;
    return has_device ? platform::kWaveOk : platform::kWaveNoDriver;
  }
  platform::WaveCode PrepareHeader(platform::WaveHandle, const platform::WaveHeader&) override { return 0; }
  platform::WaveCode Write(platform::WaveHandle handle, const platform::WaveHeader& header) override {
    if (handle == 0) return platform::kWaveInvalidHandle;
    const auto& sound = audio::LoadedSound();
    const void* start = sound.WaveFormat.wBitsPerSample == 8 ? static_cast<const void*>(sound.Samples8.Data())
                                                             : sound.Samples16.Data();
    const auto offset = static_cast<const char*>(header.lpData) - static_cast<const char*>(start);
    log.push_back("slice " + std::to_string(offset) + "+" + std::to_string(header.dwBufferLength));
    callback(handle, platform::WOM_OPEN, 0, 0, 0);
    callback(handle, platform::WOM_DONE, 0, 0, 0);
    return platform::kWaveOk;
  }
  platform::WaveCode UnprepareHeader(platform::WaveHandle, const platform::WaveHeader&) override { return 0; }
  platform::WaveCode Close(platform::WaveHandle handle) override {
    log.push_back("close " + std::to_string(handle));
    return 0;
  }

  Log& log;
  bool has_device = true;
  platform::WaveFormatEx format;
  platform::WaveCallback callback = nullptr;
};

/// 8000 samples a second of 8 bits, by length in bytes.
void PutSound(std::int32_t bytes) {
  auto& sound = audio::LoadedSound();
  sound.WaveFormat = {1, 1, 8000, 8000, 1, 8};
  sound.WaveDataLength = bytes;
  sound.Samples8 = audio::SampleArray<std::uint8_t>::Zeroed(bytes);
}

/// The main window with a sound in it, on a timeline of 514 pixels; rows and calls land in one log.
class TransportWindow : public testing::Test {
 protected:
  TransportWindow() {
    platform::ReadClockFrom([this] { return now; });
    desk.host->before = [this](std::string_view member) {
      Note();
      if (member == host_failure) throw host::HostError(member, "gone");
    };
  }
  ~TransportWindow() override { platform::ReadClockFrom(nullptr); }

  /// 12 frames per second.
  void Load(std::int32_t bytes, const std::string& name = "voice.wav") {
    PutSound(bytes);
    form.CommonDialog1.FileName = name;
    form.SetupGrid();
    form.Picture2.SetWidth(514);
    support::HandleEvents();
    Take();
  }

  /// What was asked of the output and of the host and where the row went, in order, since the last take.
  Log Take() { return std::exchange(log, {}); }

  void Tick(double at) {
    now = at;
    form.Timer1_Timer();
  }
  void Press(float x) { form.Picture2_MouseDown(1, 0, x, 30); }
  bool Running() { return form.Timer1.Enabled() && form.Line1.Visible(); }
  bool Idle() { return !form.Timer1.Enabled() && !form.Line1.Visible(); }

  /// Brings the host's last call into the log.
  void Note() {
    for (const std::string& call : desk.host->Take()) {
      if (call.starts_with("Vel_GotoFrame")) log.push_back("goto " + call.substr(14, call.size() - 15));
      if (call.starts_with("vel_GetTotalFrames")) log.push_back("count");
    }
  }

  double now = 1000;
  std::string host_failure;
  Log log;
  ScriptedOutput output{log};
  support::Desk desk;
  Form1& form = desk.Main();
};

TEST_F(TransportWindow, AWholeRunWalksTheRowsAndLeadsTheHost) {
  desk.host->frames = 10;
  Load(16000);  // 2 seconds: 24 frame rows
  form.Grid1.SetRow(5);
  Take();

  form.vl_button1_Click();
  EXPECT_EQ(form.Grid1.Row(), 0);
  EXPECT_EQ(form.Line1.X1(), 0);
  EXPECT_TRUE(Running());
  EXPECT_THAT(Take(), ElementsAre("count", "goto -1", "play voice.wav"));

  struct Step {
    double at;
    int row, cursor;
    Log calls;
  } const steps[] = {
      {1000.03125, 0, 8, {}},
      {1000.25, 3, 64, {"count", "goto 2", "count", "goto 3f"}},
      {1000.28125, 3, 72, {}},
      {1000.375, 4, 96, {"count", "goto 3", "count", "goto 4f"}},
      {1000.75, 9, 193, {"count", "goto 8", "count", "goto 9f"}},
      {1001.0, 12, 257, {"count", "goto 9", "count"}},  // the host's animation has ended
      {1001.96875, 23, 506, {"count", "goto 9", "count"}},
      {1002.0, 23, 514, {}},  // the last row is never reached
  };
  for (const Step& step : steps) {
    Tick(step.at);
    EXPECT_EQ(form.Grid1.Row(), step.row) << step.at;
    EXPECT_EQ(form.Line1.X1(), step.cursor) << step.at;
    EXPECT_EQ(Take(), step.calls) << step.at;
    EXPECT_TRUE(Running()) << step.at;
  }
  Tick(1002.03125);
  EXPECT_TRUE(Idle());
  EXPECT_EQ(form.Grid1.Row(), 23);
  EXPECT_THAT(Take(), IsEmpty());
}

TEST_F(TransportWindow, WithTheLockReleasedTheHostStays) {
  Load(16000);
  form.vl_button18.SetValue(false);
  form.vl_button1_Click();
  Tick(1000.25);
  EXPECT_EQ(form.Grid1.Row(), 3);
  EXPECT_THAT(Take(), ElementsAre("play voice.wav", "count", "count"));
}

TEST_F(TransportWindow, RowsOnlyMoveForward) {
  Load(16000);
  form.vl_button1_Click();
  form.Grid1.SetRow(12);
  Tick(1000.5);
  EXPECT_EQ(form.Grid1.Row(), 12);
  form.Grid1.SetRow(2);
  Tick(1000.5);
  EXPECT_EQ(form.Grid1.Row(), 6);
}

TEST_F(TransportWindow, ASecondPressStartsAnewAndStopEndsTheRun) {
  Load(16000);
  form.vl_button1_Click();
  Tick(1001.5);
  form.vl_button1_Click();
  EXPECT_EQ(form.Grid1.Row(), 0);
  Tick(1001.75);
  EXPECT_EQ(form.Grid1.Row(), 3);
  form.vl_button5_Click();
  EXPECT_TRUE(Idle());
  EXPECT_EQ(form.Grid1.Row(), 3);
  form.vl_button5_Click();
  Log sounds = Take();
  std::erase_if(sounds, [](const std::string& entry) { return entry[0] == 'c' || entry[0] == 'g'; });
  EXPECT_THAT(sounds, ElementsAre("play voice.wav", "play voice.wav", "stop", "stop"));
}

TEST_F(TransportWindow, ARunGoesOnAcrossMidnight) {
  Load(16000);
  now = 86399.5;
  form.vl_button1_Click();
  Tick(86399.75);
  EXPECT_EQ(form.Grid1.Row(), 3);
  Tick(0.5);
  EXPECT_EQ(form.Grid1.Row(), 12);
  EXPECT_TRUE(Running());
  Tick(1.53125);
  EXPECT_TRUE(Idle());
}

TEST_F(TransportWindow, AHostThatFailsCostsTheTickButNotTheRun) {
  Load(16000);
  form.vl_button1_Click();
  host_failure = "vel_GetTotalFrames";
  Tick(1000.25);
  EXPECT_TRUE(Running());
  host_failure.clear();
  Take();
  Tick(1000.5);
  EXPECT_THAT(Take(), ElementsAre("count", "goto 5", "count", "goto 6f"));
  host_failure = "vel_GetTotalFrames";
  Tick(1002.03125);
  EXPECT_TRUE(Idle());
}

TEST_F(TransportWindow, WithoutASoundTheCursorOnlyFlashes) {
  form.vl_button1_Click();
  EXPECT_TRUE(Running());
  Tick(now);
  EXPECT_TRUE(Running());
  Tick(1000.03125);
  EXPECT_TRUE(Idle());
  Log sounds = Take();
  EXPECT_THAT(sounds, testing::Not(testing::Contains(testing::StartsWith("play"))));
}

TEST_F(TransportWindow, AShorterSoundLoadedMeanwhileEndsTheRunAtItsOwnEnd) {
  Load(16000);
  form.vl_button1_Click();
  Tick(1000.25);
  Load(4000, "short.wav");
  Tick(1000.25);
  EXPECT_EQ(form.Grid1.Row(), 3);
  Tick(1000.53125);
  EXPECT_TRUE(Idle());
  EXPECT_THAT(Take(), testing::Not(testing::Contains("stop"))) << "the sound that was started plays on";
}

TEST_F(TransportWindow, TheCurrentFramePlaysAsOneChannelInTheFormOfTheFile) {
  auto& sound = audio::LoadedSound();
  sound.WaveFormat = {17, 2, 11025, 44100, 4, 16};
  sound.WaveDataLength = 1000;
  sound.Samples16 = audio::SampleArray<std::int16_t>::Zeroed(1000);
  form.Grid1.SetRows(4);
  form.Grid1.SetRow(2);
  Take();
  form.vl_button2_Click();
  EXPECT_THAT(Take(), ElementsAre("slice 332+333", "close 7"));
  EXPECT_EQ(output.format.wFormatTag, 1);
  EXPECT_EQ(output.format.nChannels, 1);
  EXPECT_EQ(output.format.nSamplesPerSec, 11025U);
  EXPECT_EQ(output.format.nAvgBytesPerSec, 44100U);
  EXPECT_EQ(output.format.nBlockAlign, 2);
  EXPECT_EQ(output.format.wBitsPerSample, 16);
}

TEST_F(TransportWindow, NothingPlaysOnTheHeaderRowWithoutFramesOrWithoutADevice) {
  Load(16000);
  form.vl_button2_Click();
  EXPECT_THAT(Take(), IsEmpty());
  form.Grid1.SetRow(1);
  output.has_device = false;
  Take();
  form.vl_button2_Click();
  EXPECT_THAT(Take(), ElementsAre("close 0"));
  Load(100);  // 0.15 frames
  EXPECT_EQ(form.Grid1.Rows(), 1);
  form.vl_button2_Click();
  EXPECT_THAT(Take(), IsEmpty());
}

TEST_F(TransportWindow, APressSelectsShowsAndSoundsItsFrame) {
  Load(20000);  // 2.5 seconds: 30 frames of 666.67 bytes
  Press(171);
  EXPECT_EQ(form.Grid1.Row(), 10);
  EXPECT_TRUE(form.Grid1.HasFocus());
  // The row's move and the press itself both repaint, and both before the sound.
  EXPECT_THAT(Take(), ElementsAre("count", "goto 9", "count", "goto 9", "slice 6000+667", "close 7"));
  Press(171);
  EXPECT_THAT(Take(), ElementsAre("count", "goto 9")) << "it repaints, and plays nothing";
}

TEST_F(TransportWindow, ADragSoundsEachNewFrameAndStopsAtTheSheetsEnds) {
  Load(20000);
  std::vector<int> rows;
  for (const float x : {0.0F, 100.0F, 101.0F, 9000.0F, 9001.0F, -50.0F}) {
    form.Picture2_MouseMove(1, 0, x, 30);
    rows.push_back(form.Grid1.Row());
  }
  EXPECT_THAT(rows, ElementsAre(1, 6, 6, 30, 30, 1));
  Log slices = Take();
  std::erase_if(slices, [](const std::string& entry) { return entry[0] != 's'; });
  // Frame 0 is where the last scrub stands at first, so it is silent then.
  EXPECT_THAT(slices, ElementsAre("slice 3333+667", "slice 19333+667", "slice 0+667"));
  form.Picture2_MouseMove(0, 0, 300, 30);
  form.Picture2_MouseMove(3, 0, 300, 30);
  EXPECT_EQ(form.Grid1.Row(), 1);
}

TEST_F(TransportWindow, TheLastScrubbedFrameOutlivesALoad) {
  Load(20000);
  Press(171);
  Load(20000);
  Press(171);
  EXPECT_THAT(Take(), testing::Not(testing::Contains(testing::StartsWith("slice"))));
}

TEST_F(TransportWindow, APressGivesTheGridTheFocusOnlyOverASound) {
  form.List1.SetFocus();
  Press(100);
  EXPECT_TRUE(form.List1.HasFocus()) << "no sound";
  Load(20000);
  form.List1.SetFocus();
  form.Picture2_MouseDown(2, 0, 171, 30);
  EXPECT_TRUE(form.Grid1.HasFocus());
  EXPECT_EQ(form.Grid1.Row(), 0);
  EXPECT_THAT(Take(), IsEmpty());
}

TEST_F(TransportWindow, APressThatFailsGoesOnAtTheFocus) {
  Load(100);  // a sound, but no frame row
  form.List1.SetFocus();
  Press(100);
  EXPECT_EQ(form.Grid1.Row(), 0);
  EXPECT_TRUE(form.Grid1.HasFocus());

  Load(20000);
  form.List1.SetFocus();
  host_failure = "vel_GetTotalFrames";
  Press(171);
  EXPECT_TRUE(form.Grid1.HasFocus());
  host_failure.clear();
  Press(171);
  EXPECT_THAT(Take(), testing::Contains("slice 6000+667")) << "the failed press has not taken the frame";
}

/// Reads a wave file from memory as the program does, one channel of it.
void LoadWave(const std::string& bytes) {
  audio::MemorySource source(bytes);
  auto read = audio::ReadWave(source, audio::LoadedSound());
  ASSERT_TRUE(read.sound);
  if (read.sound->WaveFormat.nChannels == 2) audio::ReduceToFirstChannel(*read.sound);
  audio::LoadedSound() = *read.sound;
}

/// Bytes that are never silent.
std::string Noise(std::size_t count, int seed) {
  std::string bytes;
  for (std::size_t i = 0; i < count; ++i)
    bytes += static_cast<char>(1 + (i * 7 + static_cast<std::size_t>(seed)) % 126);
  return bytes;
}

TEST(PlaytickThroughTheDevice, JustTheFramesBytesLeave) {
  const std::string path = support::ScratchFolder() + "/left.raw";
  setenv("SDL_AUDIODRIVER", "disk", 1);
  setenv("SDL_DISKAUDIOFILE", path.c_str(), 1);
  support::Desk desk;
  Form1& form = desk.Main();

  const std::string mono = Noise(1000, 0), other = Noise(1000, 50);
  std::string two_at_8, two_at_16;
  for (std::size_t i = 0; i < 1000; ++i) two_at_8 += {mono[i], other[i]};
  for (std::size_t i = 0; i < 1000; i += 2) two_at_16 += {mono[i], mono[i + 1], other[i], other[i + 1]};
  const std::string at_8 = support::WaveBytes(8, 8000, mono), at_16 = support::WaveBytes(16, 8000, mono);
  const std::string stereo_8 = support::WaveBytes(8, 8000, two_at_8, 2);
  const std::string stereo_16 = support::WaveBytes(16, 8000, two_at_16, 2);

  struct Case {
    const std::string& wave;
    int frame_rows, row;
    std::size_t start, length;
    char silence;
  } const cases[] = {
      {at_8, 3, 1, 0, 333, '\x80'},       {at_8, 3, 3, 667, 333, '\x80'},    {at_8, 4, 4, 750, 250, '\x80'},
      {at_16, 3, 2, 332, 333, '\0'},      {at_16, 3, 3, 666, 333, '\0'},     {at_16, 1, 1, 0, 1000, '\0'},
      {stereo_8, 3, 2, 333, 333, '\x80'}, {stereo_16, 3, 2, 332, 333, '\0'},
  };
  for (const Case& c : cases) {
    LoadWave(c.wave);
    form.Grid1.SetRows(c.frame_rows + 1);
    form.Grid1.SetRow(c.row);
    auto output = platform::MakeWaveOutput();
    platform::SetWaveOut(output.get());
    form.Playtick();
    platform::SetWaveOut(nullptr);
    output.reset();
    std::string left = support::ReadWhole(path);
    left.erase(0, left.find_first_not_of(c.silence));
    left.erase(left.find_last_not_of(c.silence) + 1);
    EXPECT_EQ(left, mono.substr(c.start, c.length)) << "row " << c.row << " of " << c.frame_rows;
  }
}

}  // namespace
