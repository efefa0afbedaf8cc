// The order of numbered names.
#pragma once

#include <string_view>

namespace host {

/// Whether `a` comes before `b` where runs of digits count as numbers and the case of ASCII letters doesn't:
/// frame2, Frame10, frame100. Names that are alike in this sense are told apart by their bytes, so that the
/// order is total.
bool NaturallyBefore(std::string_view a, std::string_view b);

}  // namespace host
