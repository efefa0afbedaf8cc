#include "platform/WaveOut.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <mutex>
#include <thread>

#include "platform/SliceOutput.h"
#include "platform/SoundPlayer.h"
#include "support/desk.h"

namespace platform {
namespace {

using Bytes = std::vector<std::uint8_t>;
using std::chrono::milliseconds;

// Sound that is nowhere silent, so that silence around it can be told from it.
Bytes Noise(std::size_t count) {
  Bytes bytes(count);
  for (std::size_t i = 0; i < count; ++i) bytes[i] = static_cast<std::uint8_t>(1 + i * 7 % 126);
  return bytes;
}

WaveFormatEx Mono(std::uint32_t rate, std::uint16_t bits) {
  // The byte rate of a two-channel file.
  return {1, 1, rate, rate * bits / 4, static_cast<std::uint16_t>(bits / 8), bits, 0};
}

bool WaitUntil(const std::function<bool()>& condition, milliseconds limit = milliseconds(5000)) {
  const auto end = std::chrono::steady_clock::now() + limit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(milliseconds(1));
  }
  return true;
}

// What a callback was told.
std::atomic<int> done_count{0};
std::atomic<std::thread::id> done_thread;
void Note(std::uint32_t, std::uint32_t message, std::uint32_t, std::uint32_t, std::uint32_t) {
  if (message != WOM_DONE) return;
  done_thread = std::this_thread::get_id();
  ++done_count;
}

// A device whose buffers are asked for by the test.
struct FakeMachine {
  struct Device : AudioDevice {
    explicit Device(FakeMachine& owner) : machine(owner) {}
    ~Device() override {
      const std::lock_guard lock(machine.mutex);
      machine.fill = nullptr;
    }
    void Start() override { machine.started = true; }
    int BuffersBehind() const override { return machine.buffers_behind; }
    FakeMachine& machine;
  };

  AudioDeviceOpener Opener() {
    return [this](const AudioFormat& opened, FillBuffer filler) -> std::unique_ptr<AudioDevice> {
      const std::lock_guard lock(mutex);
      EXPECT_EQ(fill, nullptr) << "opened beside another";
      ++open_count;
      started = false;
      format = opened;
      fill = std::move(filler);
      return std::make_unique<Device>(*this);
    };
  }
  bool IsOpen() {
    const std::lock_guard lock(mutex);
    return fill != nullptr;
  }
  Bytes Ask(std::size_t count) {
    const std::lock_guard lock(mutex);
    Bytes buffer(count, 99);
    if (fill && started) fill(buffer);
    return buffer;
  }

  int buffers_behind = 0;
  std::atomic<bool> started{false};
  std::atomic<int> open_count{0};
  std::mutex mutex;
  AudioFormat format;
  FillBuffer fill;
};

// A slice output on a fake machine, opened, its slice written.
struct WrittenSlice {
  WrittenSlice(FakeMachine& machine, SliceOutput::Patience patience, const WaveFormatEx& format,
               const Bytes& bytes)
      : output(machine.Opener(), patience), header{bytes.data(), static_cast<std::uint32_t>(bytes.size())} {
    done_count = 0;
    EXPECT_EQ(output.Open(handle, format, &Note, 0), kWaveOk);
    EXPECT_EQ(output.Prepare(handle, header), kWaveOk);
    EXPECT_EQ(output.Write(handle, header), kWaveOk);
  }
  SliceOutput output;
  WaveHeader header;
  WaveHandle handle = 0;
};

TEST(SliceOutput, IsDoneWhenTheLastBufferHasBeenHeardAndNotBefore) {
  FakeMachine machine;
  machine.buffers_behind = 2;
  Bytes bytes = {1, 2, 3, 4, 5};
  WrittenSlice slice(machine, {}, Mono(8000, 8), bytes);
  EXPECT_EQ(machine.Ask(4), (Bytes{1, 2, 3, 4}));
  EXPECT_EQ(machine.Ask(4), (Bytes{5, 128, 128, 128}));
  machine.Ask(4);
  machine.Ask(4);
  EXPECT_EQ(done_count, 0);
  EXPECT_EQ(slice.output.Unprepare(slice.handle, slice.header), kWaveStillPlaying);
  EXPECT_EQ(slice.output.Close(slice.handle), kWaveStillPlaying);
  machine.Ask(4);
  EXPECT_EQ(done_count, 1);
  EXPECT_EQ(slice.output.Unprepare(slice.handle, slice.header), kWaveOk);
  EXPECT_EQ(machine.Ask(4), (Bytes{128, 128, 128, 128}));
  EXPECT_EQ(done_count, 1);
}

TEST(SliceOutput, KeepsTheDeviceForTheNextSliceOfTheFormat) {
  FakeMachine machine;
  WaveHandle handle = 0;
  SliceOutput output(machine.Opener(), {.linger = milliseconds(60)});
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(output.Open(handle, Mono(8000, 8), &Note, 0), kWaveOk);
    WaveHandle second = 77;
    EXPECT_EQ(output.Open(second, Mono(8000, 8), &Note, 0), kWaveAllocated);
    EXPECT_EQ(second, 0u);
    EXPECT_EQ(output.Close(handle), kWaveOk);
  }
  EXPECT_EQ(machine.open_count, 1);
  ASSERT_EQ(output.Open(handle, Mono(22050, 16), &Note, 0), kWaveOk);
  EXPECT_EQ(machine.open_count, 2);
  EXPECT_EQ(machine.format, (AudioFormat{22050, 1, SampleForm::Signed16}));
  std::this_thread::sleep_for(milliseconds(150));
  EXPECT_TRUE(machine.IsOpen()) << "in use";
  EXPECT_EQ(output.Close(handle), kWaveOk);
  EXPECT_TRUE(WaitUntil([&] { return !machine.IsOpen(); }));
}

