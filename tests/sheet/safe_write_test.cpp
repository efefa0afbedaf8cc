#include "sheet/safe_write.h"

#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <set>
#include <tuple>

#include "sheet/rescued_file.h"
#include "sheet/whole_file.h"

// In the system's place: a file system that takes no access list, and one that is full.
static bool takes_access_lists = true, is_full = false;

extern "C" int fsetxattr(int file, const char* name, const void* value, std::size_t size,
                         int flags) noexcept {
  if (takes_access_lists || !std::string_view(name).starts_with("system."))
    return static_cast<int>(syscall(SYS_fsetxattr, file, name, value, size, flags));
  return errno = EOPNOTSUPP, -1;
}
extern "C" int fallocate(int file, int mode, off_t start, off_t size) {
  return is_full ? (errno = ENOSPC, -1) : static_cast<int>(syscall(SYS_fallocate, file, mode, start, size));
}

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

  static bool InAProcessOfItsOwn(const std::function<bool()>& holds) {
    const pid_t child = fork();
    if (child == 0) _exit(holds());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 1;
  }
  /// Root may do anything, so what other users meet is tried as the user nobody.
  static bool AsNobody(const std::function<bool()>& holds, gid_t other_group = 65534) {
    return InAProcessOfItsOwn([&] {
      return (geteuid() != 0 ||
              (setgroups(1, &other_group) == 0 && setgid(65534) == 0 && setuid(65534) == 0)) &&
             holds();
    });
  }
  std::vector<std::string> Names() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_)) names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
  }

  fs::path folder_;
  std::string sheet_;
};

constexpr const char* kAccessList = "system.posix_acl_access";

/// Owner rw, a user of their own rw, owning group `group`, mask rw, others `others`.
std::string AccessList(char group, char others) {
  const auto entry = [](char tag, char rights, std::uint32_t who) {
    return std::string{tag, 0, rights, 0} + std::string(reinterpret_cast<const char*>(&who), 4);
  };
  constexpr std::uint32_t nobody_named = 0xffffffff;
  return std::string{2, 0, 0, 0} + entry(0x01, 6, nobody_named) + entry(0x02, 6, 4711) +
         entry(0x04, group, nobody_named) + entry(0x10, 6, nobody_named) + entry(0x20, others, nobody_named);
}

std::string Attribute(const std::string& path, const char* name) {
  char value[256];
  const ssize_t size = getxattr(path.c_str(), name, value, sizeof value);
  return size < 0 ? "none" : std::string(value, static_cast<std::size_t>(size));
}

TEST_F(SafeWrite, ReplacesAndKeepsTheMode) {
  Put(sheet_, "old and longer");
  chmod(sheet_.c_str(), 0751);
  EXPECT_EQ(Save(sheet_, "new"), "");
  EXPECT_EQ(Get(sheet_), "new");
  EXPECT_EQ(fs::status(sheet_).permissions(), fs::perms(0751));
  EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), 1);
  umask(022);
  const std::string longest_name = folder_ / std::string(255, 'x');
  EXPECT_EQ(Save(longest_name, "new"), "");
  EXPECT_EQ(Get(longest_name), "new");
  EXPECT_EQ(fs::status(longest_name).permissions(), fs::perms(0644));
  EXPECT_EQ(FolderOf("sheet.exp"), ".");
}

TEST_F(SafeWrite, ALinkStaysALink) {
  fs::create_directory(folder_ / "far");
  Put(folder_ / "far/real.exp", "old");
  fs::create_symlink("sheet.exp", folder_ / "alias.exp");
  for (const char* target : {"far/real.exp", "far/none.exp"}) {
    fs::remove(sheet_);
    fs::create_symlink(target, sheet_);
    EXPECT_EQ(Save(folder_ / "alias.exp", "new"), "");
    EXPECT_TRUE(fs::is_symlink(sheet_) && fs::is_symlink(folder_ / "alias.exp"));
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
    EXPECT_TRUE(AsNobody([&] { return Save(sheet_, "new") == "create: Permission denied"; }));
  }
  EXPECT_EQ(Get(sheet_), "old");
}

