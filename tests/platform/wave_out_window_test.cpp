#include "platform/WaveOut.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <future>
#include <mutex>
#include <thread>

#include "platform/AudioDevice.h"
#include "platform/Capture.h"
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

bool WaitUntil(const std::function<bool()>& condition) {
  for (int left = 5000; left > 0 && !condition(); --left) std::this_thread::sleep_for(milliseconds(1));
  return condition();
}

std::atomic<int> done_count{0};
std::atomic<std::uint64_t> told{0};  // a digit for each message: 1 opened, 2 closed, 3 done
void Note(std::uint32_t handle, std::uint32_t message, std::uint32_t instance, std::uint32_t first,
          std::uint32_t second) {
  told = told * 10 + (message - WOM_OPEN + 1) + 1000 * (handle == 0 || instance != 5 || first + second != 0);
  if (message == WOM_DONE) ++done_count;
}

struct FakeMachine {
  struct Device : AudioDevice {
    explicit Device(FakeMachine& owner) : machine(owner) {}
    ~Device() override {
      const std::lock_guard lock(machine.mutex);
      machine.fill = nullptr;
      machine.open = false;
    }
    void Start() override { machine.started = true; }
    int BuffersBehind() const override { return machine.buffers_behind; }
    FakeMachine& machine;
  };

  AudioDeviceOpener Opener() {
    return [this](const AudioFormat& opened, FillBuffer filler) {
      std::this_thread::sleep_for(opening_takes);
      const std::lock_guard lock(mutex);
      EXPECT_EQ(fill, nullptr) << "opened beside another";
      started = false;
      open = true;
      ++open_count;
      format = opened;
      fill = std::move(filler);
      return std::make_unique<Device>(*this);
    };
  }
  Bytes Ask(std::size_t count) {
    const std::lock_guard lock(mutex);
    Bytes buffer(count, 99);
    if (fill && started) fill(buffer);
    return buffer;
  }

  int buffers_behind = 0;
  milliseconds opening_takes{0};
  std::atomic<bool> started{false}, open{false};
  std::atomic<int> open_count{0};
  std::mutex mutex;
  AudioFormat format;
  FillBuffer fill;
};

struct WrittenSlice {
  WrittenSlice(FakeMachine& machine, SliceOutput::Patience patience, const Bytes& bytes)
      : output(machine.Opener(), patience), header{bytes.data(), static_cast<std::uint32_t>(bytes.size())} {
    done_count = 0;
    EXPECT_EQ(output.Open(handle, Mono(8000, 8), &Note, 5), kWaveOk);
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
  told = 0;
  // At its end it waits for its thread, and not for the patience to end.
  WrittenSlice slice(machine, {.open = std::chrono::hours(1)}, bytes);
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
  EXPECT_EQ(slice.output.Write(slice.handle, slice.header), kWaveUnprepared);
  EXPECT_EQ(slice.output.Close(slice.handle), kWaveOk);
  EXPECT_EQ(told, 132U);
}

TEST(SliceOutput, KeepsTheDeviceForTheNextSliceOfTheFormat) {
  FakeMachine machine;
  WaveHandle handle = 0;
  SliceOutput output(machine.Opener(), {.linger = milliseconds(60)});
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(output.Open(handle, Mono(8000, 8), &Note, 5), kWaveOk);
    WaveHandle second = 77;
    EXPECT_EQ(output.Open(second, Mono(8000, 8), &Note, 5), kWaveAllocated);
    EXPECT_EQ(second, 0u);
    EXPECT_EQ(output.Close(handle - 1), kWaveInvalidHandle) << "the one before";
    EXPECT_EQ(output.Close(handle), kWaveOk);
  }
  EXPECT_EQ(machine.open_count, 1);
  machine.opening_takes = milliseconds(100);  // longer than the one before is kept
  WaveFormatEx stereo = Mono(22050, 16);
  stereo.nChannels = 2;
  ASSERT_EQ(output.Open(handle, stereo, &Note, 5), kWaveOk);
  EXPECT_EQ(machine.open_count, 2);
  EXPECT_EQ(machine.format, (AudioFormat{22050, 2, SampleForm::Signed16}));
  EXPECT_EQ(output.Close(handle), kWaveOk);
  ASSERT_EQ(output.Open(handle, stereo, &Note, 5), kWaveOk);
  std::this_thread::sleep_for(milliseconds(150));
  EXPECT_TRUE(machine.open) << "in use";
  EXPECT_EQ(output.Close(handle), kWaveOk);
  EXPECT_TRUE(WaitUntil([&] { return !machine.open; }));
  const auto used = std::clock();
  std::this_thread::sleep_for(milliseconds(200));
  EXPECT_LT(std::clock() - used, CLOCKS_PER_SEC / 50) << "nothing is left to do";
  EXPECT_EQ(output.Open(handle, Mono(22050, 16), &Note, 0), kWaveOk);
  EXPECT_EQ(machine.open_count, 3);
}

