// A file that has no name until it is whole.
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

namespace sheet {

/// A file being written in a folder. It gets its name at the end: a process that is killed before leaves
/// nothing behind. Where a file system must have a name from the start, that is ".saving-..." and goes with
/// this object; what killed processes have left of such files in the folder is removed when the next one is
/// made.
///
/// What fails sets errno.
class NewFile {
 public:
  NewFile(std::string folder, mode_t mode);
  ~NewFile();
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  /// Why it can't be made, as errno; 0 if it is made.
  int Failure() const { return failure_; }
  int Number() const { return file_; }

  /// Adds the bytes and brings them to the disk.
  bool WriteAndFlush(std::string_view bytes);
  /// Gives it a name that no file has yet: EEXIST otherwise.
  bool PutAt(const std::string& path);
  /// Gives it this name, in place of the file that has it.
  bool PutInPlaceOf(const std::string& path);
  /// Gives it the name "FIRST STEM DATE TIME.exp", a number behind the time where it is taken. Result: its
  /// path, or an empty text.
  std::string PutUnderFreeName(const std::string& first, std::string_view stem);

 private:
  bool OpenUnnamed(mode_t mode);
  bool OpenNamed(mode_t mode);
  std::string NameBeside(int number) const;
  std::string PathOfUnnamed() const;

  std::string folder_;
  std::string beside_;  // where it has a name from the start
  int file_ = -1;
  int failure_ = 0;
};

/// The folder in which a path stands.
std::string FolderOf(const std::string& path);

/// The bytes from the file's position on, in as many calls as it takes.
bool WriteWhole(int file, std::string_view bytes);

/// Brings a folder's names to the disk. A file system that can't do it has no say in the result.
void FlushFolder(const std::string& folder);

}  // namespace sheet