TEST(SliceOutput, ADeviceThatStallsIsGivenUp) {
  FakeMachine machine;
  Bytes bytes = Noise(80);  // 10 ms
  WrittenSlice slice(machine, {.stall = milliseconds(50)}, Mono(8000, 8), bytes);
  EXPECT_TRUE(WaitUntil([] { return done_count == 1; }));
  EXPECT_EQ(machine.Ask(2), (Bytes{128, 128})) << "the bytes are no longer read";
  EXPECT_EQ(slice.output.Close(slice.handle), kWaveOk);
}

TEST(SliceOutput, WithoutADeviceEverythingFailsAndNothingCalls) {
  SliceOutput output([](const AudioFormat&, FillBuffer) { return nullptr; }, {});
  done_count = 0;
  WaveHandle handle = 77;
  const Bytes bytes = Noise(80);
  const WaveHeader header{bytes.data(), 80};
  EXPECT_EQ(output.Open(handle, Mono(8000, 8), &Note, 0), kWaveNoDriver);
  EXPECT_EQ(handle, 0u);
  EXPECT_EQ(output.Prepare(handle, header), kWaveInvalidHandle);
  EXPECT_EQ(output.Write(handle, header), kWaveInvalidHandle);
  EXPECT_EQ(output.Unprepare(handle, header), kWaveInvalidHandle);
  EXPECT_EQ(output.Close(handle), kWaveInvalidHandle);
  EXPECT_EQ(done_count, 0);
}

TEST(SliceOutput, RefusesWhatItCannotPlay) {
  FakeMachine machine;
  SliceOutput output(machine.Opener(), {});
  WaveHandle handle = 0;
  WaveFormatEx compressed = Mono(8000, 8);
  compressed.wFormatTag = 17;
  EXPECT_EQ(output.Open(handle, compressed, &Note, 0), kWaveBadFormat);
  EXPECT_EQ(output.Open(handle, Mono(8000, 24), &Note, 0), kWaveBadFormat);
  ASSERT_EQ(output.Open(handle, Mono(8000, 8), &Note, 0), kWaveOk);
  const Bytes bytes = Noise(80);
  const WaveHeader header{bytes.data(), 80}, other{bytes.data(), 80}, nowhere{nullptr, 80};
  EXPECT_EQ(output.Prepare(handle, header), kWaveOk);
  EXPECT_EQ(output.Write(handle, other), kWaveUnprepared);
  EXPECT_EQ(output.Prepare(handle, nowhere), kWaveOk);
  EXPECT_EQ(output.Write(handle, nowhere), kWaveUnprepared);
}

// The file that the disk driver left, without the silent buffers before the sound.
Bytes LeftBehind(const std::string& path, std::size_t buffer_bytes, std::uint8_t silence) {
  const std::string all = support::ReadWhole(path);
  Bytes bytes(all.begin(), all.end());
  while (bytes.size() >= buffer_bytes && bytes.front() == silence)
    bytes.erase(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(buffer_bytes));
  return bytes;
}

void UseDiskDriver(const std::string& path) {
  setenv("SDL_AUDIODRIVER", "disk", 1);
  setenv("SDL_DISKAUDIOFILE", path.c_str(), 1);
}

void ExpectSoundThenSilence(const Bytes& left, const Bytes& sound, std::uint8_t silence) {
  ASSERT_GE(left.size(), sound.size());
  const auto end = left.begin() + static_cast<std::ptrdiff_t>(sound.size());
  EXPECT_TRUE(std::equal(sound.begin(), sound.end(), left.begin()));
  EXPECT_TRUE(std::all_of(end, left.end(), [=](std::uint8_t byte) { return byte == silence; }));
}

