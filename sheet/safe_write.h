// Replacing a file so that at every moment either the old one or the new one stands there whole.
#pragma once

#include <string>
#include <string_view>

namespace sheet {

/// A file about to be replaced. What is written goes into a file beside it, which takes its place only at the
/// end; until then, and after any failure, the old file is as it was and nothing is left beside it.
///
/// A link stays a link: the file that it leads to is replaced. The new file has the mode of the old one.
class SafeWriter {
 public:
  /// Makes the file beside the target. Fails where the target couldn't be written itself: a folder that is
  /// missing or read-only, a file that is read-only, anything that is no regular file.
  explicit SafeWriter(const std::string& path);
  ~SafeWriter();
  SafeWriter(const SafeWriter&) = delete;
  SafeWriter& operator=(const SafeWriter&) = delete;

  /// The system's reason why the file can't be created; empty if it can.
  const std::string& CreateFailure() const { return create_failure_; }

  /// Writes the bytes, flushes them to disk and puts the new file in the old one's place. Once only, and only
  /// if there is no CreateFailure. Result: the system's reason if that failed, or an empty text.
  std::string Finish(std::string_view bytes);

 private:
  bool Create();
  bool WriteAndFlush(std::string_view bytes);

  std::string target_;
  std::string beside_;
  std::string create_failure_;
  int file_ = -1;
};

}  // namespace sheet
