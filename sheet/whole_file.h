// The files that opening a sheet looks at.
#pragma once

#include <optional>
#include <string>

namespace sheet {

/// A file's bytes, or the reason why it can't be read: the operating system's, or that it is larger than
/// kMostSheetBytes.
struct WholeFile {
  std::optional<std::string> bytes;
  std::string reason;
};
WholeFile ReadWholeFile(const std::string& path);

/// More than the longest sheet takes, comments included; what is longer is no sheet.
inline constexpr long long kMostSheetBytes = 1LL << 30;

/// Where a sheet's wave file is: under its name as it stands, or else beside the sheet, under what stands
/// behind the name's last separator. Separators are slashes, backslashes and a drive's colon, so that a sheet
/// from another machine finds the sound that came along with it. No value if there is no such file.
std::optional<std::string> FindWaveFile(const std::string& name, const std::string& sheet_path);

}  // namespace sheet