TEST(WaveOut, JustTheBytesOfTheSliceLeave) {
  struct Case {
    std::uint32_t rate;
    std::uint16_t bits;
    std::size_t offset, length, buffer_bytes;
    std::uint8_t silence;
  } const cases[] = {
      {8000, 8, 333, 333, 32, 128},   {8000, 8, 0, 64, 32, 128},     {11025, 16, 332, 333, 128, 0},
      {44100, 16, 666, 2939, 512, 0}, {22050, 8, 7, 1837, 128, 128}, {8000, 16, 10, 1, 64, 0},
  };
  const Bytes sound = Noise(4000);
  for (const Case& c : cases) {
    const auto path = support::ScratchFolder() + "/slice.raw";
    UseDiskDriver(path);
    done_count = 0;
    auto output = MakeWaveOutput();
    const WaveHeader header{sound.data() + c.offset, static_cast<std::uint32_t>(c.length)};
    WaveHandle handle = 0;
    ASSERT_EQ(output->Open(handle, Mono(c.rate, c.bits), &Note, 0), kWaveOk);
    ASSERT_EQ(output->PrepareHeader(handle, header), kWaveOk);
    ASSERT_EQ(output->Write(handle, header), kWaveOk);
    ASSERT_TRUE(WaitUntil([] { return done_count == 1; }));
    EXPECT_NE(done_thread.load(), std::this_thread::get_id());
    EXPECT_EQ(output->UnprepareHeader(handle, header), kWaveOk);
    EXPECT_EQ(output->Close(handle), kWaveOk);
    output.reset();
    const Bytes slice(sound.begin() + static_cast<std::ptrdiff_t>(c.offset),
                      sound.begin() + static_cast<std::ptrdiff_t>(c.offset + c.length));
    SCOPED_TRACE(c.rate);
    ExpectSoundThenSilence(LeftBehind(path, c.buffer_bytes, c.silence), slice, c.silence);
  }
}

std::string WaveFile(const std::string& name, int channels, const Bytes& data) {
  return support::WriteScratch(name,
                               support::WaveBytes(16, 8000, std::string(data.begin(), data.end()), channels));
}

// Asks until something sounds, and then for as much as was wanted.
Bytes AskForSound(FakeMachine& machine, std::size_t count) {
  Bytes heard;
  WaitUntil([&] {
    heard = machine.Ask(2);
    return heard != Bytes{99, 99} && heard != Bytes{0, 0};
  });
  while (heard.size() < count) {
    const Bytes next = machine.Ask(2);
    if (next == Bytes{0, 0}) std::this_thread::sleep_for(milliseconds(1));
    if (next != Bytes{0, 0}) heard.insert(heard.end(), next.begin(), next.end());
  }
  return heard;
}

TEST(SoundPlayer, AFileComesThroughWholeInItsChannels) {
  FakeMachine machine;
  const Bytes data = Noise(40'000);  // more than is read ahead
  const auto path = WaveFile("two channels \xC3\xA4.wav", 2, data);
  SoundPlayer player(machine.Opener());
  player.Play(path);
  EXPECT_EQ(AskForSound(machine, data.size()), data);
  EXPECT_EQ(machine.format, (AudioFormat{8000, 2, SampleForm::Signed16}));
  EXPECT_EQ(machine.Ask(4), (Bytes{0, 0, 0, 0}));
}

TEST(SoundPlayer, ANewSoundReplacesTheOldAndStopEndsIt) {
  FakeMachine machine;
  const auto low = WaveFile("low.wav", 1, Bytes(40'000, 1));
  const auto high = WaveFile("high.wav", 1, Bytes(40'000, 2));
  SoundPlayer player(machine.Opener());
  player.Play(low);
  EXPECT_EQ(AskForSound(machine, 4), (Bytes{1, 1, 1, 1}));
  player.Play(high);
  EXPECT_EQ(AskForSound(machine, 40'000), Bytes(40'000, 2));
  player.Play(low);
  AskForSound(machine, 4);
  player.Stop();
  EXPECT_EQ(machine.Ask(2), (Bytes{0, 0}));
  std::this_thread::sleep_for(milliseconds(50));
  EXPECT_EQ(machine.Ask(2), (Bytes{0, 0}));
}

TEST(SoundPlayer, WhatIsNoSoundIsSilence) {
  FakeMachine machine;
  const std::string text = support::WriteScratch("text.wav", "no sound at all");
  const auto good = WaveFile("good.wav", 1, Bytes(4000, 1));
  SoundPlayer player(machine.Opener());
  for (const std::string& path : {std::string("/nowhere/gone.wav"), std::string("/"), text}) {
    player.Play(path);
    std::this_thread::sleep_for(milliseconds(20));
    EXPECT_EQ(machine.open_count, 0) << path;
  }
  player.Play(good);
  EXPECT_EQ(AskForSound(machine, 4000), Bytes(4000, 1));
}

TEST(WaveOut, AFileLeavesThroughTheDevice) {
  const Bytes data = Noise(6000);
  const auto sound = WaveFile("whole.wav", 1, data);
  const auto path = support::ScratchFolder() + "/whole.raw";
  UseDiskDriver(path);
  auto output = MakeWaveOutput();
  output->PlaySoundFile(sound);
  std::this_thread::sleep_for(milliseconds(1000));  // 375 ms of sound
  output.reset();
  ExpectSoundThenSilence(LeftBehind(path, 64, 0), data, 0);
}

}  // namespace
}  // namespace platform
