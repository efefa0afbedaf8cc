// The names of mouth shapes that the list offers.
#pragma once

#include <string>
#include <vector>

namespace sheet {

/// 23 names in the list's order, all but the first with a trailing blank. "None" means no shape.
const std::vector<std::string>& ShapeNames();

}  // namespace sheet