TEST(SliceOutput, ADeviceThatStallsIsGivenUp) {
  FakeMachine machine;
  Bytes bytes = Noise(80);  // 10 ms
  WrittenSlice slice(machine, {.linger = std::chrono::hours(1), .stall = milliseconds(50)}, bytes);
  EXPECT_TRUE(WaitUntil([] { return done_count == 1; }));
  EXPECT_EQ(machine.Ask(2), (Bytes{128, 128})) << "the bytes are no longer read";
  EXPECT_EQ(slice.output.Close(slice.handle), kWaveOk);
  EXPECT_TRUE(WaitUntil([&] { return !machine.open; }));
  EXPECT_EQ(slice.output.Open(slice.handle, Mono(8000, 8), &Note, 5), kWaveOk);
  EXPECT_EQ(slice.output.Close(slice.handle), kWaveOk);
  std::this_thread::sleep_for(milliseconds(50));
  EXPECT_TRUE(machine.open) << "the next one, which hasn't stalled, is kept";
}

milliseconds TimeOf(const std::function<void()>& routine) {
  const auto start = std::chrono::steady_clock::now();
  routine();
  return std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now() - start);
}

TEST(SliceOutput, ASoundServerThatHangsCostsOnePatienceAndNoMore) {
  constexpr milliseconds patience{300};
  FakeMachine machine, late;
  std::promise<void> gate;
  const auto behind_gate = [opened = gate.get_future().share()](FakeMachine& of) {
    return [opened, open = of.Opener()](const AudioFormat& format, FillBuffer fill) {
      opened.wait();
      return open(format, std::move(fill));
    };
  };
  SliceOutput output(behind_gate(machine), {.linger = milliseconds(10), .open = patience});
  WaveHandle handle = 77;
  const auto open = [&] { return output.Open(handle, Mono(8000, 8), &Note, 5); };
  EXPECT_GE(TimeOf([&] { EXPECT_EQ(open(), kWaveNoDriver); }), patience);
  EXPECT_EQ(handle, 0u);
  EXPECT_LT(TimeOf([&] { EXPECT_EQ(open(), kWaveNoDriver); }), patience);
  {
    SliceOutput ended(behind_gate(late), {.open = milliseconds(50)});
    EXPECT_EQ(ended.Open(handle, Mono(8000, 8), &Note, 5), kWaveNoDriver);
  }
  gate.set_value();
  EXPECT_TRUE(WaitUntil([&] { return machine.open_count == 1 && !machine.open; })) << "it came too late";
  EXPECT_TRUE(WaitUntil([&] { return handle != 0 || open() == kWaveOk; })) << "the server has come back";
  EXPECT_EQ(machine.open_count, 2);
  EXPECT_TRUE(WaitUntil([&] { return late.open_count == 1 && !late.open; })) << "nobody wants it";
  const std::lock_guard closed(late.mutex);
}

TEST(SliceOutput, RefusesWhatItCannotPlayAndWithoutADeviceEverything) {
  FakeMachine machine;
  SliceOutput output(machine.Opener(), {});
  const Bytes bytes = Noise(80);
  const WaveHeader header{bytes.data(), 80}, other{bytes.data(), 80}, nowhere{nullptr, 80};
  WaveHandle handle = 77;
  done_count = 0;
  for (const bool fails : {false, true}) {
    SliceOutput mute([fails](auto&, auto) { return fails ? throw std::exception() : nullptr; }, {});
    EXPECT_EQ(mute.Open(handle, Mono(8000, 8), &Note, 5), kWaveNoDriver);
    EXPECT_EQ(handle, 0u);
    EXPECT_EQ(mute.Prepare(handle, header), kWaveInvalidHandle);
    EXPECT_EQ(mute.Write(handle, header), kWaveInvalidHandle);
    EXPECT_EQ(mute.Unprepare(handle, header), kWaveInvalidHandle);
    EXPECT_EQ(mute.Close(handle), kWaveInvalidHandle);
  }
  WaveFormatEx compressed = Mono(8000, 8), three = Mono(8000, 8);
  compressed.wFormatTag = 17;
  three.nChannels = 3;
  for (const WaveFormatEx& format : {compressed, three, Mono(8000, 24)})
    EXPECT_EQ(output.Open(handle, format, &Note, 5), kWaveBadFormat);
  ASSERT_EQ(output.Open(handle, Mono(8000, 8), &Note, 5), kWaveOk);
  EXPECT_EQ(output.Prepare(handle, nowhere), kWaveOk);
  EXPECT_EQ(output.Write(handle, nowhere), kWaveUnprepared);
  EXPECT_EQ(output.Prepare(handle, header), kWaveOk);
  EXPECT_EQ(output.Write(handle, other), kWaveUnprepared);
  EXPECT_EQ(output.Unprepare(handle, other), kWaveOk);
  EXPECT_EQ(output.Write(handle, header), kWaveOk);
  EXPECT_EQ(output.Write(handle, header), kWaveStillPlaying);
  EXPECT_EQ(output.Prepare(handle, other), kWaveStillPlaying);
  EXPECT_EQ(done_count, 0);
}

