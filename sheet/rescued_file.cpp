#include "sheet/rescued_file.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "sheet/belongings.h"
#include "sheet/new_file.h"

namespace sheet {
namespace {

/// The new file's path; empty, with errno, if it can't be written there.
std::string WriteInto(const std::string& folder, std::string_view stem, const std::string& own_file,
                      std::string_view bytes) {
  struct stat own {};
  const bool has_own = !own_file.empty() && stat(own_file.c_str(), &own) == 0;
  NewFile file(folder, has_own ? 0600 : 0666);
  errno = file.Failure();
  if (errno != 0) return {};
  if (has_own && !KeepBelongings(own_file, own, file.Number())) return {};
  return file.WriteAndFlush(bytes) ? file.PutUnderFreeName("Rescued", stem) : "";
}

}  // namespace

RescuedFile WriteRescuedFile(const std::vector<std::string>& folders, std::string_view stem,
                             const std::string& own_file, std::string_view bytes) {
  RescuedFile file;
  for (const std::string& folder : folders) {
    file.path = WriteInto(folder, stem, own_file, bytes);
    if (!file.path.empty()) break;
    const char* const reason = std::strerror(errno);
    file.failures.append("It could not be written into ")
        .append(folder)
        .append(": ")
        .append(reason)
        .append(".\n");
  }
  if (!file.failures.empty()) file.failures.pop_back();
  return file;
}

}  // namespace sheet
