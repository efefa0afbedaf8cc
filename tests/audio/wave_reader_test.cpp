#include "audio/wave_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

namespace audio {
namespace {

std::string Little(std::uint32_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> 8 * i & 255);
  return text;
}

std::string Chunk(const std::string& identifier, const std::string& body) {
  return identifier + Little(static_cast<std::uint32_t>(body.size()), 4) + body;
}

std::string Format(std::uint32_t channels, std::uint32_t bits) {
  return Little(1, 2) + Little(channels, 2) + Little(11025, 4) + Little(22050, 4) + Little(2, 2) +
         Little(bits, 2);
}

std::string Head(const std::string& format) {
  return "RIFF" + Little(99, 4) + "WAVE" + Chunk("fmt ", format);
}

WaveResult Read(const std::string& bytes, const SampleStore& earlier = {}) {
  platform::MemorySource source(bytes);
  return ReadWave(source, earlier);
}

std::string Chunks(int count) {
  std::string chunks;
  for (int i = 0; i < count; ++i) chunks += Chunk("junk", "ab");
  return chunks;
}

std::vector<int> SamplesOf(const auto& array) {
  std::vector<int> samples;
  for (std::int64_t i = 0; i < array.Count(); ++i) samples.push_back(array.At(i));
  return samples;
}

TEST(ByteSource, GivesEveryByteOnceAndClosesItsFile) {
  const std::string path = testing::TempDir() + "byte-source-" + std::to_string(getpid());
  std::ofstream(path) << "abcde";
  const auto next_descriptor = [] {
    const int next = dup(0);
    close(next);
    return next;
  };
  const int free = next_descriptor();
  {
    const platform::OpenedFile file = platform::OpenFileSource(path);
    EXPECT_EQ(file.source->Size(), 5);
    char bytes[] = "....";
    EXPECT_EQ(file.source->Read(bytes, 4), 4U);
    EXPECT_EQ(file.source->Read(bytes, 4), 1U);
    EXPECT_STREQ(bytes, "ebcd");
    EXPECT_EQ(file.source->Read(bytes, 4), 0U);
    EXPECT_EQ(file.source->Failure(), "");
  }
  EXPECT_EQ(platform::OpenFileSource("/").source, nullptr);
  EXPECT_EQ(next_descriptor(), free);
  std::remove(path.c_str());
}

TEST(ReadWave, RefusesWithTheReason) {
  const std::string data = Chunk("data", "1234");
  const std::string head = Head(Format(1, 8));
  const auto sized_format = [&](std::uint32_t size) {
    return "RIFF....WAVEfmt " + Little(size, 4) + Format(1, 8) + data;
  };
  const struct {
    const char* what;
    std::string bytes, reason;
  } cases[] = {
      {"cut in the first identifier", "RIF", "Not a riff file"},
      {"big-endian sibling", "RIFX" + head.substr(4) + data, "Not a riff file"},
      {"other form", "RIFF....AVI fmt ", "Not a Wave file"},
      {"a chunk before fmt", "RIFF....WAVE" + Chunks(1) + head.substr(12) + data, "Can't find FMT chunk"},
      {"cut in the format", head.substr(0, 25), "Can't find data chunk"},
      {"cut in a chunk's size", head + "LIST" + Little(4, 2), "Can't find data chunk"},
      {"ten chunks before data", head + Chunks(10) + data, "Can't find data chunk"},
      {"odd chunk with a pad byte", head + Chunk("LIST", "abc") + Little(0, 1) + data,
       "Can't find data chunk"},
      {"chunk size past the end", head + "LIST" + Little(0xfffffff0, 4) + data, "Can't find data chunk"},
      {"cut in the size of data", head + "data" + Little(4, 2), "Can't find data chunk"},
      {"fmt size past the end", sized_format(4000), "Can't find data chunk"},
      {"fmt size past any position", sized_format(0x7ffffff0),
       "The size of the fmt chunk leads out of the file"},
      {"fmt size with the top bit", sized_format(0x80000010),
       "The size of the fmt chunk leads out of the file"},
      {"negative data size", head + "data" + Little(0xffffffff, 4) + "12",
       "The size of the data chunk is negative"},
  };
  for (const auto& c : cases) {
    const WaveResult result = Read(c.bytes);
    EXPECT_FALSE(result.sound) << c.what;
    EXPECT_EQ(result.reason, c.reason) << c.what;
  }
}

TEST(ReadWave, FindsTheDataBehindWhatMayStandBeforeIt) {
  const std::string format = Format(1, 8);
  const std::string heads[] = {
      Head(format) + Chunks(9),
      Head(format) + Chunk("LIST", "abc"),  // odd, without a pad byte
      Head(format + Little(0, 2)),
      // A format chunk of 14 bytes is too short: its last field is read from what follows.
      "RIFF....WAVEfmt " + Little(14, 4) + format.substr(0, 14) + Little(8, 2) + "id" + Little(2, 4) + "zz",
  };
  for (const std::string& head : heads) {
    const WaveResult result = Read(head + Chunk("data", "ab"));
    ASSERT_TRUE(result.sound) << head << ": " << result.reason;
    EXPECT_THAT(SamplesOf(result.sound->Samples8), testing::ElementsAre('a', 'b', 0)) << head;
  }
}

TEST(ReadWave, FillsTheTailFromWhatFollowsTheChunk) {
  const std::string samples = Little(1, 2) + Little(0xffff, 2);
  const struct {
    std::uint32_t bits;
    std::string behind_format;
    std::vector<int> samples;
  } cases[] = {
      {8, Chunk("data", "ab") + "cd", {'a', 'b', 'c'}},
      {8, "data" + Little(4, 4) + "ab", {'a', 'b', 0, 0, 0}},
      // Its bound is the byte count.
      {16, Chunk("data", samples), {1, -1, 0, 0, 0}},
      {16, Chunk("data", samples) + samples + samples, {1, -1, 1, -1, 1}},
      // Half a sample at the end.
      {16, "data" + Little(2, 4) + Little(1, 2) + "\2", {1, 2, 0}},
  };
  for (const auto& c : cases) {
    const WaveResult result = Read(Head(Format(1, c.bits)) + c.behind_format);
    ASSERT_TRUE(result.sound) << c.behind_format << ": " << result.reason;
    const SampleStore& sound = *result.sound;
    EXPECT_EQ(c.bits == 8 ? SamplesOf(sound.Samples8) : SamplesOf(sound.Samples16), c.samples);
  }
}

TEST(ReadWave, KeepsTheFirstOfEachPair) {
  SampleStore sound = *Read(Head(Format(2, 8)) + Chunk("data", "aAbBc") + "C").sound;
  EXPECT_EQ(sound.WaveDataLength, 2);
  EXPECT_EQ(sound.WaveFormat.nChannels, 2);
  EXPECT_THAT(SamplesOf(sound.Samples8), testing::ElementsAre('a', 'b', 'c'));

  // The file ends early: silence behind it.
  sound = *Read(Head(Format(2, 8)) + "data" + Little(12, 4) + "aAbBc").sound;
  EXPECT_THAT(SamplesOf(sound.Samples8), testing::ElementsAre('a', 'b', 'c', 0, 0, 0, 0));

  sound = *Read(Head(Format(2, 24)) + Chunk("data", "abcdefg")).sound;
  EXPECT_EQ(sound.WaveDataLength, 3);
}

/// A file whose size, as the system told it on opening, is not what is read: others write to it meanwhile.
class ChangingSource : public platform::MemorySource {
 public:
  ChangingSource(std::string_view bytes, std::int64_t told) : platform::MemorySource(bytes), told_(told) {}
  std::int64_t Size() const override { return told_; }

