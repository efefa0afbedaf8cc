#include "sheet/safe_write.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "sheet/belongings.h"

namespace sheet {
namespace {

namespace fs = std::filesystem;

constexpr int kMostLinks = 40;

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

/// Whether the path is free or holds a file that may be written; sets errno otherwise.
bool MayReplace(const std::string& target, struct stat& old_status, bool& exists) {
  exists = stat(target.c_str(), &old_status) == 0;
  if (!exists) return errno == ENOENT;
  if (!S_ISREG(old_status.st_mode)) {
    errno = S_ISDIR(old_status.st_mode) ? EISDIR : EINVAL;
    return false;
  }
  return access(target.c_str(), W_OK) == 0;
}

/// Whether this is how a folder refuses to have a file made or replaced in it that may itself be written: no
/// rights, a disk for reading only, somebody else's file in a folder for all, a file mounted by itself.
bool IsRefusalOfFolder(int failure) {
  return failure == EACCES || failure == EPERM || failure == EROFS || failure == EBUSY;
}

bool CopyBytes(int from, int to) {
  std::string some(1 << 20, '\0');
  for (;;) {
    const ssize_t got = read(from, some.data(), some.size());
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return got == 0;
    if (!WriteWhole(to, std::string_view(some).substr(0, static_cast<std::size_t>(got)))) return false;
  }
}

/// Room for the file before any of it is touched, where the file system can tell.
bool HasRoomFor(int file, std::size_t size) {
  if (fallocate(file, FALLOC_FL_KEEP_SIZE, 0, static_cast<off_t>(std::max<std::size_t>(size, 1))) == 0)
    return true;
  return errno != ENOSPC && errno != EDQUOT && errno != EFBIG && errno != EIO;
}

bool Overwrite(int file, std::string_view bytes) {
  return lseek(file, 0, SEEK_SET) == 0 && WriteWhole(file, bytes) &&
         ftruncate(file, static_cast<off_t>(bytes.size())) == 0 && fsync(file) == 0;
}

/// The file as its copy has it.
bool PutBack(int file, const std::string& copy) {
  const int kept = open(copy.c_str(), O_RDONLY | O_CLOEXEC);
  if (kept < 0) return false;
  struct stat status {};
  const bool done = fstat(kept, &status) == 0 && lseek(file, 0, SEEK_SET) == 0 && CopyBytes(kept, file) &&
                    ftruncate(file, status.st_size) == 0 && fsync(file) == 0;
  close(kept);
  return done;
}

}  // namespace

SafeWriter::SafeWriter(const std::string& path, std::vector<std::string> aside)
    : target_(BehindLinks(path)), aside_(std::move(aside)) {
  if (!Create()) create_failure_ = std::strerror(errno);
}

SafeWriter::~SafeWriter() = default;

bool SafeWriter::Create() {
  struct stat old_status {};
  bool exists = false;
  if (!MayReplace(target_, old_status, exists)) return false;
  // Nobody else's until it has what belongs to the old one.
  new_file_ = std::make_unique<NewFile>(FolderOf(target_), exists ? 0600 : 0666);
  const int failure = new_file_->Failure();
  if (failure == 0) return !exists || KeepBelongings(target_, old_status, new_file_->Number());
  new_file_.reset();
  errno = failure;
  return exists && !aside_.empty() && IsRefusalOfFolder(failure);
}

std::string SafeWriter::Finish(std::string_view bytes) {
  if (!new_file_) return WriteInPlace(bytes);
  if (new_file_->WriteAndFlush(bytes) && new_file_->PutInPlaceOf(target_)) {
    FlushFolder(FolderOf(target_));
    return {};
  }
  const int failure = errno;
  new_file_.reset();
  const bool can_be_written = access(target_.c_str(), W_OK) == 0;
  if (IsRefusalOfFolder(failure) && can_be_written && !aside_.empty()) return WriteInPlace(bytes);
  return std::strerror(failure);
}

std::string SafeWriter::WriteInPlace(std::string_view bytes) {
  const int file = open(target_.c_str(), O_RDWR | O_CLOEXEC);
  if (file < 0) return std::strerror(errno);
  std::string failure;
  if (!PutCopyAside(file)) {
    failure = "no copy of the old file could be put aside: " + std::string(std::strerror(errno));
  } else if (!HasRoomFor(file, bytes.size())) {
    failure = std::strerror(errno);
    unlink(std::exchange(copy_, {}).c_str());
  } else {
    if (!Overwrite(file, bytes)) failure = std::strerror(errno);
    if (failure.empty() || PutBack(file, copy_)) unlink(std::exchange(copy_, {}).c_str());
  }
  close(file);
  return failure;
}

bool SafeWriter::PutCopyAside(int old_file) {
  errno = EACCES;
  for (const std::string& folder : aside_) {
    NewFile copy(folder, 0600);
    errno = copy.Failure();
    if (errno != 0 || lseek(old_file, 0, SEEK_SET) != 0 || !CopyBytes(old_file, copy.Number())) continue;
    if (!copy.WriteAndFlush("")) continue;
    copy_ = copy.PutUnderFreeName("Copy of", fs::path(target_).stem().string());
    if (!copy_.empty()) return true;
  }
  return false;
}

}  // namespace sheet
