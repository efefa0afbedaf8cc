// Memory that two processes share, named by a descriptor: sealed, so that neither can shrink it under the
// other's hands.
#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <span>

namespace platform {

/// Memory of this process that others may map. It is made anew only when the size changes.
class SharedMemory {
 public:
  SharedMemory() = default;
  ~SharedMemory();
  SharedMemory(const SharedMemory&) = delete;
  SharedMemory& operator=(const SharedMemory&) = delete;

  /// Copies the bytes into it. Throws std::runtime_error if the machine doesn't have the memory.
  void Fill(std::span<const std::uint8_t> bytes);
  /// The descriptor that names it, as long as the size stays.
  int Descriptor() const { return descriptor_; }

 private:
  void Make(std::size_t size);
  void Release();

  int descriptor_ = -1;
  std::span<std::uint8_t> bytes_;
};

/// Memory of other processes, mapped here when it is first seen and kept, the last few pieces of it, for when
/// it is seen again.
class MappedMemory {
 public:
  /// Bytes that stay mapped as long as `owner` lives.
  struct Bytes {
    std::span<const std::uint8_t> bytes;
    std::shared_ptr<const void> owner;
  };

  /// The bytes of the memory that the descriptor names: all of it, which may be more than is meant. The
  /// descriptor stays the caller's. Throws std::runtime_error, before a byte is read, if it isn't memory
  /// that is sealed against a change of size.
  Bytes View(int descriptor);

 private:
  struct Piece;
  /// The last one seen comes first.
  std::list<std::shared_ptr<const Piece>> pieces_;
};

}  // namespace platform
