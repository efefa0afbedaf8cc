#include "recorder/take.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace recorder {
namespace {

namespace fs = std::filesystem;
using Samples = std::vector<std::int16_t>;
using std::string_literals::operator""s;

constexpr WaveForm kMono{44100, 1};

class Takes : public testing::Test {
 protected:
  Takes() {
    std::string pattern = testing::TempDir() + "takes_XXXXXX";
    root_ = mkdtemp(pattern.data());
    folder_ = (root_ / "made" / "when needed").string();
  }
  ~Takes() override {
    EXPECT_EQ(FilesIn("/proc/self/fd"), open_files_);
    EXPECT_EQ(Get("/proc/self/maps").find(root_), std::string::npos);
    fs::remove_all(root_);
  }

  std::unique_ptr<Take> Begin() {
    std::string failure;
    auto take = Take::Begin(folder_, kMono, failure);
    EXPECT_EQ(failure, "");
    return take;
  }
  static std::string Get(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  static long FilesIn(const fs::path& folder) { return std::distance(fs::directory_iterator(folder), {}); }

  fs::path root_;
  std::string folder_;
  const long open_files_ = FilesIn("/proc/self/fd");
};

// What RIFF WAVE says of 44,100 samples a second, one channel, 16 bits.
const std::string kForm16 = "WAVEfmt \x10\0\0\0\1\0\1\0\x44\xAC\0\0\x88\x58\1\0\2\0\x10\0data"s;

TEST_F(Takes, SaveAPlainWaveFileAndGoWithTheirOwn) {
  auto take = Begin();
  EXPECT_TRUE(take->Append(Samples{1, -2}));
  EXPECT_TRUE(take->Finish());
  EXPECT_TRUE(take->Append(Samples{0x1234}));
  const std::string target = (root_ / "voice.wav").string();
  EXPECT_EQ(take->SaveAs(target), "");
  EXPECT_EQ(Get(target), "RIFF\x2A\0\0\0"s + kForm16 + "\6\0\0\0\1\0\xFE\xFF\x34\x12"s);
  EXPECT_EQ(Get(take->Path()), Get(target));
  take.reset();
  EXPECT_EQ(FilesIn(folder_), 0);
  EXPECT_TRUE(fs::exists(target));
}

TEST_F(Takes, AFullDiskKeepsWhatWasWrittenAndSaysWhy) {
  auto take = Begin();
  signal(SIGXFSZ, SIG_IGN);
  rlimit limit{44 + 7, RLIM_INFINITY};
  setrlimit(RLIMIT_FSIZE, &limit);
  EXPECT_TRUE(take->Append(Samples{1, 2}));
  EXPECT_FALSE(take->Append(Samples{3, 4, 5}));
  EXPECT_EQ(take->Failure(), "File too large");
  EXPECT_TRUE(take->Finish());
  EXPECT_EQ(Get(take->Path()), "RIFF\x28\0\0\0"s + kForm16 + "\4\0\0\0\1\0\2\0"s);
  limit.rlim_cur = 43;
  setrlimit(RLIMIT_FSIZE, &limit);
  for (const auto& [folder, reason] : {std::pair{folder_, "File too large"},
                                       {"/dev/null/takes", "Not a directory"},
                                       {"/proc", "No such file or directory"}}) {
    std::string failure;
    EXPECT_EQ(Take::Begin(folder, kMono, failure), nullptr);
    EXPECT_EQ(failure, reason);
  }
  EXPECT_EQ(FilesIn(folder_), 1);
}

TEST_F(Takes, EndWhereAFileCanGrowNoFurther) {
  const fs::path longest = fs::path(folder_) / "take-1-1.wav";
  fs::copy(Begin()->Path(), longest);
  fs::resize_file(longest, 44 + kMostDataBytes - 2);
  const auto take = Take::LeftBehind(folder_);
  ASSERT_NE(take, nullptr);
  EXPECT_TRUE(take->Append(Samples{1}));
  EXPECT_FALSE(take->Append(Samples{2}));
  EXPECT_TRUE(take->IsFull());
}

TEST_F(Takes, ThatAKilledProcessLeftAreFoundOnce) {
  Begin();
  const pid_t child = fork();
  if (child == 0) {
    auto take = Begin();
    take->Append(Samples{7, 8, 9});
    // Half a sample, as a write that was cut short leaves it.
    std::ofstream(take->Path(), std::ios::binary | std::ios::app) << 'x';
    auto empty = Begin();
    raise(SIGKILL);
  }
  waitpid(child, nullptr, 0);
  std::ofstream(fs::path(folder_) / "take-1-1.wav") << "short";
  std::ofstream(fs::path(folder_) / "take-1-2.wav") << std::string(100, 'x');
  std::ofstream(fs::path(folder_) / "other.wav") << Get(Begin()->Path());

  auto running = Begin();
  running->Append(Samples{1});
  EXPECT_NE(Begin()->Path(), running->Path());
  EXPECT_EQ(fs::status(running->Path()).permissions(), fs::perms::owner_read | fs::perms::owner_write);
  auto left = Take::LeftBehind(folder_);
  ASSERT_NE(left, nullptr);
  EXPECT_EQ(Get(left->Path()), "RIFF\x2A\0\0\0"s + kForm16 + "\6\0\0\0\7\0\x08\0\x09\0"s);
  EXPECT_EQ(Take::LeftBehind(folder_), nullptr);
  left.reset();
  running.reset();
  EXPECT_EQ(FilesIn(folder_), 3);
}

TEST(WaveHeader, TellsItsFormOnlyIfItIsOfThisKind) {
  WaveHeader header = MakeWaveHeader({48000, 2}, kMostDataBytes);
  EXPECT_EQ(ReadWaveHeader(header), (WaveForm{48000, 2}));
  EXPECT_EQ(ReadWaveHeader(std::span(header).first(43)), std::nullopt);
  EXPECT_EQ(ReadWaveHeader(MakeWaveHeader({0, 1}, 0)), std::nullopt);
  for (const std::size_t at : {0U, 9U, 20U, 24U, 28U, 34U, 39U}) {
    WaveHeader other = header;
    other[at] ^= 1;
    EXPECT_EQ(ReadWaveHeader(other), std::nullopt) << at;
  }
}

}  // namespace
}  // namespace recorder
