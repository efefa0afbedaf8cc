#include "convert/streams.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <utility>
#include <vector>

#include "sheet/safe_write.h"

namespace convert {
namespace {

constexpr std::size_t kPieceBytes = 1 << 16;

Descriptor OpenInput(const std::string& name) {
  // A copy of the standard input, so that all inputs are closed alike.
  if (name == kStandardStream) return Descriptor(dup(STDIN_FILENO));
  return Descriptor(open(name.c_str(), O_RDONLY | O_CLOEXEC));
}

/// Bytes read, 0 at the end, -1 with errno set.
ssize_t ReadPiece(int file, char* into, std::size_t bytes) {
  ssize_t count = 0;
  do count = read(file, into, bytes);
  while (count < 0 && errno == EINTR);
  return count;
}

int FileWithoutName(const std::string& beside) {
  if (beside != kStandardStream) {
    const std::string folder = std::filesystem::path(beside).parent_path().string();
    const int file = open(folder.empty() ? "." : folder.c_str(), O_RDWR | O_TMPFILE | O_CLOEXEC, 0600);
    if (file >= 0) return file;
  }
  std::FILE* temporary = std::tmpfile();
  if (!temporary) return -1;
  const int file = dup(fileno(temporary));
  std::fclose(temporary);
  return file;
}

/// What bytes run through, such as a pipe or a terminal: it can't be replaced, only written to.
bool IsChannel(const std::string& name) {
  struct stat status {};
  return stat(name.c_str(), &status) == 0 && (S_ISFIFO(status.st_mode) || S_ISCHR(status.st_mode));
}

}  // namespace

Descriptor::~Descriptor() {
  if (number_ >= 0) close(number_);
}

int Descriptor::Release() { return std::exchange(number_, -1); }

InputBytes ReadInput(const std::string& name, std::int64_t most_bytes) {
  const Descriptor file = OpenInput(name);
  if (file.Number() < 0) return {std::nullopt, std::strerror(errno)};
  std::string bytes;
  std::vector<char> piece(kPieceBytes);
  while (true) {
    const ssize_t count = ReadPiece(file.Number(), piece.data(), piece.size());
    if (count < 0) return {std::nullopt, std::strerror(errno)};
    if (count == 0) return {std::move(bytes), {}};
    if (static_cast<std::int64_t>(bytes.size()) + count > most_bytes)
      return {std::nullopt, std::strerror(EFBIG)};
    bytes.append(piece.data(), static_cast<std::size_t>(count));
  }
}

SeekableInput OpenSeekable(const std::string& name) {
  Descriptor file = OpenInput(name);
  struct stat status {};
  if (file.Number() < 0 || fstat(file.Number(), &status) != 0) return {Descriptor(), std::strerror(errno)};
  if (S_ISREG(status.st_mode)) return {std::move(file), {}};
  Spool spool{std::string(kStandardStream)};
  std::vector<char> piece(kPieceBytes);
  ssize_t count = 0;
  while ((count = ReadPiece(file.Number(), piece.data(), piece.size())) > 0) {
    if (!spool.Append({piece.data(), static_cast<std::size_t>(count)})) count = -1;
    if (count < 0) break;
  }
  if (count < 0) return {Descriptor(), std::strerror(errno)};
  return {spool.Take(), {}};
}

Spool::Spool(const std::string& beside) : file_(FileWithoutName(beside)) {}

Spool::~Spool() {
  if (mapped_) munmap(mapped_, size_);
}

bool Spool::Append(std::string_view bytes) {
  size_ += bytes.size();
  return WriteWhole(file_.Number(), bytes);
}

std::optional<std::string_view> Spool::Bytes() {
  if (size_ == 0) return std::string_view();
  void* mapped = mmap(nullptr, size_, PROT_READ, MAP_PRIVATE, file_.Number(), 0);
  if (mapped == MAP_FAILED) return std::nullopt;
  mapped_ = mapped;
  return std::string_view(static_cast<const char*>(mapped), size_);
}

Descriptor Spool::Take() {
  lseek(file_.Number(), 0, SEEK_SET);
  return std::move(file_);
}

bool OutputExists(const std::string& name) {
  struct stat status {};
  return name != kStandardStream && lstat(name.c_str(), &status) == 0 && !IsChannel(name);
}

std::string WriteOutput(const std::string& name, std::string_view bytes) {
  if (name == kStandardStream) return WriteWhole(STDOUT_FILENO, bytes) ? "" : std::strerror(errno);
  if (IsChannel(name)) {
    const Descriptor channel(open(name.c_str(), O_WRONLY | O_CLOEXEC));
    return channel.Number() >= 0 && WriteWhole(channel.Number(), bytes) ? "" : std::strerror(errno);
  }
  sheet::SafeWriter writer(name);
  if (!writer.CreateFailure().empty()) return writer.CreateFailure();
  return writer.Finish(bytes);
}

}  // namespace convert
