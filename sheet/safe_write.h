// Replacing a file so that at every moment either the old one or the new one stands there whole.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "sheet/new_file.h"

namespace sheet {

/// A file about to be replaced. What is written goes into a file of its own, which takes the old one's place
/// only at the end; until then, and after any failure, the old file is as it was and nothing is left beside
/// it.
///
/// A link stays a link: the file that it leads to is replaced. The new file has what belonged to the old one.
///
/// A file that can be written in a folder that can't is written in place, after a copy of it has been put
/// into the first of the folders `aside` that takes it. Then a failure, or a kill, can spoil it: the copy
/// goes only when the file is whole.
class SafeWriter {
 public:
  /// Fails where the target couldn't be written itself: a folder that is missing, a file that is read-only,
  /// anything that is no regular file; and, without folders for a copy, a folder that is read-only.
  explicit SafeWriter(const std::string& path, std::vector<std::string> aside = {});
  ~SafeWriter();
  SafeWriter(const SafeWriter&) = delete;
  SafeWriter& operator=(const SafeWriter&) = delete;

  /// The system's reason why the file can't be created; empty if it can.
  const std::string& CreateFailure() const { return create_failure_; }

  /// Writes the bytes, flushes them to disk and puts the new file in the old one's place. Once only, and only
  /// if there is no CreateFailure. Result: the reason if that failed, or an empty text.
  std::string Finish(std::string_view bytes);

  /// After a failure: where a copy of the old file stands. Empty if the file itself is as it was.
  const std::string& CopyOfOldFile() const { return copy_; }

 private:
  bool Create();
  bool PutInPlace();
  std::string WriteInPlace(std::string_view bytes);
  bool PutCopyAside(int old_file);

  std::string target_;
  std::vector<std::string> aside_;
  std::string create_failure_;
  /// None where the folder can't be written.
  std::unique_ptr<NewFile> new_file_;
  std::string copy_;
};

}  // namespace sheet
