#include "platform/shared_memory.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>

namespace platform {
namespace {

/// Enough for the three channels both ways; a host that makes memory anew for each plane doesn't fill ours.
constexpr std::size_t kMostPieces = 8;

std::string SystemWords() { return std::strerror(errno); }

}  // namespace

SharedMemory::~SharedMemory() { Release(); }

void SharedMemory::Release() {
  if (!bytes_.empty()) munmap(bytes_.data(), bytes_.size());
  if (descriptor_ >= 0) close(descriptor_);
  bytes_ = {};
  descriptor_ = -1;
}

void SharedMemory::Make(std::size_t size) {
  Release();
  descriptor_ = memfd_create("shared-bytes", MFD_CLOEXEC | MFD_ALLOW_SEALING);
  // Taken from the system now: a page that is missing later would end the process.
  int error = descriptor_ < 0 ? errno : posix_fallocate(descriptor_, 0, static_cast<off_t>(size));
  if (error == 0 && fcntl(descriptor_, F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL) < 0)
    error = errno;
  void* bytes =
      error == 0 ? mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor_, 0) : MAP_FAILED;
  if (bytes == MAP_FAILED) {
    const std::string reason = std::strerror(error == 0 ? errno : error);
    Release();
    throw std::runtime_error("there is no shared memory for a plane of " + std::to_string(size) +
                             " bytes: " + reason);
  }
  bytes_ = {static_cast<std::uint8_t*>(bytes), size};
}

void SharedMemory::Fill(std::span<const std::uint8_t> bytes) {
  if (bytes.size() != bytes_.size()) Make(bytes.size());
  std::ranges::copy(bytes, bytes_.begin());
}

struct MappedMemory::Piece {
  Piece(int descriptor, const struct stat& file) : device(file.st_dev), inode(file.st_ino) {
    constexpr int needed = F_SEAL_SHRINK | F_SEAL_GROW;
    const int seals = S_ISREG(file.st_mode) ? fcntl(descriptor, F_GET_SEALS) : -1;
    if (seals < 0) throw std::runtime_error("it passed a descriptor that isn't one of shared memory");
    if ((seals & needed) != needed)
      throw std::runtime_error("it passed memory that isn't sealed against a change of size");
    size = static_cast<std::size_t>(file.st_size);
    if (size == 0) throw std::runtime_error("it passed memory of no size");
    bytes = mmap(nullptr, size, PROT_READ, MAP_SHARED, descriptor, 0);
    // Memory that is sealed against writing can't be had shared on all systems. It never changes.
    if (bytes == MAP_FAILED) bytes = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0);
    if (bytes == MAP_FAILED) throw std::runtime_error("its memory can't be mapped: " + SystemWords());
  }
  ~Piece() { munmap(bytes, size); }
  Piece(const Piece&) = delete;
  Piece& operator=(const Piece&) = delete;

  dev_t device;
  ino_t inode;
  std::size_t size = 0;
  void* bytes = nullptr;
};

MappedMemory::Bytes MappedMemory::View(int descriptor) {
  struct stat file {};
  if (fstat(descriptor, &file) < 0)
    throw std::runtime_error("its descriptor can't be read: " + SystemWords());
  auto piece = std::ranges::find_if(pieces_, [&](const auto& known) {
    return known->device == file.st_dev && known->inode == file.st_ino;
  });
  if (piece == pieces_.end()) {
    pieces_.push_front(std::make_shared<const Piece>(descriptor, file));
    if (pieces_.size() > kMostPieces) pieces_.pop_back();
  } else {
    pieces_.splice(pieces_.begin(), pieces_, piece);
  }
  const auto& found = pieces_.front();
  return {{static_cast<const std::uint8_t*>(found->bytes), found->size}, found};
}

}  // namespace platform
