// Bytes that can be read from any position: a file, or memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace platform {

class ByteSource {
 public:
  virtual ~ByteSource() = default;
  /// Bytes read from the position on, which moves behind them; fewer than asked for at the end.
  virtual std::size_t Read(void* into, std::size_t bytes) = 0;
  /// The system's reason if a read has failed otherwise than by the end; empty if none has.
  virtual std::string Failure() const { return {}; }
  virtual std::int64_t Size() const = 0;

  std::int64_t Position() const { return position_; }
  /// Any position at or above 0, also behind the end, where reads deliver nothing.
  void MoveTo(std::int64_t position) { position_ = position; }

 protected:
  std::int64_t position_ = 0;
};

class MemorySource : public ByteSource {
 public:
  /// The bytes must outlive the source.
  explicit MemorySource(std::string_view bytes) : bytes_(bytes) {}
  std::size_t Read(void* into, std::size_t bytes) override;
  std::int64_t Size() const override { return static_cast<std::int64_t>(bytes_.size()); }

 private:
  std::string_view bytes_;
};

/// A file opened for reading, or the system's reason why not ("No such file or directory").
struct OpenedFile {
  std::unique_ptr<ByteSource> source;
  std::string reason;
};

/// Opens a regular file; anything else (a folder, a pipe that would block) is refused.
OpenedFile OpenFileSource(const std::string& path);

}  // namespace platform
