// Playing the sound: the whole file while the rows follow the clock, the slice of one frame, scrubbing.
#include <atomic>
#include <cstdint>

#include "app/Form1.h"
#include "audio/sample_store.h"
#include "audio/transport.h"
#include "host/HostSession.h"
#include "platform/Application.h"
#include "platform/Clock.h"
#include "platform/UntimelyEnd.h"
#include "platform/WaveOut.h"
#include "platform/numbers.h"
#include "platform/wave_codes.h"
#include "sheet/SheetDocument.h"
#include "timeline/mappings.h"

using host::HostSession;

namespace {

constexpr int kPollMilliseconds = 2;
constexpr std::int16_t kLeftButtonAlone = 1;

/// Set on the output's thread, polled on the window's.
std::atomic<platform::Flag> WaveDoneFlag{platform::kFalse};

void WaveOutCallback(std::uint32_t, std::uint32_t message, std::uint32_t, std::uint32_t, std::uint32_t) {
  if (message == platform::WOM_DONE) WaveDoneFlag = platform::kTrue;
}

/// What the store holds is one channel, whatever the file was; its byte rate stays the file's.
platform::WaveFormatEx OutputFormat(const audio::WaveFormatBlock& file) {
  platform::WaveFormatEx format;
  format.wFormatTag = 1;
  format.nChannels = 1;
  format.nSamplesPerSec = static_cast<std::uint32_t>(file.nSamplesPerSec);
  format.nAvgBytesPerSec = static_cast<std::uint32_t>(file.nAvgBytesPerSec);
  format.nBlockAlign = file.wBitsPerSample == 16 ? 2 : 1;
  format.wBitsPerSample = static_cast<std::uint16_t>(file.wBitsPerSample);
  return format;
}

/// Plays a slice through an output opened for it alone and returns when it has ended. Without a device the
/// write fails on the empty handle, and nothing waits. A slice can last for minutes where there are few rows.
void PlayAndWait(const platform::WaveFormatEx& format, const platform::WaveHeader& header) {
  platform::WaveOutput& output = platform::WaveOut();
  platform::WaveHandle handle = 0;
  output.Open(handle, format, &WaveOutCallback, 0);
  output.PrepareHeader(handle, header);
  WaveDoneFlag = platform::kFalse;
  if (output.Write(handle, header) == platform::kWaveOk)
    while (WaveDoneFlag == platform::kFalse) {
      platform::EndIfAsked();
      platform::Sleep(kPollMilliseconds);
    }
  output.UnprepareHeader(handle, header);
  output.Close(handle);
}

}  // namespace

void Form1::vl_button1_Click() {
  PlayStartTime = static_cast<float>(platform::SecondsSinceMidnight());
  Line1.SetX(0);
  Line1.SetVisible(true);
  Timer1.SetEnabled(true);
  Grid1.SetRow(0);
  if (!CommonDialog1.FileName.empty()) platform::WaveOut().PlaySoundFile(CommonDialog1.FileName);
}

void Form1::vl_button2_Click() { Playtick(); }

void Form1::vl_button5_Click() {
  EndRun();
  platform::WaveOut().StopSound();
}

void Form1::EndRun() {
  Timer1.SetEnabled(false);
  Line1.SetVisible(false);
}

/// If following fails, the rest of this tick is skipped, but the run goes on and its end is checked in each
/// tick. If another sound was loaded since the start, the run ends with that one's length.
void Form1::Timer1_Timer() {
  const double sound_seconds = sheet::CalcTime().value_or(0);
  platform::Guarded([&] { FollowSound(sound_seconds); });
  if (audio::ElapsedSeconds(PlayStartTime, platform::SecondsSinceMidnight()) > sound_seconds) EndRun();
}

void Form1::FollowSound(double sound_seconds) {
  if (sound_seconds == 0) return;
  const float elapsed = audio::ElapsedSeconds(PlayStartTime, platform::SecondsSinceMidnight());
  const float fraction = audio::FractionOfTime(elapsed, sound_seconds);
  Line1.SetX(platform::RoundToLong(timeline::PixelOfTime(fraction, Picture2.ScaleWidth())));
  const std::int32_t frame_rows = Grid1.Rows() - 1;
  const std::int32_t row = audio::RowOfTime(fraction, frame_rows);
  if (row > 0 && row < frame_rows && Grid1.Row() < row) AdvanceToRow(row);
}

/// Repainting the row has already sent the host to the frame before this one; this call comes last and
/// counts.
void Form1::AdvanceToRow(std::int32_t row) {
  Grid1.SetFocus();
  Grid1.SetRow(row);
  PaintMouth();
  const std::int32_t frames = host::AsLong(HostSession.Call("vel_GetTotalFrames"), "vel_GetTotalFrames");
  if (row < frames && vl_button18.value()) HostSession.Call("Vel_GotoFrame", static_cast<float>(row));
}

/// Nothing else on this thread can run before the slice has ended, so the samples stay where they are.
void Form1::Playtick() {
  const audio::SampleStore& sound = audio::LoadedSound();
  const auto bytes = audio::BytesOfFrame(sound, GetCurrentTick(), Grid1.Rows() - 1);
  if (!bytes.data()) return;
  PlayAndWait(OutputFormat(sound.WaveFormat), {bytes.data(), static_cast<std::uint32_t>(bytes.size())});
}

void Form1::Picture2_MouseDown(std::int16_t button, std::int16_t /*shift*/, float x, float /*y*/) {
  const double exact_frames = sheet::CalcTime().value_or(0) * sheet::FrameRate();
  if (exact_frames == 0) return;
  if (button == kLeftButtonAlone)
    platform::Guarded(
        [&] { ScrubTo(timeline::FrameAtPress(x, exact_frames, Picture2.ScaleWidth(), Grid1.Rows())); });
  Grid1.SetFocus();
}

/// Shows the frame before it sounds, its row in the grid too: nothing is painted while the slice plays.
void Form1::ScrubTo(std::int32_t frame) {
  Grid1.SetRow(frame + 1);
  PaintMouth();
  Picture1.Refresh();
  PaintWav();
  PaintVelocity();
  Picture2.Refresh();
  Grid1.Refresh();
  if (frame != LastScrubFrame) Playtick();
  LastScrubFrame = frame;
}

void Form1::Picture2_MouseMove(std::int16_t button, std::int16_t shift, float x, float y) {
  if (button == kLeftButtonAlone) Picture2_MouseDown(button, shift, x, y);
}
