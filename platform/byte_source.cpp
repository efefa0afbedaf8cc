#include "platform/byte_source.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace platform {
namespace {

class FileSource : public ByteSource {
 public:
  FileSource(int file, std::int64_t size) : file_(file), size_(size) {}
  FileSource(const FileSource&) = delete;
  FileSource& operator=(const FileSource&) = delete;
  ~FileSource() override { close(file_); }

  std::size_t Read(void* into, std::size_t bytes) override {
    std::size_t done = 0;
    while (done < bytes) {
      const ssize_t got = pread(file_, static_cast<char*>(into) + done, bytes - done, position_);
      if (got < 0 && errno == EINTR) continue;
      if (got < 0) failure_ = std::strerror(errno);
      if (got <= 0) break;
      done += static_cast<std::size_t>(got);
      position_ += got;
    }
    return done;
  }
  std::string Failure() const override { return failure_; }
  std::int64_t Size() const override { return size_; }

 private:
  int file_;
  std::int64_t size_;
  std::string failure_;
};

}  // namespace

std::size_t MemorySource::Read(void* into, std::size_t bytes) {
  if (position_ >= MemorySource::Size()) return 0;
  const std::string_view rest = bytes_.substr(static_cast<std::size_t>(position_), bytes);
  std::copy(rest.begin(), rest.end(), static_cast<char*>(into));
  position_ += static_cast<std::int64_t>(rest.size());
  return rest.size();
}

OpenedFile OpenFileSource(const std::string& path) {
  // Without O_NONBLOCK, opening a pipe that nobody writes to would block instead of being refused.
  const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (file < 0) return {nullptr, std::strerror(errno)};
  struct stat status {};
  fstat(file, &status);
  if (!S_ISREG(status.st_mode)) {
    close(file);
    return {nullptr, S_ISDIR(status.st_mode) ? std::strerror(EISDIR) : "Not a regular file"};
  }
  return {std::make_unique<FileSource>(file, status.st_size), {}};
}

}  // namespace platform
