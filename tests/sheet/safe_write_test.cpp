#include "sheet/safe_write.h"

#include <gtest/gtest.h>
#include <signal.h>
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
  SafeWrite() {
    std::string pattern = testing::TempDir() + "safe_write_XXXXXX";
    folder_ = mkdtemp(pattern.data());
    sheet_ = folder_ / "sheet.exp";
  }
  ~SafeWrite() override {
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
  static std::string Save(const std::string& path, const std::string& bytes) {
    SafeWriter writer(path);
    return writer.CreateFailure().empty() ? writer.Finish(bytes) : "create: " + writer.CreateFailure();
  }

  fs::path folder_;
  std::string sheet_;
};

TEST_F(SafeWrite, ReplacesAndKeepsTheMode) {
  Put(sheet_, "old and longer");
  chmod(sheet_.c_str(), 0640);
  EXPECT_EQ(Save(sheet_, "new"), "");
  EXPECT_EQ(Get(sheet_), "new");
  EXPECT_EQ(fs::status(sheet_).permissions(), fs::perms(0640));
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), 1);
  const std::string longest_name = folder_ / std::string(255, 'x');
  EXPECT_EQ(Save(longest_name, "new"), "");
  EXPECT_EQ(Get(longest_name), "new");
}

TEST_F(SafeWrite, ALinkStaysALink) {
  fs::create_directory(folder_ / "far");
  Put(folder_ / "far/real.exp", "old");
  for (const char* target : {"far/real.exp", "far/none.exp"}) {
    fs::remove(sheet_);
    fs::create_symlink(target, sheet_);
    EXPECT_EQ(Save(sheet_, "new"), "");
    EXPECT_TRUE(fs::is_symlink(sheet_));
    EXPECT_EQ(Get(folder_ / target), "new");
  }
}

TEST_F(SafeWrite, RefusesWhatCantBeWritten) {
  EXPECT_EQ(Save(folder_ / "none/sheet.exp", "new"), "create: No such file or directory");
  EXPECT_EQ(Save(folder_, "new"), "create: Is a directory");
  EXPECT_EQ(Save("/dev/full", "new"), "create: Invalid argument");
  mkfifo(sheet_.c_str(), 0600);
  EXPECT_EQ(Save(sheet_, "new"), "create: Invalid argument");
}

TEST_F(SafeWrite, ReadOnlyFilesAndFoldersKeepTheirFile) {
  Put(sheet_, "old");
  for (const auto& [file_mode, folder_mode] : {std::pair{0444u, 0777u}, std::pair{0666u, 0555u}}) {
    chmod(sheet_.c_str(), file_mode);
    chmod(folder_.c_str(), folder_mode);
    // Root may write anywhere: the saving is done by nobody, in a process of its own.
    const pid_t child = fork();
    if (child == 0)
      _exit((geteuid() != 0 || setuid(65534) == 0) && Save(sheet_, "new") == "create: Permission denied");
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 1);
  }
  EXPECT_EQ(Get(sheet_), "old");
}

TEST_F(SafeWrite, AKilledProcessLeavesTheOldFileOrTheNew) {
  const std::string versions[] = {std::string(3'000'000, 'a'), std::string(2'000'000, 'b')};
  std::mt19937 random(1);
  int seen[2] = {0, 0};
  unsigned longest_microseconds = 15'000;
  for (int round = 0; round < 100; ++round) {
    Put(sheet_, versions[0]);
    const pid_t child = fork();
    for (int i = 1; child == 0; ++i) Save(sheet_, versions[i % 2]);
    usleep(static_cast<useconds_t>(random() % longest_microseconds));
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    const std::string left = Get(sheet_);
    ASSERT_TRUE(left == versions[0] || left == versions[1]) << "torn: " << left.size() << " bytes";
    ++seen[left == versions[1]];
    // A busy machine needs longer for its first save.
    if (seen[1] == 0) longest_microseconds += 15'000;
  }
  EXPECT_GT(seen[0], 0);
  EXPECT_GT(seen[1], 0) << "no save came through before its process was killed";
}

TEST_F(SafeWrite, TheWaveFileIsFoundBesideTheSheet) {
  const std::string frog = folder_ / "fr\xc3\xb6sche, alle.wav";
  Put(frog, "");
  EXPECT_EQ(FindWaveFile(frog, "/elsewhere/sheet.exp"), frog);
  for (const char* folder : {"", "/gone/", "C:\\Voices\\Take 2\\", "C:", "..\\"})
    EXPECT_EQ(FindWaveFile(folder + std::string("fr\xc3\xb6sche, alle.wav"), sheet_), frog) << folder;
  for (const char* name : {"", "/gone/toad.wav", "C:\\Voices\\", "..", "/gone/fr\xc3\xb6sche, alle.wav/"})
    EXPECT_EQ(FindWaveFile(name, sheet_), std::nullopt) << name;
}

TEST_F(SafeWrite, WholeFilesAreReadOrRefused) {
  Put(sheet_, std::string("a\0b\r\n", 5));
  EXPECT_EQ(ReadWholeFile(sheet_).bytes, std::string("a\0b\r\n", 5));
  EXPECT_EQ(ReadWholeFile(folder_ / "none").reason, "No such file or directory");
  fs::resize_file(sheet_, (1ull << 30) + 1);
  EXPECT_EQ(ReadWholeFile(sheet_).reason, "The file is too large for a sheet");
}

}  // namespace
}  // namespace sheet