std::string UseDiskDriver() {
  const auto path = support::ScratchFolder() + "/device.raw";
  setenv("SDL_AUDIODRIVER", "disk", 1);
  setenv("SDL_DISKAUDIOFILE", path.c_str(), 1);
  return path;
}

std::string WaveFile(int channels, const Bytes& data) {
  static int files = 0;
  return support::WriteScratch("sound \xC3\xA4 " + std::to_string(++files) + ".wav",
                               support::WaveBytes(16, 8000, std::string(data.begin(), data.end()), channels));
}

// What has left, without the silence around it.
Bytes SoundIn(const std::string& path, char silence) {
  const std::string left = support::ReadWhole(path);
  const std::size_t first = left.find_first_not_of(silence), last = left.find_last_not_of(silence);
  return first == std::string::npos ? Bytes() : Bytes(&left[first], &left[last] + 1);
}

TEST(WaveOut, JustTheBytesOfTheSliceOrTheFileLeave) {
  const std::tuple<WaveFormatEx, int, std::uint32_t> cases[] = {{Mono(8000, 8), 333, 333},
                                                                {Mono(8000, 8), 0, 64},  // whole buffers
                                                                {Mono(44100, 16), 666, 2939},
                                                                {Mono(8000, 16), 10, 1}};
  const Bytes sound = Noise(4000);
  const auto path = UseDiskDriver();
  for (const auto& [format, offset, length] : cases) {
    done_count = 0;
    auto output = MakeWaveOutput();
    const WaveHeader header{sound.data() + offset, length};
    WaveHandle handle = 0;
    ASSERT_EQ(output->Open(handle, format, &Note, 5), kWaveOk);
    std::this_thread::sleep_for(milliseconds(20));  // in silence
    ASSERT_EQ(output->PrepareHeader(handle, header), kWaveOk);
    ASSERT_EQ(output->Write(handle, header), kWaveOk);
    ASSERT_TRUE(WaitUntil([] { return done_count == 1; }));
    EXPECT_EQ(output->UnprepareHeader(handle, header), kWaveOk);
    EXPECT_EQ(output->Close(handle), kWaveOk);
    output.reset();
    const auto start = sound.begin() + offset;
    EXPECT_EQ(SoundIn(path, format.wBitsPerSample == 8 ? '\x80' : '\0'), Bytes(start, start + length));
  }
  auto output = MakeWaveOutput();
  output->PlaySoundFile(WaveFile(1, sound));
  std::this_thread::sleep_for(milliseconds(1000));  // 250 ms of sound
  output.reset();
  EXPECT_EQ(SoundIn(path, '\0'), sound);
}

TEST(SoundPlayer, AFileComesThroughWholeAndWithoutAGapInTwoOfItsChannels) {
  FakeMachine machine;
  // Blocks of 401 frames, more than are read ahead, and a short one.
  const Bytes data = Noise(4 * (401 * 13 + 10));
  Bytes three;
  for (std::size_t i = 0; i < data.size(); ++i) {
    three.push_back(data[i]);
    if (i % 4 == 3) three.insert(three.end(), 2, 77);
  }
  SoundPlayer player(machine.Opener());
  player.Play(WaveFile(3, three));
  Bytes heard;
  ASSERT_TRUE(WaitUntil([&] { return machine.started.load(); }));
  while (heard.size() < data.size()) {
    std::this_thread::sleep_for(milliseconds(10));  // time to read on
    const Bytes next = machine.Ask(512);
    heard.insert(heard.end(), next.begin(), next.end());
  }
  heard.resize(data.size());
  EXPECT_EQ(heard, data);
  EXPECT_EQ(machine.format, (AudioFormat{8000, 2, SampleForm::Signed16}));
  EXPECT_EQ(machine.Ask(4), (Bytes{0, 0, 0, 0}));
  EXPECT_TRUE(WaitUntil([&] { return !machine.open; })) << "others may want the device";
}

