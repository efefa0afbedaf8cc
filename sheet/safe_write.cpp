#include "sheet/safe_write.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

namespace sheet {
namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 40;
constexpr int kMostNames = 1000;

/// The file that a path leads to over links, which need not exist.
std::string BehindLinks(const std::string& path) {
  fs::path target = path;
  std::error_code error;
  for (int i = 0; i < kMostLinks && fs::is_symlink(target, error); ++i) {
    const fs::path link = fs::read_symlink(target, error);
    target = link.is_absolute() ? link : target.parent_path() / link;
  }
  return target.string();
}

std::string FolderOf(const std::string& path) {
  const std::string folder = fs::path(path).parent_path().string();
  return folder.empty() ? "." : folder;
}

/// Whether the path is free or holds a file that may be written; sets errno otherwise. mode: of the old file.
bool MayReplace(const std::string& target, mode_t& mode, bool& exists) {
  struct stat status {};
  exists = stat(target.c_str(), &status) == 0;
  if (!exists) return errno == ENOENT;
  mode = status.st_mode & 07777;
  if (!S_ISREG(status.st_mode)) {
    errno = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
    return false;
  }
  return access(target.c_str(), W_OK) == 0;
}

/// The name must be on the disk as well as the bytes. A file system that can't do it has no say in the
/// result.
void FlushFolder(const std::string& folder) {
  const int file = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (file < 0) return;
  fsync(file);
  close(file);
}

}  // namespace

SafeWriter::SafeWriter(const std::string& path) : target_(BehindLinks(path)) {
  if (!Create()) create_failure_ = std::strerror(errno);
}

SafeWriter::~SafeWriter() {
  if (file_ >= 0) close(file_);
  if (!beside_.empty()) unlink(beside_.c_str());
}

bool SafeWriter::Create() {
  mode_t mode = 0;
  bool exists = false;
  if (!MayReplace(target_, mode, exists)) return false;
  // The name is short and its own, so that a target with the longest name possible can be saved too.
  for (int i = 0; i < kMostNames; ++i) {
    const std::string name = ".saving-" + std::to_string(getpid()) + "-" + std::to_string(i);
    const std::string beside = FolderOf(target_) + "/" + name;
    file_ = open(beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (file_ >= 0) {
      beside_ = beside;
      if (exists) fchmod(file_, mode);
      return true;
    }
    if (errno != EEXIST) return false;
  }
  return false;
}

bool SafeWriter::WriteAndFlush(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(file_, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  if (fsync(file_) != 0) return false;
  const int file = file_;
  file_ = -1;
  return close(file) == 0;
}

std::string SafeWriter::Finish(std::string_view bytes) {
  if (!WriteAndFlush(bytes) || std::rename(beside_.c_str(), target_.c_str()) != 0)
    return std::strerror(errno);
  beside_.clear();
  FlushFolder(FolderOf(target_));
  return {};
}

}  // namespace sheet
