#include "sheet/whole_file.h"

#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/byte_source.h"

namespace sheet {
namespace {

namespace fs = std::filesystem;

bool IsFile(const fs::path& path) {
  std::error_code error;
  return fs::exists(path, error) && !fs::is_directory(path, error);
}

}  // namespace

WholeFile ReadWholeFile(const std::string& path) {
  const platform::OpenedFile file = platform::OpenFileSource(path);
  if (!file.source) return {std::nullopt, file.reason};
  if (file.source->Size() > kMostSheetBytes) return {std::nullopt, "The file is too large for a sheet"};
  std::string bytes(static_cast<std::size_t>(file.source->Size()), '\0');
  bytes.resize(file.source->Read(bytes.data(), bytes.size()));
  if (!file.source->Failure().empty()) return {std::nullopt, file.source->Failure()};
  return {std::move(bytes), {}};
}

std::optional<std::string> FindWaveFile(const std::string& name, const std::string& sheet_path) {
  if (IsFile(name)) return name;
  // Without a separator find_last_of gives the largest number there is, and one more is 0.
  const std::string bare_name = name.substr(name.find_last_of("/\\:") + 1);
  if (bare_name.empty()) return std::nullopt;
  const fs::path beside = fs::path(sheet_path).parent_path() / bare_name;
  return IsFile(beside) ? std::optional(beside.string()) : std::nullopt;
}

}  // namespace sheet
