#include "sheet/shape_names.h"

namespace sheet {

const std::vector<std::string>& ShapeNames() {
  static const std::vector<std::string> names = {"None", "A ", "B ", "Ch ", "Closed ", "D ", "E ", "F ",
                                                 "G ",   "I ", "K ", "L ",  "M ",      "N ", "O ", "P ",
                                                 "R ",   "S ", "T ", "Th ", "U ",      "V ", "W "};
  return names;
}

}  // namespace sheet