TEST_F(SafeWrite, TheOwnerSavesWhatBelongsToTheFile) {
  Put(sheet_, "old");
  setxattr(sheet_.c_str(), "user.note", "keep me", 7, 0);
  setxattr(sheet_.c_str(), "user.mark", "", 0, 0);
  setxattr(sheet_.c_str(), kAccessList, AccessList(4, 0).data(), AccessList(4, 0).size(), 0);
  if (geteuid() == 0) {
    ASSERT_EQ(chown(sheet_.c_str(), 1234, 2345), 0);
  }
  // Some file systems have neither.
  const std::string note = Attribute(sheet_, "user.note"), mark = Attribute(sheet_, "user.mark");
  const std::string access_list = Attribute(sheet_, kAccessList);
  struct stat before {};
  struct stat after {};
  stat(sheet_.c_str(), &before);
  EXPECT_EQ(Save(sheet_, "new"), "");
  stat(sheet_.c_str(), &after);
  EXPECT_NE(before.st_ino, after.st_ino);
  EXPECT_EQ(std::tuple(after.st_uid, after.st_gid, after.st_mode),
            std::tuple(before.st_uid, before.st_gid, before.st_mode));
  EXPECT_EQ(Attribute(sheet_, "user.note"), note);
  EXPECT_EQ(Attribute(sheet_, "user.mark"), mark) << "empty, but there";
  EXPECT_EQ(Attribute(sheet_, kAccessList), access_list);
  // What the folder would give a new file isn't the old one's.
  removexattr(sheet_.c_str(), kAccessList);
  setxattr(folder_.c_str(), "system.posix_acl_default", AccessList(6, 4).data(), AccessList(6, 4).size(), 0);
  EXPECT_EQ(Save(sheet_, "newer"), "");
  EXPECT_EQ(Attribute(sheet_, kAccessList), "none");
  // Where there are no lists, the group may do what both the list and its mask said.
  if (setxattr(sheet_.c_str(), kAccessList, AccessList(5, 0).data(), AccessList(5, 0).size(), 0) != 0) return;
  takes_access_lists = false;
  EXPECT_EQ(Save(sheet_, "newest"), "");
  takes_access_lists = true;
  EXPECT_EQ(fs::status(sheet_).permissions(), fs::perms(0640));
}

TEST_F(SafeWrite, TheRightsOfAGroupThatIsLostGoToNobodyElse) {
  if (geteuid() != 0) GTEST_SKIP() << "needs files of other users";
  const struct {
    mode_t mode;
    gid_t group;  // 2345 is nobody's, 2346 is one of nobody's groups
    mode_t mode_after;
  } cases[] = {
      {0664, 2345, 0644}, {0640, 2345, 0600}, {0646, 2345, 0646}, {0660, 2346, 0660}, {02664, 2345, 0644}};
  chmod(folder_.c_str(), 0777);
  for (const auto& c : cases) {
    Put(sheet_, "old");
    ASSERT_EQ(chown(sheet_.c_str(), 65534, c.group), 0);
    chmod(sheet_.c_str(), c.mode);
    EXPECT_TRUE(AsNobody([&] { return Save(sheet_, "new").empty(); }, 2346));
    struct stat after {};
    stat(sheet_.c_str(), &after);
    EXPECT_EQ(after.st_gid, c.group == 2346 ? 2346u : 65534u);
    EXPECT_EQ(after.st_mode & 07777, c.mode_after) << std::oct << c.mode;
  }
  setxattr(sheet_.c_str(), kAccessList, AccessList(6, 4).data(), AccessList(6, 4).size(), 0);
  ASSERT_EQ(chown(sheet_.c_str(), 65534, 2345), 0);
  EXPECT_TRUE(AsNobody([&] { return Save(sheet_, "new").empty(); }));
  EXPECT_EQ(Attribute(sheet_, kAccessList), AccessList(4, 4));
}

