#include "sheet/safe_write.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include "sheet/whole_file.h"

namespace sheet {
namespace {

namespace fs = std::filesystem;

class SafeWrite : public testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = testing::TempDir() + "safe_write_XXXXXX";
    folder_ = mkdtemp(pattern.data());
    sheet_ = (folder_ / "sheet.exp").string();
  }
  void TearDown() override {
    fs::permissions(folder_, fs::perms::owner_all);
    fs::remove_all(folder_);
  }

  static void Put(const fs::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
  }
  static std::string Get(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::size_t FilesInFolder() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder_), fs::directory_iterator()));
  }
  static std::string Save(const std::string& path, const std::string& bytes) {
    SafeWriter writer(path);
    return writer.CreateFailure().empty() ? writer.Finish(bytes) : "create: " + writer.CreateFailure();
  }

  /// What the routine gives in a process of its own, whose limits and rights it may change.
  template <typename Routine>
  static bool InChild(Routine routine) {
    const pid_t child = fork();
    if (child == 0) _exit(routine() ? 0 : 1);
    int status = 0;
    waitpid(child, &status, 0);
    return status == 0;
  }

  fs::path folder_;
  std::string sheet_;
};

TEST_F(SafeWrite, ReplacesAndKeepsTheMode) {
  Put(sheet_, "old and longer");
  chmod(sheet_.c_str(), 0640);
  EXPECT_EQ(Save(sheet_, "new"), "");
  EXPECT_EQ(Get(sheet_), "new");
  struct stat status {};
  stat(sheet_.c_str(), &status);
  EXPECT_EQ(status.st_mode & 0777, 0640u);
  EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(SafeWrite, MakesANewFileUnderTheLongestName) {
  const std::string path = (folder_ / std::string(255, 'x')).string();
  EXPECT_EQ(Save(path, "new"), "");
  EXPECT_EQ(Get(path), "new");
}

TEST_F(SafeWrite, ALinkStaysALink) {
  fs::create_directory(folder_ / "far");
  Put(folder_ / "far/real.exp", "old");
  fs::create_symlink("far/real.exp", sheet_);
  EXPECT_EQ(Save(sheet_, "new"), "");
  EXPECT_TRUE(fs::is_symlink(sheet_));
  EXPECT_EQ(Get(folder_ / "far/real.exp"), "new");
  fs::create_symlink("far/none.exp", folder_ / "dangling.exp");
  EXPECT_EQ(Save((folder_ / "dangling.exp").string(), "new"), "");
  EXPECT_EQ(Get(folder_ / "far/none.exp"), "new");
}

TEST_F(SafeWrite, RefusesWhatCantBeWritten) {
  EXPECT_EQ(Save((folder_ / "none/sheet.exp").string(), "new"), "create: No such file or directory");
  EXPECT_EQ(Save(folder_.string(), "new"), "create: Is a directory");
  EXPECT_EQ(Save("/dev/full", "new"), "create: Invalid argument");
  mkfifo(sheet_.c_str(), 0600);
  EXPECT_EQ(Save(sheet_, "new"), "create: Invalid argument");
}

TEST_F(SafeWrite, ReadOnlyFilesAndFoldersKeepTheirFile) {
  Put(sheet_, "old");
  // Root may write anywhere: the saving is done by nobody.
  const auto refused = [this] {
    return (geteuid() != 0 || setuid(65534) == 0) && Save(sheet_, "new") == "create: Permission denied";
  };
  chmod(sheet_.c_str(), 0444);
  chmod(folder_.c_str(), 0777);
  EXPECT_TRUE(InChild(refused));
  chmod(sheet_.c_str(), 0666);
  chmod(folder_.c_str(), 0555);
  EXPECT_TRUE(InChild(refused));
  EXPECT_EQ(Get(sheet_), "old");
}

TEST_F(SafeWrite, AFullDiskLeavesTheOldFileAlone) {
  Put(sheet_, "old");
  EXPECT_TRUE(InChild([this] {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{100'000, 100'000};
    return setrlimit(RLIMIT_FSIZE, &limit) == 0 &&
           Save(sheet_, std::string(200'000, 'x')) == "File too large";
  }));
  EXPECT_EQ(Get(sheet_), "old");
  EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(SafeWrite, AKilledProcessLeavesTheOldFileOrTheNew) {
  const std::string versions[] = {std::string(3'000'000, 'a'), std::string(2'000'000, 'b')};
  std::mt19937 random(1);
  int seen[2] = {0, 0};
  unsigned longest_microseconds = 15'000;
  for (int round = 0; round < 100; ++round) {
    Put(sheet_, versions[0]);
    const pid_t child = fork();
    if (child == 0) {
      for (int i = 1;; ++i) Save(sheet_, versions[i % 2]);
    }
    usleep(static_cast<useconds_t>(random() % longest_microseconds));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    const std::string left = Get(sheet_);
    const bool old_or_new = left == versions[0] || left == versions[1];
    ASSERT_TRUE(old_or_new) << "torn after " << round << " rounds: " << left.size() << " bytes";
    ++seen[left == versions[1]];
    // A busy machine needs longer for its first save.
    if (seen[1] == 0) longest_microseconds += 15'000;
  }
  EXPECT_GT(seen[0], 0);
  EXPECT_GT(seen[1], 0) << "no save came through before its process was killed";
}

TEST_F(SafeWrite, TheWaveFileIsFoundBesideTheSheet) {
  Put(folder_ / "frog.wav", "");
  Put(folder_ / "fr\xc3\xb6sche, alle.wav", "");
  const std::string frog = (folder_ / "frog.wav").string();
  EXPECT_EQ(FindWaveFile(frog, "/elsewhere/sheet.exp"), frog);
  for (const char* name :
       {"frog.wav", "/gone/frog.wav", "C:\\Voices\\Take 2\\frog.wav", "C:frog.wav", "..\\frog.wav"}) {
    EXPECT_EQ(FindWaveFile(name, sheet_), frog) << name;
  }
  EXPECT_EQ(FindWaveFile("D:\\fr\xc3\xb6sche, alle.wav", sheet_),
            (folder_ / "fr\xc3\xb6sche, alle.wav").string());
  for (const char* name : {"", "/gone/toad.wav", "C:\\Voices\\", "..", "/gone/frog.wav/"}) {
    EXPECT_EQ(FindWaveFile(name, sheet_), std::nullopt) << name;
  }
}

TEST_F(SafeWrite, WholeFilesAreReadOrRefused) {
  Put(sheet_, std::string("a\0b\r\n", 5));
  EXPECT_EQ(ReadWholeFile(sheet_).bytes, std::string("a\0b\r\n", 5));
  EXPECT_EQ(ReadWholeFile((folder_ / "none").string()).reason, "No such file or directory");
  fs::resize_file(sheet_, (1ull << 30) + 1);
  EXPECT_EQ(ReadWholeFile(sheet_).reason, "The file is too large for a sheet");
}

}  // namespace
}  // namespace sheet
