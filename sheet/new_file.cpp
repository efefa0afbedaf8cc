#include "sheet/new_file.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/utf8.h"

namespace sheet {
namespace {

constexpr int kMostNames = 1000;
/// Of a file's own name within one that says more; a name has at most 255 bytes.
constexpr std::size_t kMostStemBytes = 190;
constexpr std::string_view kBeside = ".saving-";

/// Holds all signals back while it lives.
class SignalsHeld {
 public:
  SignalsHeld() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  ~SignalsHeld() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  SignalsHeld(const SignalsHeld&) = delete;
  SignalsHeld& operator=(const SignalsHeld&) = delete;

 private:
  sigset_t before_{};
};

/// Links the file to a name beside the target and renames that over it; errno, or 0. It calls nothing but the
/// system, as it runs in a child of a process with threads.
int LinkAndRename(const char* file, const char* beside, const char* target) {
  if (linkat(AT_FDCWD, file, AT_FDCWD, beside, AT_SYMLINK_FOLLOW) != 0) return errno;
  if (std::rename(beside, target) == 0) return 0;
  const int failure = errno;
  unlink(beside);
  return failure;
}

/// The system has no single step that puts a file without a name in another one's place. The two steps are
/// taken by a process of their own, out of reach of what ends this one, so that never only the first is done.
int LinkAndRenameApart(const std::string& file, const std::string& beside, const std::string& target) {
  const SignalsHeld held;
  const pid_t child = fork();
  if (child == 0) {
    setpgid(0, 0);
    _exit(LinkAndRename(file.c_str(), beside.c_str(), target.c_str()));
  }
  if (child < 0) return LinkAndRename(file.c_str(), beside.c_str(), target.c_str());
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : EIO;
}

bool IsDigits(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool IsNameBeside(std::string_view name) {
  if (!name.starts_with(kBeside)) return false;
  name.remove_prefix(kBeside.size());
  const auto dash = name.find('-');
  return dash != std::string_view::npos && IsDigits(name.substr(0, dash)) && IsDigits(name.substr(dash + 1));
}

/// Removes the file unless somebody still writes it, who has it locked.
void RemoveIfLeft(const std::string& path) {
  const int file = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (file < 0) return;
  struct stat status {};
  if (fstat(file, &status) == 0 && S_ISREG(status.st_mode) && flock(file, LOCK_EX | LOCK_NB) == 0)
    unlink(path.c_str());
  close(file);
}

void RemoveLeftBehind(const std::string& folder) {
  std::error_code end;
  for (std::filesystem::directory_iterator entry(folder, end), none; !end && entry != none;
       entry.increment(end))
    if (IsNameBeside(entry->path().filename().native())) RemoveIfLeft(entry->path().native());
}

std::string LocalDateAndTime() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  std::array<char, 40> text{};
  std::strftime(text.data(), text.size(), "%Y-%m-%d %H.%M.%S", &local);
  return text.data();
}

}  // namespace

NewFile::NewFile(std::string folder, mode_t mode) : folder_(std::move(folder)) {
  RemoveLeftBehind(folder_);
  if (!OpenUnnamed(mode) && !OpenNamed(mode)) return;
  flock(file_, LOCK_EX | LOCK_NB);
}

NewFile::~NewFile() {
  // Unlinked while it is still locked.
  if (!beside_.empty()) unlink(beside_.c_str());
  if (file_ >= 0) close(file_);
}

bool NewFile::OpenUnnamed(mode_t mode) {
  // It is given its name by way of the folder of open files.
  if (access("/proc/self/fd", X_OK) != 0) return false;
  file_ = open(folder_.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, mode);
  return file_ >= 0;
}

bool NewFile::OpenNamed(mode_t mode) {
  for (int i = 0; i < kMostNames; ++i) {
    const std::string path = NameBeside(i);
    file_ = open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    failure_ = file_ < 0 ? errno : 0;
    if (file_ >= 0) beside_ = path;
    if (failure_ != EEXIST) break;
  }
  return file_ >= 0;
}

/// Short and its own, so that a target with the longest name possible can be saved too.
std::string NewFile::NameBeside(int number) const {
  return folder_ + "/" + std::string(kBeside) + std::to_string(getpid()) + "-" + std::to_string(number);
}

std::string NewFile::PathOfUnnamed() const { return "/proc/self/fd/" + std::to_string(file_); }

bool NewFile::WriteAndFlush(std::string_view bytes) { return WriteWhole(file_, bytes) && fsync(file_) == 0; }

bool NewFile::PutAt(const std::string& path) {
  if (beside_.empty())
    return linkat(AT_FDCWD, PathOfUnnamed().c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
  if (renameat2(AT_FDCWD, beside_.c_str(), AT_FDCWD, path.c_str(), RENAME_NOREPLACE) != 0) {
    if (errno != EINVAL && errno != ENOSYS) return false;
    // A file system that can't promise it: nobody else makes files of such names.
    if (access(path.c_str(), F_OK) == 0) return errno = EEXIST, false;
    if (std::rename(beside_.c_str(), path.c_str()) != 0) return false;
  }
  beside_.clear();
  return true;
}

bool NewFile::PutInPlaceOf(const std::string& path) {
  if (!beside_.empty()) {
    if (std::rename(beside_.c_str(), path.c_str()) != 0) return false;
    beside_.clear();
    return true;
  }
  if (access(path.c_str(), F_OK) != 0 && PutAt(path)) return true;
  errno = EEXIST;
  for (int i = 0; i < kMostNames && errno == EEXIST; ++i)
    errno = LinkAndRenameApart(PathOfUnnamed(), NameBeside(i), path);
  return errno == 0;
}

std::string NewFile::PutUnderFreeName(const std::string& first, std::string_view stem) {
  const std::string name = folder_ + "/" + first + " " +
                           std::string(platform::CutAtCharacter(stem, kMostStemBytes)) + " " +
                           LocalDateAndTime();
  for (int i = 1; i < kMostNames; ++i) {
    const std::string path = name + (i == 1 ? "" : " " + std::to_string(i)) + ".exp";
    if (PutAt(path)) return FlushFolder(folder_), path;
    if (errno != EEXIST) break;
  }
  return {};
}

std::string FolderOf(const std::string& path) {
  const std::string folder = std::filesystem::path(path).parent_path().string();
  return folder.empty() ? "." : folder;
}

bool WriteWhole(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(file, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

void FlushFolder(const std::string& folder) {
  const int file = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (file < 0) return;
  fsync(file);
  close(file);
}

}  // namespace sheet
