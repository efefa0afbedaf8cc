// Inputs and outputs by name, "-" being the standard input or output; pipes and devices are read like files.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "sheet/new_file.h"

namespace convert {

inline constexpr std::string_view kStandardStream = "-";

/// A file descriptor that closes itself; -1 while there is none.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  ~Descriptor();
  Descriptor(Descriptor&& other) noexcept : number_(other.number_) { other.number_ = -1; }
  Descriptor& operator=(Descriptor&&) = delete;
  int Number() const { return number_; }
  /// Hands it over to whoever closes it from now on.
  int Release();

 private:
  int number_;
};

/// An input's bytes, or the reason why they can't be read: the operating system's, or that there are more
/// than most_bytes. Never holds more than that, however long a pipe goes on.
struct InputBytes {
  std::optional<std::string> bytes;
  std::string reason;
};
InputBytes ReadInput(const std::string& name, std::int64_t most_bytes);

/// An input in which one can go back. What isn't a file is first written to one without a name.
struct SeekableInput {
  Descriptor file;
  std::string reason;
};
SeekableInput OpenSeekable(const std::string& name);

/// Bytes put aside on the disk in a file without a name, which is gone with this object.
class Spool {
 public:
  /// Beside the path, else where the system has its temporary files.
  explicit Spool(const std::string& beside);
  /// False, with errno set, if the disk can't take them.
  bool Append(std::string_view bytes);
  /// All of it, readable while the spool lives; none if the system can't map it.
  std::optional<std::string_view> Bytes();
  /// Its file, read from the start.
  Descriptor Take();
  ~Spool();
  Spool(const Spool&) = delete;
  Spool& operator=(const Spool&) = delete;

 private:
  Descriptor file_;
  std::size_t size_ = 0;
  void* mapped_ = nullptr;
};

/// All bytes to a descriptor; false, with errno set, if it doesn't take them.
using sheet::WriteWhole;

/// Puts bytes to the standard output, or whole in the place of a file, as safely as the tool saves a sheet.
/// Result: the reason if that failed, or an empty text.
std::string WriteOutput(const std::string& name, std::string_view bytes);
/// Whether something stands under that name already.
bool OutputExists(const std::string& name);

}  // namespace convert