TEST(SoundPlayer, ANewSoundReplacesTheOldStopEndsItAndWhatIsNoneIsSilence) {
  FakeMachine machine;
  const auto low = WaveFile(1, Bytes(40'000, 1)), high = WaveFile(1, Bytes(40'000, 2));
  SoundPlayer player(machine.Opener()), mute([](const AudioFormat&, FillBuffer) { return nullptr; });
  mute.Play(low);
  const std::string pipe = support::ScratchFolder() + "/pipe.wav";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (const auto& path :
       {std::string("/gone.wav"), std::string("/"), pipe, support::WriteScratch("a", "?")}) {
    player.Play(path);
    std::this_thread::sleep_for(milliseconds(20));
    EXPECT_EQ(machine.open_count, 0) << path;
  }
  const auto next = [&] {
    Bytes heard;
    WaitUntil([&] { return heard = machine.Ask(2), heard != Bytes{0, 0} && heard != Bytes{99, 99}; });
    return heard;
  };
  player.Play(low);
  EXPECT_EQ(next(), Bytes(2, 1));
  player.Play(high);
  EXPECT_EQ(next(), Bytes(2, 2));
  player.Stop();
  EXPECT_EQ(machine.Ask(2), Bytes(2, 0));
  std::this_thread::sleep_for(milliseconds(50));
  EXPECT_EQ(machine.Ask(2), Bytes(2, 0));
}

TEST(Capture, ADeviceIsOpenedByItsNameAndNoOtherIsInItsPlace) {
  const SoundDevices devices = FindSoundDevices();
  ASSERT_EQ(devices.inputs.size(), 1U);
  EXPECT_TRUE(devices.has_output);
  std::atomic<std::size_t> taken{0};
  const auto take = [&taken](std::span<const std::int16_t> samples) {
    EXPECT_EQ(samples.size(), 1024U);
    ++taken;
  };
  EXPECT_EQ(OpenCaptureDevice("gone", 8000, take), nullptr);
  auto device = OpenCaptureDevice(devices.inputs[0], 8000, take);
  ASSERT_NE(device, nullptr);
  EXPECT_FALSE(device->IsLost());
  const auto two_buffers = [&] {
    device->Start();
    EXPECT_TRUE(WaitUntil([&] { return taken > 1; }));
  };
  EXPECT_GE(TimeOf(two_buffers), milliseconds(120)) << "a buffer lasts for 128 ms";
  device.reset();
  taken = 0;
  std::this_thread::sleep_for(milliseconds(200));
  EXPECT_EQ(taken, 0U);
}

TEST(AudioDevice, AsksForShortBuffersOfItsFormatInTheTimeThatTheyTake) {
  const std::tuple<AudioFormat, std::size_t, int> cases[] = {
      {{8000, 1, SampleForm::Unsigned8}, 32, 40},
      {{11025, 1, SampleForm::Signed16}, 2 * 64, 50},
      {{44100, 2, SampleForm::Signed16}, 4 * 256, 50},
      {{1'000'000, 1, SampleForm::Unsigned8}, 4096, 40}};
  for (const auto& [format, bytes, time_of_ten] : cases) {
    std::atomic<int> asked{0};
    const auto device = OpenAudioDevice(format, [&, bytes = bytes](std::span<std::uint8_t> buffer) {
      EXPECT_EQ(buffer.size(), bytes);
      ++asked;
    });
    ASSERT_NE(device, nullptr) << bytes;
    EXPECT_EQ(device->BuffersBehind(), 0) << "nothing is heard";
    const auto eleven_buffers = [&] {
      device->Start();
      EXPECT_TRUE(WaitUntil([&] { return asked > 11; }));
    };
    EXPECT_GE(TimeOf(eleven_buffers), milliseconds(time_of_ten));
  }
  for (const auto& [rate, channels] : {std::pair(1'000'001, 1), {0, 1}, {8000, 9}})
    EXPECT_EQ(OpenAudioDevice({rate, channels, SampleForm::Unsigned8}, [](auto) {}), nullptr) << rate;
  struct sigaction at_the_end {};
  sigaction(SIGTERM, nullptr, &at_the_end);
  EXPECT_EQ(at_the_end.sa_handler, SIG_DFL) << "the library leaves the signals alone";
}

}  // namespace
}  // namespace platform