TEST_F(SafeWrite, AFileInAFolderThatCantBeWrittenIsWrittenInPlace) {
  if (geteuid() != 0) GTEST_SKIP() << "needs a folder of another user";
  Put(sheet_, "old and longer");
  chmod(sheet_.c_str(), 0666);
  const std::string aside = folder_ / "aside",
                    long_text = std::string(1 << 20, 'a') + std::string(1 << 20, 'b');
  fs::create_directory(aside);
  chmod(aside.c_str(), 0777);
  struct stat before {};
  struct stat after {};
  stat(sheet_.c_str(), &before);
  const auto save = [&](const std::string& bytes) {
    SafeWriter writer(sheet_, {"/gone", aside});
    const std::string failure = writer.CreateFailure() + writer.Finish(bytes);
    return failure + (writer.CopyOfOldFile().empty() ? "" : "copy");
  };
  // A folder that only its owner may write, and one in which nobody may replace another one's file.
  for (const mode_t mode : {0755u, 01777u}) {
    chmod(folder_.c_str(), mode);
    // The last one is longer than what is copied at a time.
    for (const std::string& text : {std::string("new"), std::string("new and longer"), long_text}) {
      EXPECT_TRUE(AsNobody([&] { return save(text).empty(); })) << std::oct << mode;
      EXPECT_TRUE(Get(sheet_) == text);
      EXPECT_TRUE(fs::is_empty(aside));
    }
    stat(sheet_.c_str(), &after);
    EXPECT_EQ(before.st_ino, after.st_ino);
    // Without room for the new sheet the old one stands again.
    EXPECT_TRUE(AsNobody([&] {
      signal(SIGXFSZ, SIG_IGN);
      const rlimit small{3 << 20, 3 << 20};
      setrlimit(RLIMIT_FSIZE, &small);
      return save(std::string(4 << 20, 'x')) == "File too large";
    }));
    EXPECT_TRUE(Get(sheet_) == long_text);
    EXPECT_TRUE(fs::is_empty(aside));
  }
  is_full = true;
  EXPECT_TRUE(AsNobody([&] { return save("new") == "No space left on device"; }));
  is_full = false;
  EXPECT_TRUE(fs::is_empty(aside));
  // Without a copy nothing is touched.
  chmod(aside.c_str(), 0555);
  EXPECT_TRUE(AsNobody(
      [&] { return save("new") == "no copy of the old file could be put aside: Permission denied"; }));
  EXPECT_TRUE(Get(sheet_) == long_text);
}

TEST_F(SafeWrite, TakesTheNextNameWhereOneIsStillInUse) {
  if (geteuid() != 0) GTEST_SKIP() << "needs a root folder of its own";
  // Where /proc isn't there, files have a name from the start.
  for (const bool has_proc : {true, false}) {
    Put(sheet_, "old");
    EXPECT_TRUE(InAProcessOfItsOwn([&] {
      if (!has_proc && chroot(folder_.c_str()) != 0) return false;
      const std::string folder = has_proc ? folder_.string() : "";
      const std::string held = folder + "/.saving-" + std::to_string(getpid()) + "-0";
      flock(open(held.c_str(), O_RDWR | O_CREAT, 0600), LOCK_EX);
      if (!Save(folder + "/sheet.exp", "new").empty() || !fs::exists(held)) return false;
      // What stands in the way at the last moment leaves nothing behind.
      SafeWriter late(folder + "/late.exp");
      fs::create_directory(folder + "/late.exp");
      return late.Finish("new") == "Is a directory" && fs::remove(folder + "/late.exp");
    }));
    EXPECT_EQ(Get(sheet_), "new");
    EXPECT_EQ(Names().size(), 2U);
  }
}

TEST_F(SafeWrite, WhatKilledSavesHaveLeftGoesWithTheNextOne) {
  for (const char* name : {".saving-4711-0", ".saving-4712-0", ".saving-1-a", ".saving-mine", "saving-1-0"})
    Put(folder_ / name, "");
  const int held = open((folder_ / ".saving-4712-0").c_str(), O_RDONLY);
  flock(held, LOCK_EX);
  EXPECT_EQ(Save(sheet_, "new"), "");
  EXPECT_EQ(Names(), (std::vector<std::string>{".saving-1-a", ".saving-4712-0", ".saving-mine", "saving-1-0",
                                               "sheet.exp"}));
  close(held);
}

TEST_F(SafeWrite, RescuedFilesNeverMeetAndGoToTheFirstFolderThatTakesThem) {
  Put(sheet_, "own");
  chmod(sheet_.c_str(), 0640);
  const std::string full = "/dev/full", here = folder_;
  std::set<std::string> paths;
  for (int i = 0; i < 5; ++i) {
    const RescuedFile file = WriteRescuedFile({"/gone", full, here}, "frog", sheet_, std::to_string(i));
    EXPECT_EQ(Get(file.path), std::to_string(i));
    EXPECT_EQ(fs::status(file.path).permissions(), fs::perms(0640));
    EXPECT_EQ(file.failures,
              "It could not be written into /gone: No such file or directory.\n"
              "It could not be written into /dev/full: Not a directory.");
    paths.insert(file.path);
  }
  EXPECT_EQ(paths.size(), 5U);
  EXPECT_EQ(WriteRescuedFile({"/gone"}, "frog", "", "").path, "");
  umask(022);
  const RescuedFile longest = WriteRescuedFile({here}, std::string(250, 'x') + "\xc3\xa4", "", "new");
  EXPECT_EQ(Get(longest.path), "new") << longest.failures;
  EXPECT_EQ(fs::status(longest.path).permissions(), fs::perms(0644));
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