 private:
  std::int64_t told_;
};

TEST(ReadWave, LongSoundsComeWholeWhateverSizeWasTold) {
  // Several pieces, the last one odd and without its last byte, and enough to reach large pages.
  constexpr std::int32_t kCount = 5'000'001;
  const auto value = [](std::int64_t place) { return static_cast<std::int16_t>(place * 31 + place / 65536); };
  std::string body;
  for (std::int32_t i = 0; i < kCount; ++i) body += Little(static_cast<std::uint16_t>(value(i)), 2);
  for (const int channels : {1, 2}) {
    std::string file = Head(Format(static_cast<std::uint32_t>(channels), 16)) + Chunk("data", body);
    file.pop_back();
    for (const std::int64_t told : {std::int64_t{60}, std::int64_t{60'000}, std::int64_t{40'000'000}}) {
      ChangingSource source(file, told);
      int begun = 0;
      const SampleStore sound = *ReadWave(source, {}, [&begun] { ++begun; }).sound;
      EXPECT_EQ(begun, channels - 1) << "told before two channels are made one";
      ASSERT_EQ(sound.Samples16.LastIndex(), 2 * kCount / channels);
      const std::int32_t filled = (kCount + channels - 1) / channels;
      std::int64_t wrong = 0;
      for (std::int64_t i = 0; i < sound.Samples16.Count(); ++i)
        wrong += sound.Samples16.At(i) != (i < filled - 1    ? value(i * channels)
                                           : i == filled - 1 ? value(kCount - 1) & 255
                                                             : 0);
      EXPECT_EQ(wrong, 0) << channels << " channels, told " << told;
    }
  }
}

#ifndef __SANITIZE_ADDRESS__
TEST(ReadWave, TellsOfMemoryThatCantBeHad) {
  const rlimit limit{1u << 30, 1u << 30};
  ASSERT_EQ(setrlimit(RLIMIT_AS, &limit), 0);
  const SampleStore earlier = *Read(Head(Format(1, 16)) + Chunk("data", Little(7, 2))).sound;
  for (int i = 0; i < 3; ++i)
    EXPECT_TRUE(Read(Head(Format(1, 16)) + "data" + Little(0x0c000000, 4)).sound) << "none is kept";
  const WaveResult result = Read(Head(Format(1, 16)) + "data" + Little(0x7fffffff, 4), earlier);
  EXPECT_FALSE(result.sound);
  EXPECT_EQ(result.reason, "Not enough memory for 2147483647 bytes of sound");
}
#endif

TEST(ReadWaveFile, TellsWhyAFileCantBeOpenedOrRead) {
  const std::string folder = testing::TempDir() + "wave_reader_test";
  mkdir(folder.c_str(), 0755);
  const std::string pipe = folder + "/pipe.wav";
  mkfifo(pipe.c_str(), 0600);
  EXPECT_EQ(ReadWaveFile("/nowhere/Stimme \xc3\xa4.wav", {}).reason,
            "Can't open wave file /nowhere/Stimme \xc3\xa4.wav: No such file or directory");
  EXPECT_EQ(ReadWaveFile("/proc/self/mem", {}).reason, "Can't read the samples: Input/output error")
      << "nothing is mapped where this file begins";
  EXPECT_EQ(ReadWaveFile(folder, {}).reason, "Can't open wave file " + folder + ": Is a directory");
  EXPECT_EQ(ReadWaveFile(pipe, {}).reason, "Can't open wave file " + pipe + ": Not a regular file");
}

}  // namespace
}  // namespace audio
