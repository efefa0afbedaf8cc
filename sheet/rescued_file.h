// A sheet written to a file of its own when the process has to end.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sheet {

struct RescuedFile {
  /// Empty if no folder has taken it.
  std::string path;
  /// A line for each folder that hasn't, with the system's reason.
  std::string failures;
};

/// Writes the bytes to a new file "Rescued STEM DATE TIME.exp" in the first of the folders that takes it. It
/// gets what belongs to the sheet's own file, if there is one.
RescuedFile WriteRescuedFile(const std::vector<std::string>& folders, std::string_view stem,
                             const std::string& own_file, std::string_view bytes);

}  // namespace sheet
